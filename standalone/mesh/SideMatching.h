#pragma once

#include <vector>

#include "CellSides.h"

namespace weldline {

// Per side the side of the neighbouring cell with the same nodes, -1 on the boundary. Throws
// InputError when three cells share a face or a cell has the same face twice. Linear in the number
// of sides.
std::vector<int> matchSides(const CellMesh& mesh, const CellSides& sides);

}  // namespace weldline
