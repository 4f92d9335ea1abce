#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "FaceViews.h"
#include "NodeRows.h"
#include "PairTests.h"

// The walk of methods 2 and 4: around each node, every two cells that share a face which touches
// the node.

namespace weldline::core {

inline constexpr int kNoCell = 0;

// The cell across a face, and the number of the face if it is an interface face.
struct Across {
    int cell;
    int interfaceFace;  // 0 for an inner face
};

// What lies across the face at position k of cell a; kNoCell behind a boundary face.
inline Across across(const CKVR3DWeldLine& r, int a, int k) {
    const int type = r.m_ppCellFaceType[a][k];
    const int face = r.m_ppCellFace[a][k];
    if (type == kInnerFace) {
        const double* record = r.m_ppInnerFace[face];
        const int first = firstCell(record);
        return {first == a ? secondCell(record) : first, 0};
    }
    if (type == kInterfaceFace) {
        const InterfaceFaces interface(r.m_pPartitionFace);
        const int first = interface.ownCell(face);
        const int second = interface.haloSlot(face);
        return {first == a ? second : first, face};
    }
    return {kNoCell, 0};
}

// Does the face count at a node? An inner face does when its other cell contains the node, an
// interface face when its node list names the node.
inline bool touches(const CKVR3DWeldLine& r, const Across& face, int node,
                    std::span<const int> cellsOfNode) {
    if (face.interfaceFace == 0) return contains(cellsOfNode, face.cell);
    return contains(rowMembers(r.m_ppParFaceNode[face.interfaceFace]), node);
}

// The faces of a cell across which streams meet, as seen from the cell. A pair of cells and the
// centre of its face are the same at every node of the face, four nodes of a hexahedron: each face
// of a cell is judged once, when the walk first comes to the cell, and only what is accepted is
// looked at at the nodes.
template <class PairTest>
class MeetingFaces {
  public:
    struct MeetingFace {
        Across across;
        double angle;
    };

    MeetingFaces(const CKVR3DWeldLine& record, const PairTest& test)
        : m_record(record),
          m_test(test),
          m_extent(extentOf(record)),
          m_first(slotsUpTo(m_extent.ownCells), kNotJudged),
          m_faces(1, kEnd) {}

    // The meeting faces of own cell a, in the order of its list; behind the last one lies kNoCell.
    const MeetingFace* of(int a) {
        int& first = m_first[static_cast<std::size_t>(a)];
        if (first == kNotJudged) first = judged(a);
        return &m_faces[static_cast<std::size_t>(first)];
    }

  private:
    static constexpr int kNotJudged = -1;
    static constexpr int kNone = 0;  // all cells without meeting faces share one end
    static constexpr MeetingFace kEnd{{kNoCell, 0}, 0.0};

    int judged(int a) {
        if (!m_test.mayMeet(a)) return kNone;
        const std::size_t first = m_faces.size();
        for (int k = 1; k <= m_record.m_ppCellFace[a][0]; ++k) {
            const Across face = across(m_record, a, k);
            const int b = face.cell;
            if (!m_extent.holds(b) || !m_test.mayMeet(b) || !m_test.mayMeet(a, b)) continue;
            const double theta = m_test.angle(a, b, faceCentreAt(m_record, a, k));
            if (!std::isnan(theta)) m_faces.push_back({face, theta});
        }
        if (m_faces.size() == first) return kNone;
        m_faces.push_back(kEnd);
        return static_cast<int>(first);
    }

    const CKVR3DWeldLine& m_record;
    const PairTest& m_test;
    Extent m_extent;
    std::vector<int> m_first;  // per own cell its first entry in m_faces
    std::vector<MeetingFace> m_faces;
};

// Raises each node's angle to the largest one of the pairs around it, then turns it into the
// meeting angle.
template <class PairTest>
void walkFacesOfNodes(CKVR3DWeldLine& r, const PairTest& test) {
    const Extent extent = extentOf(r);
    MeetingFaces<PairTest> meetingFaces(r, test);
    for (int n = 1; n <= extent.nodes; ++n) {
        const std::span<const int> cells = cellsOfNode(r, n);
        double largest = r.m_pMeetingAngle[n];
        for (const int a : cells) {
            if (!extent.holdsOwn(a)) continue;
            for (const auto* face = meetingFaces.of(a); face->across.cell != kNoCell; ++face) {
                if (touches(r, face->across, n, cells)) keepLargest(largest, face->angle);
            }
        }
        r.m_pMeetingAngle[n] = 180.0 - largest;
    }
}

}  // namespace weldline::core
