#pragma once

#include <initializer_list>
#include <vector>

#include "mesh/CellMesh.h"

namespace weldline::test {

// Small meshes written down cell by cell.
class MeshParts {
  public:
    explicit MeshParts(std::vector<Vec3> points) { mesh_.points = std::move(points); }

    MeshParts& shape(CellKind kind, std::initializer_list<int> nodes);

    // A polyhedron out of its faces; their corners may run either way around.
    MeshParts& polyhedron(std::initializer_list<std::vector<int>> faces);

    const CellMesh& mesh() const { return mesh_; }
    operator const CellMesh&() const { return mesh_; }

  private:
    CellMesh mesh_;
};

// Corners of a row of boxes of height and depth 1 whose walls stand at the given x. Box i has the
// corners 4i, 4i + 4, 4i + 5, 4i + 1 (z = 0) and 4i + 2, 4i + 6, 4i + 7, 4i + 3 (z = 1):
//
//      4i+3 ---- 4i+7
//     /|         /|       z  y
//   4i+2 ---- 4i+6|       | /
//    |4i+1 - - |4i+5      |/
//    |/        |/         +---- x
//   4i ------ 4i+4
std::vector<Vec3> boxRowPoints(std::initializer_list<double> walls);

// The row of boxes as hexahedra.
MeshParts boxRow(std::initializer_list<double> walls);

// The text of the error that buildFvMesh throws, "" when it throws none.
std::string faultOf(const CellMesh& mesh);

}  // namespace weldline::test
