#pragma once

#include "FaceViews.h"
#include "NodeRows.h"

// The walk of methods 2 and 4: around each node, every two cells that share a face which touches
// the node.

namespace weldline::core {

inline constexpr int kNoCell = 0;

// The cell across the face at position k of cell a, as seen from a node: an inner face counts when
// its other cell contains the node, an interface face when its node list names the node. kNoCell
// where the face does not count; boundary faces never do.
inline int cellAcross(const CKVR3DWeldLine& r, int node, int a, int k) {
    const int type = r.m_ppCellFaceType[a][k];
    const int face = r.m_ppCellFace[a][k];
    if (type == kInnerFace) {
        const double* record = r.m_ppInnerFace[face];
        const int first = firstCell(record);
        const int b = first == a ? secondCell(record) : first;
        return contains(cellsOfNode(r, node), b) ? b : kNoCell;
    }
    if (type == kInterfaceFace) {
        const InterfaceFaces interface(r.m_pPartitionFace);
        const int first = interface.ownCell(face);
        const int second = interface.haloSlot(face);
        const int b = first == a ? second : first;
        return contains(rowMembers(r.m_ppParFaceNode[face]), node) ? b : kNoCell;
    }
    return kNoCell;
}

// Calls judge(node, k, a, b) for each pair, then turns the node's largest accepted angle into its
// meeting angle. Two cells of a node meet twice, once from each side.
template <class Judge>
void walkFacesOfNodes(CKVR3DWeldLine& r, Judge judge) {
    const Extent extent = extentOf(r);
    for (int n = 1; n <= extent.nodes; ++n) {
        for (const int a : cellsOfNode(r, n)) {
            if (!extent.holdsOwn(a)) continue;
            for (int k = 1; k <= r.m_ppCellFace[a][0]; ++k) {
                const int b = cellAcross(r, n, a, k);
                if (extent.holds(b)) judge(n, k, a, b);
            }
        }
        r.m_pMeetingAngle[n] = 180.0 - r.m_pMeetingAngle[n];
    }
}

}  // namespace weldline::core
