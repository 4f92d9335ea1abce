#pragma once

#include <vector>

#include "mesh/BoundaryGroups.h"
#include "mesh/CellMesh.h"
#include "mesh/FvMesh.h"

namespace weldline::performance {

enum class Shape { Hexahedra, Tetrahedra };

// Which mesh to measure on. The box has `edge` cubes along each edge: as many hexahedra as cubes,
// or six tetrahedra per cube.
struct MeshChoice {
    Shape shape = Shape::Hexahedra;
    int edge = 100;
    bool shuffled = false;  // cells and faces in random order, as far from neighbourhood as can be
};

// A box of cubes of side 1 mm, in metres, numbered row by row unless shuffled.
CellMesh boxCells(const MeshChoice& choice);

// Puts the inner faces into random order.
void shuffleInnerFaces(FvMesh& mesh);

// A part with weld lines: two gates on the bottom, melt that runs from them at one speed, and an
// air pocket that it never reaches where the fronts meet under the top.
struct Filling {
    BoundaryGroups groups;        // inlet at the gates, wall elsewhere
    std::vector<float> fillTime;  // seconds; 0 in the pocket
};
Filling fill(const FvMesh& mesh, int edge);

}  // namespace weldline::performance
