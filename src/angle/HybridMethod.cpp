// Method 3: around each node, every two of its cells that share an inner face, judged at a face
// centre; then each cell with the common neighbours of two such partners, judged at the node.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
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

// An inner face of a cell of the node: the cell's position in the node's row, and both its cells.
struct NodeFace {
    std::size_t position;
    int number;
    int first;
    int second;
};

// The inner faces of all own cells of a node, cell by cell.
void listFaces(const CKVR3DWeldLine& r, const Extent& extent, std::span<const int> cells,
               std::vector<NodeFace>& faces) {
    faces.clear();
    for (std::size_t j = 0; j < cells.size(); ++j) {
        if (!extent.holdsOwn(cells[j])) continue;
        for (const int f : innerFacesOfCell(r, cells[j])) {
            if (f > r.m_nInnerFace) continue;
            faces.push_back({j, f, firstCell(r.m_ppInnerFace[f]), secondCell(r.m_ppInnerFace[f])});
        }
    }
}

// The angles of the pairs of cells at inner faces, each judged once instead of at every node of the
// face: neither the cells nor the face centre depend on the node.
class FaceAngles {
  public:
    FaceAngles(const CKVR3DWeldLine& r, const MeetingPairTest& test)
        : r_(r),
          test_(test),
          known_(2 * (static_cast<std::size_t>(std::max(r.m_nInnerFace, 0)) + 1),
                 std::numeric_limits<double>::quiet_NaN()) {}

    // Of cell a with b, at a face that b has in its row; never kept where they do not meet.
    double of(int a, int b, const NodeFace& face) {
        const bool isSecond = face.second == a;
        // Rows of an earlier mesh may hold faces that are now between others.
        if (b != (isSecond ? face.first : face.second)) return judge(a, b, face);
        double& angle = known_[2 * static_cast<std::size_t>(face.number) + (isSecond ? 1 : 0)];
        if (std::isnan(angle)) {
            const double judged = judge(a, b, face);
            angle = std::isnan(judged) ? kNeverKept : judged;
        }
        return angle;
    }

  private:
    // As little kept as kNoAngle, but told from what is not known yet.
    static constexpr double kNeverKept = -std::numeric_limits<double>::infinity();

    double judge(int a, int b, const NodeFace& face) const {
        if (!test_.mayMeet(b) || !test_.mayMeet(a, b)) return kNoAngle;
        return test_.angle(a, b, faceCentreAt(r_, a, face.number));
    }

    const CKVR3DWeldLine& r_;
    const MeetingPairTest& test_;
    std::vector<double> known_;  // per face and side, not a number where not judged yet
};

// The cells of one node, with what is asked of them again and again.
struct NodeCells {
    std::span<const int> cells;
    std::vector<NodeFace> faces;
};

// Judges the cell at one position of the node's row with those at all others, once per shared inner
// face, and lists them. On purpose: a cell that the row holds twice is its own neighbour, and the
// face centre is looked up with the face *number* as position in the cell's lists.
void judgeFaceNeighbours(const NodeCells& node, std::size_t position, FaceAngles& angles,
                         std::vector<int>& partners, double& largest) {
    const int a = node.cells[position];
    partners.clear();
    for (const NodeFace& face : node.faces) {
        if (face.position == position || (face.first != a && face.second != a)) continue;
        const int b = node.cells[face.position];
        partners.push_back(b);
        keepLargest(largest, angles.of(a, b, face));
    }
}

// Judges cell a with the cells, other than a, that neighbour two of its partners.
void judgeSecondRing(const CKVR3DWeldLine& r, const MeetingPairTest& test, const Extent& extent,
                     int a, std::span<const int> partners, const Vec3& P, double& largest) {
    for (std::size_t p = 0; p < partners.size(); ++p) {
        for (const int c : rowMembers(r.m_ppCellNeighbour[partners[p]])) {
            if (c == a || !extent.holds(c) || !test.mayMeet(c)) continue;
            const bool isCommon =
                std::any_of(partners.begin() + static_cast<std::ptrdiff_t>(p) + 1, partners.end(),
                            [&](int q) { return contains(rowMembers(r.m_ppCellNeighbour[q]), c); });
            if (!isCommon || !test.mayMeet(a, c) || !test.pointsAt(c, P)) continue;
            keepLargest(largest, test.angle(a, c));
        }
    }
}

}  // namespace

// A cell that cannot meet any other is passed over, and so is the second ring of a cell that does
// not flow towards the node.
void CKVR3DWeldLine::CalNodeVectorAngle_Modified_Hybrid() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_Hybrid\n");
    prepareLimits(*this, 75.0);
    const MeetingPairTest test(*this);
    const Extent extent = extentOf(*this);
    FaceAngles angles(*this, test);
    NodeCells node;
    std::vector<int> partners;
    for (int n = 1; n <= extent.nodes; ++n) {
        const Vec3 P{m_pNodeX[n], m_pNodeY[n], m_pNodeZ[n]};
        node.cells = cellsOfNode(*this, n);
        listFaces(*this, extent, node.cells, node.faces);
        double largest = m_pMeetingAngle[n];
        for (std::size_t position = 0; position < node.cells.size(); ++position) {
            const int a = node.cells[position];
            if (!extent.holdsOwn(a) || !test.mayMeet(a)) continue;
            judgeFaceNeighbours(node, position, angles, partners, largest);
            if (!test.pointsAt(a, P)) continue;
            judgeSecondRing(*this, test, extent, a, partners, P, largest);
        }
        m_pMeetingAngle[n] = 180.0 - largest;
    }
    finishMeetingAngles(*this);
}
