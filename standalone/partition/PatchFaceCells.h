#pragma once

#include <vector>

#include "MeshPart.h"

namespace weldline {

inline constexpr int faceOfNoCell = -1;
inline constexpr int faceInside = -2;  // between two cells

// Per patch and face the cell that it bounds, or one of the values above. Throws InputError where a
// cell is malformed.
std::vector<std::vector<int>> cellsOfPatchFaces(const MeshPart& part);

}  // namespace weldline
