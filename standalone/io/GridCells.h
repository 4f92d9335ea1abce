#pragma once

#include <map>
#include <string>
#include <vector>

#include "mesh/CellMesh.h"

class vtkDataSet;

namespace weldline {

// Numbers of cells that are no part of the mesh.
struct LeftOut {
    long long ghosts = 0;
    long long unassignedSurfaces = 0;
    long long lowerCells = 0;  // points and lines
};

// Sentences about them.
std::vector<std::string> remarksOn(const LeftOut& leftOut);

// Collects the volume cells of one grid after another.
class CellCollector {
  public:
    // `file` and `mesh` are borrowed; the mesh's points are the caller's business. `cellsBefore` is
    // the number of cells in the pieces before.
    CellCollector(const std::string& file, CellMesh& mesh, long long cellsBefore)
        : file_(file), mesh_(mesh), cellsBefore_(cellsBefore) {}

    // Appends the grid's volume cells; point p of the grid is point pointMap[p] of the mesh. 2-D
    // cells become patches by number where the grid has an integer array of patch numbers. Cells
    // that another piece owns (ghosts) and cells of lower dimension are left out. Throws InputError
    // for volume cells that are no plain shapes. Returns the grid's numbers of the cells taken.
    std::vector<long long> append(vtkDataSet* grid, const std::vector<int>& pointMap);

    // Faces of the patches by number, in ascending order.
    const std::map<long long, Rows>& numberedFaces() const { return patches_; }

    // Their names, where they are others than the numbers.
    const std::map<long long, std::string>& patchNames() const { return patchNames_; }

    const LeftOut& leftOut() const { return leftOut_; }

  private:
    void appendCell(vtkDataSet* grid, long long cell, const std::vector<int>& pointMap);
    void appendShape(CellKind kind);
    void appendPrism();
    void appendPolyhedron(vtkDataSet* grid, long long cell, const std::vector<int>& pointMap);
    void addPolygon(std::vector<int> corners);

    const std::string& file_;
    CellMesh& mesh_;
    std::map<long long, Rows> patches_;
    std::map<long long, std::string> patchNames_;
    std::vector<int> nodes_;  // working space
    long long cellsBefore_;
    LeftOut leftOut_;
};

// Whether a cell becomes one of the mesh: a volume cell that no other piece owns.
bool isOwnVolumeCell(vtkDataSet* grid, long long cell);

// The name of a numbered patch: from the grid's field data PatchNames, which counts from 0 in the
// order of the numbers, where it has one; else the number.
std::string patchName(vtkDataSet* grid, long long number);

// Number of 2-D cells of each numbered patch in a grid of volume cells.
std::map<long long, long long> patchSizes(vtkDataSet* grid);

// Faces of a surface grid as node lists of the mesh; empty where a point of the surface is none of
// the mesh's (a -1 in pointMap).
Rows surfaceFaces(vtkDataSet* grid, const std::vector<int>& pointMap);

}  // namespace weldline
