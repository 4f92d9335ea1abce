#pragma once

#include <vector>

#include "LevelSkeleton.h"

namespace weldline {

// Shortest ways along the links of a graph from the nearest of some nodes.
struct GraphPaths {
    std::vector<double> length;  // per node; infinite where no way leads
    std::vector<int> previous;   // per node the one before it on its way; -1 at the start

    // The node with the longest way; of equals the first. -1 where none is reached.
    int farthest() const;

    // The nodes from `end` back to the start of its way, both included.
    std::vector<int> wayBack(int end) const;
};

GraphPaths shortestPaths(const PointGraph& graph, const std::vector<int>& starts);

}  // namespace weldline
