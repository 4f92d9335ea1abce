#pragma once

#include <array>

#include "partition/MeshPart.h"

namespace weldline {

// A block of unit hexahedra, or the box of it that one rank takes. Streams from both ends of the x
// axis meet in the middle: cellFields[0] is their fill time.
struct Box {
    std::array<int, 3> low{};   // first cell along each axis
    std::array<int, 3> high{};  // one behind the last
};
MeshPart blockPart(const std::array<int, 3>& counts, const Box& box);

// Cuts the block into `parts` boxes of nearly the same size, the longest axis first, and answers
// one of them.
Box boxOfRank(const std::array<int, 3>& counts, int rank, int parts);

// Counts of a block with about this number of cells and sides as 2 : 1 : 1.
std::array<int, 3> blockCounts(double cells);

}  // namespace weldline
