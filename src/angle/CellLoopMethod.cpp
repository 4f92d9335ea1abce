// Method 1: around each node, every two cells that contain it, judged at the node itself.

#include "CKVR3DWeldLine.h"
#include "Finishing.h"
#include "NodeRows.h"
#include "PairTests.h"
#include "Preparation.h"
#include "Trace.h"

using namespace weldline::core;

void CKVR3DWeldLine::CalNodeVectorAngle_Modified_03Loop() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_03Loop\n");
    prepareLimits(*this, m_MeshFileType == 2 ? 75.0 : 65.0);
    const MeetingPairTest test(*this);
    const Extent extent = extentOf(*this);
    for (int n = 1; n <= extent.nodes; ++n) {
        const Vec3 P{m_pNodeX[n], m_pNodeY[n], m_pNodeZ[n]};
        const std::span<const int> cells = cellsOfNode(*this, n);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            for (std::size_t j = i + 1; j < cells.size(); ++j) {
                // Rows ascend: where the second cell is an own one, so is the first.
                if (extent.holdsOwn(cells[j])) test.judge(n, cells[i], cells[j], P);
            }
        }
        m_pMeetingAngle[n] = 180.0 - m_pMeetingAngle[n];
    }
    finishMeetingAngles(*this);
}
