// Method 1: around each node, every two cells that contain it, judged at the node itself. Which of
// them flow towards the node is asked once per cell, before the pairs.

#include <vector>

#include "CKVR3DWeldLine.h"
#include "Finishing.h"
#include "NodeRows.h"
#include "PairTests.h"
#include "Preparation.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

// The largest angle of two of these cells, or the given one if none is larger.
double largestAngle(const MeetingPairTest& test, std::span<const int> cells, double largest) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        for (std::size_t j = i + 1; j < cells.size(); ++j) {
            if (!test.mayMeet(cells[i], cells[j])) continue;
            keepLargest(largest, test.angle(cells[i], cells[j]));
        }
    }
    return largest;
}

}  // namespace

void CKVR3DWeldLine::CalNodeVectorAngle_Modified_03Loop() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_03Loop\n");
    prepareLimits(*this, m_MeshFileType == 2 ? 75.0 : 65.0);
    const MeetingPairTest test(*this);
    const Extent extent = extentOf(*this);
    std::vector<int> cells;
    for (int n = 1; n <= extent.nodes; ++n) {
        const Vec3 P{m_pNodeX[n], m_pNodeY[n], m_pNodeZ[n]};
        cells.clear();
        for (const int c : cellsOfNode(*this, n)) {
            if (extent.holdsOwn(c) && test.mayMeet(c) && test.pointsAt(c, P)) cells.push_back(c);
        }
        m_pMeetingAngle[n] = 180.0 - largestAngle(test, cells, m_pMeetingAngle[n]);
    }
    finishMeetingAngles(*this);
}
