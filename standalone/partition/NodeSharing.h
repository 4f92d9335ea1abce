#pragma once

#include <cstdint>
#include <vector>

#include "comm/Ranks.h"

namespace weldline {

// The nodes that this rank has in common with one other rank, as indices of this rank's points.
// Both ranks list the same nodes in the same order.
struct SharedNodes {
    int rank = 0;
    std::vector<int> nodes;  // ascending
};

// Finds the nodes that lie on several ranks, also those where parts touch in a single node or edge.
// `nodeNumber` has per point of this rank its number in the whole mesh, ascending. The answer is
// ordered by rank. Each node is looked up on a rank that its number names, so that no rank sees
// more than its share of all nodes. Collective.
std::vector<SharedNodes> findSharedNodes(Ranks& ranks, const std::vector<std::int64_t>& nodeNumber);

}  // namespace weldline
