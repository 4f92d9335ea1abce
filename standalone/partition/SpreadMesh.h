#pragma once

#include "MeshPart.h"
#include "comm/Ranks.h"

namespace weldline {

// Ranks without cells take over cells of those that have many: these cut what they have and send
// each helper its part, one at a time, so that beside their own they hold one part more.
// Collective. Throws what cutMesh and MeshSplitter throw, on all ranks the same.
void spreadMesh(Ranks& ranks, MeshPart& part);

// Per rank the rank that it helps, -1: none. `cells` has the number of cells per rank. Each rank
// without cells, in ascending order, helps the one that has most cells for each of its helpers and
// itself, as long as every part can have a cell.
std::vector<int> chooseHelpers(const std::vector<std::int64_t>& cells);

}  // namespace weldline
