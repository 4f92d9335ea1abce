#pragma once

#include <algorithm>
#include <span>

#include "CKVR3DWeldLine.h"
#include "Extent.h"

namespace weldline::core {

// Own cells that contain the node, in ascending order. The rows are those of the first run; a node
// beyond them has no cells.
inline std::span<const int> cellsOfNode(const CKVR3DWeldLine& r, int node) {
    if (node > r.m_Storage.nodeCellNodes) return {};
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
