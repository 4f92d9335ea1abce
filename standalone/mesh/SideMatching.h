#pragma once

#include <cstdint>
#include <vector>

#include "CellSides.h"

namespace weldline {

// Per side the side of the neighbouring cell with the same nodes, -1 on the boundary; `inward` is
// what orientSides gives. Throws InputError when three cells share a face, when a cell has the same
// face twice, and when two cells lie on the same side of their face. Linear in the number of sides.
std::vector<int> matchSides(const CellMesh& mesh, const CellSides& sides,
                            const std::vector<std::uint8_t>& inward);

}  // namespace weldline
