#include "Finishing.h"

#include "NodeRows.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

constexpr double kNothingMeets = 180.0;

// Is there another node below the limit in a cell of the node that has a volume?
bool hasNeighbourBelow(const CKVR3DWeldLine& r, const Extent& extent, int node, double limit) {
    for (const int c : cellsOfNode(r, node)) {
        if (!extent.holdsOwn(c) || r.m_pVolume[c] == 0.0) continue;
        for (const int m : rowMembers(r.m_ppCellNode[c])) {
            if (m != node && extent.holdsNode(m) && r.m_pMeetingAngle[m] < limit) return true;
        }
    }
    return false;
}

void applyCellStates(CKVR3DWeldLine& r) {
    const Extent extent = extentOf(r);
    for (int c = 1; c <= extent.ownCells; ++c) {
        if (r.m_pCellState[c] < 1 && r.m_pCellState[c] != -1) continue;
        for (const int n : rowMembers(r.m_ppCellNode[c])) {
            if (extent.holdsNode(n)) r.m_pMeetingAngle[n] = kNothingMeets;
        }
    }
}

}  // namespace

// Angles at or above the limit become 180, then so do nodes without a neighbour below it. On
// purpose: in place and in node order, so that isolated nodes are erased one after another; an
// angle that is not a number is a candidate but never a neighbour.
void CKVR3DWeldLine::truncateAngle() {
    trace(*this, "calWeldLine: truncateAngle\n");
    const Extent extent = extentOf(*this);
    const double limit = m_TruncateAngle;
    for (int n = 1; n <= extent.nodes; ++n) {
        if (m_pMeetingAngle[n] >= limit) m_pMeetingAngle[n] = kNothingMeets;
    }
    for (int n = 1; n <= extent.nodes; ++n) {
        if (m_pMeetingAngle[n] > limit) continue;
        if (!hasNeighbourBelow(*this, extent, n, limit)) m_pMeetingAngle[n] = kNothingMeets;
    }
}

void weldline::core::finishMeetingAngles(CKVR3DWeldLine& r) {
    r.truncateAngle();
    applyCellStates(r);
}
