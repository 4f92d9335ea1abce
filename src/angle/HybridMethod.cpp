// Method 3: around each node, every two of its cells that share an inner face, judged at a face
// centre; then each cell with the common neighbours of two such partners, judged at the node.

#include <cstddef>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "FaceViews.h"
#include "Finishing.h"
#include "NodeRows.h"
#include "PairTests.h"
#include "Preparation.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

// The rows of inner faces are those of the first run; faces that the mesh no longer has are left
// out.
std::span<const int> innerFacesOfCell(const CKVR3DWeldLine& r, int cell) {
    if (cell > r.m_Storage.cellInnerFaceCells) return {};
    return rowMembers(r.m_ppCellInnerFace[cell]);
}

// Judges the cell at one position of the node's row with those at all others, once per shared inner
// face, and lists them. On purpose: a cell that the row holds twice is its own neighbour, and the
// face centre is looked up with the face *number* as position in the cell's lists.
void judgeFaceNeighbours(const CKVR3DWeldLine& r, const MeetingPairTest& test, int node,
                         std::size_t position, std::vector<int>& candidates) {
    const Extent extent = extentOf(r);
    const std::span<const int> cells = cellsOfNode(r, node);
    const int a = cells[position];
    for (std::size_t j = 0; j < cells.size(); ++j) {
        const int b = cells[j];
        if (j == position || !extent.holdsOwn(b)) continue;
        for (const int f : innerFacesOfCell(r, b)) {
            if (f > r.m_nInnerFace) continue;
            const double* face = r.m_ppInnerFace[f];
            if (firstCell(face) != a && secondCell(face) != a) continue;
            candidates.push_back(b);
            test.judge(node, a, b, faceCentreAt(r, a, f));
        }
    }
}

// Appends the cells, other than a, that neighbour both cells p and q, once per pair of entries.
void appendCommonNeighbours(const CKVR3DWeldLine& r, int p, int q, int a,
                            std::vector<int>& candidates) {
    for (const int c : rowMembers(r.m_ppCellNeighbour[p])) {
        if (c == a) continue;
        for (const int d : rowMembers(r.m_ppCellNeighbour[q])) {
            if (c == d) candidates.push_back(c);
        }
    }
}

void appendSecondRing(const CKVR3DWeldLine& r, int a, std::vector<int>& candidates) {
    const std::size_t direct = candidates.size();
    for (std::size_t p = 0; p < direct; ++p) {
        for (std::size_t q = p + 1; q < direct; ++q) {
            appendCommonNeighbours(r, candidates[p], candidates[q], a, candidates);
        }
    }
}

}  // namespace

void CKVR3DWeldLine::CalNodeVectorAngle_Modified_Hybrid() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_Hybrid\n");
    prepareLimits(*this, 75.0);
    const MeetingPairTest test(*this);
    const Extent extent = extentOf(*this);
    std::vector<int> candidates;
    for (int n = 1; n <= extent.nodes; ++n) {
        const Vec3 P{m_pNodeX[n], m_pNodeY[n], m_pNodeZ[n]};
        const std::span<const int> cells = cellsOfNode(*this, n);
        for (std::size_t position = 0; position < cells.size(); ++position) {
            const int a = cells[position];
            if (!extent.holdsOwn(a)) continue;
            candidates.clear();
            judgeFaceNeighbours(*this, test, n, position, candidates);
            const std::size_t direct = candidates.size();
            appendSecondRing(*this, a, candidates);
            for (std::size_t i = direct; i < candidates.size(); ++i) {
                if (extent.holds(candidates[i])) test.judge(n, a, candidates[i], P);
            }
        }
        m_pMeetingAngle[n] = 180.0 - m_pMeetingAngle[n];
    }
    finishMeetingAngles(*this);
}
