#pragma once

#include <vector>

#include "mesh/CellMesh.h"

namespace weldline {

// Cuts a mesh into parts of about the same work and answers the part (0 to parts - 1) of each cell.
//
// METIS cuts the dual graph, whose vertices are the cells and whose edges the inner faces, k ways,
// so that few faces lie between parts. A cell weighs as many units as it has faces: smoothing and
// gradients go over faces, and the angle over the faces of the cells around a node, so that faces
// measure the work of tetrahedra and polyhedra alike. Parts need not be connected. The seed is
// fixed: the same mesh gives the same cut. With at least as many parts as cells every cell is a
// part of its own and the last parts are empty; with fewer, a part may be empty, too.
//
// Throws InputError where cells are malformed or share faces as they must not, RunError when METIS
// fails, and std::bad_alloc.
std::vector<int> cutMesh(const CellMesh& mesh, int parts);

}  // namespace weldline
