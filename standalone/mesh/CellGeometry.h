#pragma once

#include <span>

#include "FvMesh.h"

namespace weldline {

struct CellGeometry {
    Vec3 centre;
    double volume = 0.0;
    double surface = 0.0;
    Vec3 gap;  // sum of the area vectors, zero for a closed cell
};

// Splits a cell into pyramids from the mean of its face centres; its volume is their sum, its
// centre their volume-weighted mean. `faces` are the cell's faces; their order is that of the sums.
CellGeometry cellGeometry(const FvMesh& mesh, int cell, std::span<const int> faces);

// Interpolation weight of the cell on the far side of a face: the distance of the near cell's
// centre from the face centre along the face normal, divided by the sum of both distances.
double weightOfNeighbour(Vec3 faceCentre, Vec3 faceArea, Vec3 nearCell, Vec3 farCell);

}  // namespace weldline
