#pragma once

#include <cstdint>
#include <vector>

#include "CellSides.h"

namespace weldline {

// Per side 1 where its polygon as given points into its cell, 0 where it points outwards.
//  - Wedges: two orders of the nodes are in use; the one with a positive volume is taken.
//  - Other fixed shapes: always 0; a shape listed inside out is a fault and found by its volume.
//  - Polyhedra: polygons come in any orientation and are turned outwards. Two faces that meet at an
//    edge run along it in opposite directions; where edges do not decide (a node in the middle of
//    another face's edge), the direction away from the cell's middle does.
std::vector<std::uint8_t> orientSides(const CellMesh& mesh, const CellSides& sides);

// Volume of a cell with its sides oriented so; negative where the cell is inside out.
double signedVolume(const CellMesh& mesh, const CellSides& sides,
                    const std::vector<std::uint8_t>& inward, int cell);

}  // namespace weldline
