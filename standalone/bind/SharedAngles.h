#pragma once

#include <vector>

#include "comm/Ranks.h"
#include "partition/NodeSharing.h"

namespace weldline {

// Each rank sees at a node the angles between its own cells and their neighbours only. Nodes that
// several ranks have take, on all of them, the smallest of their angles: streams that meet on one
// rank meet. A number is taken before NaN, which says nothing about the node, and -0 before +0, so
// that all ranks hold the same bits. `angles` has one value per node of this rank. Collective.
void takeSmallestAngles(Ranks& ranks, const std::vector<SharedNodes>& shared,
                        std::vector<double>& angles);

}  // namespace weldline
