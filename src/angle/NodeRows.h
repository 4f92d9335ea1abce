#pragma once

#include <algorithm>
#include <span>

#include "CKVR3DWeldLine.h"
#include "Extent.h"

namespace weldline::core {

// Nodes that have both a meeting angle and a row of cells; the rows are those of the first run.
inline int nodesWithRows(const CKVR3DWeldLine& r) {
    return std::min(extentOf(r).nodes, r.m_Storage.nodeCellNodes);
}

// Own cells that contain the node, in ascending order.
inline std::span<const int> cellsOfNode(const CKVR3DWeldLine& r, int node) {
    const int* row = r.m_ppNodeCell[node];
    return {row + 1, static_cast<std::size_t>(row[0])};
}

inline std::span<const int> rowMembers(const int* row) {
    return {row + 1, static_cast<std::size_t>(std::max(row[0], 0))};
}

inline bool contains(std::span<const int> members, int member) {
    return std::find(members.begin(), members.end(), member) != members.end();
}

}  // namespace weldline::core
