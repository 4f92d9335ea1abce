#pragma once

#include <algorithm>
#include <cstddef>

#include "CKVR3DWeldLine.h"

namespace weldline::core {

// Values not above this, or below it, depending on the test, count as no melt; also the guard added
// to denominators.
inline constexpr double kEps = 1e-30;

// Size of an array with slots 0 to `last`. A count below -1 asks for more than an array can have
// and so fails.
inline std::size_t slotsUpTo(int last) {
    return static_cast<std::size_t>(std::ptrdiff_t{last} + 1);
}

// The part of the bound mesh that the work arrays have room for. The arrays are made once; a later
// mesh with more cells or nodes is worked on as far as they reach, and what lies beyond is left
// out: faces with a cell beyond it, and nodes beyond it.
struct Extent {
    int slots;     // last cell slot
    int ownCells;  // last own cell
    int nodes;     // last node

    bool holds(int cell) const { return cell >= 1 && cell <= slots; }
    bool holds(int a, int b) const { return holds(a) && holds(b); }
    bool holdsOwn(int cell) const { return cell >= 1 && cell <= ownCells; }
    bool holdsNode(int node) const { return node >= 1 && node <= nodes; }
};

inline Extent extentOf(const CKVR3DWeldLine& record) {
    const int slots = std::min(record.m_nCV_Total, record.m_Storage.cellSlots);
    return {slots, std::min(record.m_nCV, slots), std::min(record.m_nNode, record.m_Storage.nodes)};
}

}  // namespace weldline::core
