#pragma once

#include <vector>

#include "CellMesh.h"

namespace weldline {

// A closed finite-volume mesh, or the part of one that a rank holds. All numbering is 0-based.
// Faces are ordered inner faces first, then boundary faces, then interface faces, behind which lies
// a cell of another rank; inner faces by their lower cell, then by their upper cell, boundary faces
// by their cell, interface faces by their cell, then by the number of the cell across. Lengths are
// in the data set's own unit.
struct FvMesh {
    std::vector<Vec3> points;
    Rows cellNodes;
    Rows cellFaces;  // faces of each cell in ascending order

    Rows faceNodes;              // polygon of each face, oriented along its area vector
    int innerFaces = 0;          // faces 0 to innerFaces - 1 lie between two cells
    int interfaceFaces = 0;      // the last faces; none before the parts of a mesh are joined
    std::vector<int> owner;      // per face: its cell; for inner faces the lower of the two
    std::vector<int> neighbour;  // per inner face: the upper of the two cells
    std::vector<Vec3> faceCentre;
    std::vector<Vec3> faceArea;  // out of the owner; length = area
    std::vector<double> lambda;  // per inner face: interpolation weight of the neighbour

    std::vector<Vec3> cellCentre;
    std::vector<double> cellVolume;

    int cellCount() const { return static_cast<int>(cellVolume.size()); }
    int pointCount() const { return static_cast<int>(points.size()); }
    int faceCount() const { return static_cast<int>(owner.size()); }
    int boundaryFaces() const { return faceCount() - innerFaces - interfaceFaces; }
    int firstInterfaceFace() const { return innerFaces + boundaryFaces(); }
};

// Builds the face table and the geometry of a cell mesh:
//  - a face is one polygon; it is split at the mean of its corners into triangles, its area vector
//    is their sum, its centre their area-weighted mean;
//  - a cell is split into pyramids from the mean of its face centres; its volume is their sum, its
//    centre their volume-weighted mean;
//  - lambda = d_owner / (d_owner + d_neighbour), the distances of the two cell centres from the
//    face centre along the face normal.
// Throws InputError when a face belongs to more than two cells (duplicated cells), when a cell is
// not closed (its area vectors do not sum to zero within rounding) or a volume is not positive; the
// message names the cell. Cost: O(cells) memory and time.
FvMesh buildFvMesh(const CellMesh& cells);

}  // namespace weldline
