#pragma once

#include <type_traits>

#include "Reference.h"
#include "StrictHost.h"

namespace weldline::reference {

// How many of the fields that a binding copies differ from what the host handed out last. The
// reference keeps the mesh whole, so the answer is 0 for it.
template <class Record>
int differsFromBound(const Record& c, const StrictHost& host) {
    if constexpr (std::is_same_v<Record, Reference>)
        return 0;
    else {
        const CKVR3DFiniteVolumeMesh& m = host.boundMesh();
        const CKvr3dGV& g = host.boundVariables();
        int different = 0;
        const auto check = [&](bool same) { different += same ? 0 : 1; };
        check(c.m_pXc == m.m_pXc);
        check(c.m_pYc == m.m_pYc);
        check(c.m_pZc == m.m_pZc);
        check(c.m_pVolume == m.m_pVolume);
        check(c.m_pNodeX == m.m_pNodeX);
        check(c.m_pNodeY == m.m_pNodeY);
        check(c.m_pNodeZ == m.m_pNodeZ);
        check(c.m_ppInnerFace == m.m_ppInnerFace);
        check(c.m_pInnerFaceLambda == m.m_pInnerFaceLambda);
        check(c.m_ppCellNode == m.m_ppCellNode);
        check(c.m_ppCellFace == m.m_ppCellFace);
        check(c.m_ppCellFaceType == m.m_ppCellFaceType);
        check(c.m_ppCellNeighbour == m.m_ppCellNeighbour);
        check(c.m_ppParFaceNode == m.m_ppParFaceNode);
        check(c.m_pHostCellArrayB == m.m_pHostCellArrayB);
        check(c.m_nCountAux == m.m_nCountAux);
        check(c.m_nWallFace == m.m_nWallFace);
        check(c.m_nInletFace == m.m_nInletFace);
        check(c.m_nOutletFace == m.m_nOutletFace);
        check(c.m_nSymmFace == m.m_nSymmFace);
        check(c.m_pWallFaceXc == m.m_pWallFaceXc);
        check(c.m_pWallFaceYc == m.m_pWallFaceYc);
        check(c.m_pWallFaceZc == m.m_pWallFaceZc);
        check(c.m_pWallFaceSx == m.m_pWallFaceSx);
        check(c.m_pWallFaceSy == m.m_pWallFaceSy);
        check(c.m_pWallFaceSz == m.m_pWallFaceSz);
        check(c.m_pWallFaceCV == m.m_pWallFaceCV);
        check(c.m_pWallFaceBnd == m.m_pWallFaceBnd);
        check(c.m_pInletFaceXc == m.m_pInletFaceXc);
        check(c.m_pInletFaceYc == m.m_pInletFaceYc);
        check(c.m_pInletFaceZc == m.m_pInletFaceZc);
        check(c.m_pInletFaceSx == m.m_pInletFaceSx);
        check(c.m_pInletFaceSy == m.m_pInletFaceSy);
        check(c.m_pInletFaceSz == m.m_pInletFaceSz);
        check(c.m_pInletFaceCV == m.m_pInletFaceCV);
        check(c.m_pInletFaceBnd == m.m_pInletFaceBnd);
        check(c.m_pOutletFaceXc == m.m_pOutletFaceXc);
        check(c.m_pOutletFaceYc == m.m_pOutletFaceYc);
        check(c.m_pOutletFaceZc == m.m_pOutletFaceZc);
        check(c.m_pOutletFaceSx == m.m_pOutletFaceSx);
        check(c.m_pOutletFaceSy == m.m_pOutletFaceSy);
        check(c.m_pOutletFaceSz == m.m_pOutletFaceSz);
        check(c.m_pOutletFaceCV == m.m_pOutletFaceCV);
        check(c.m_pOutletFaceBnd == m.m_pOutletFaceBnd);
        check(c.m_pSymmFaceXc == m.m_pSymmFaceXc);
        check(c.m_pSymmFaceYc == m.m_pSymmFaceYc);
        check(c.m_pSymmFaceZc == m.m_pSymmFaceZc);
        check(c.m_pSymmFaceSx == m.m_pSymmFaceSx);
        check(c.m_pSymmFaceSy == m.m_pSymmFaceSy);
        check(c.m_pSymmFaceSz == m.m_pSymmFaceSz);
        check(c.m_pSymmFaceCV == m.m_pSymmFaceCV);
        check(c.m_pSymmFaceBnd == m.m_pSymmFaceBnd);
        check(c.m_pCellState == g.m_pCellState);
        check(c.m_pHostCellArrayA == g.m_pHostCellArrayA);
        check(c.m_pHostArray1 == g.m_pHostArray1);
        check(c.m_pHostArray2 == g.m_pHostArray2);
        check(c.m_pHostArray3 == g.m_pHostArray3);
        check(c.m_pHostArray4 == g.m_pHostArray4);
        check(c.m_pControlFilePath == g.m_pControlFilePath);
        return different;
    }
}

}  // namespace weldline::reference
