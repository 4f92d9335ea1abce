#include <gtest/gtest.h>

#include <vector>

#include "CKVR3DWeldLine.h"

namespace weldline::test {

namespace {

// The three lists together: every field in the order in which it must lie in memory.
std::vector<const void*> fieldsBeforeBoundaryFaces(const CKVR3DWeldLine& c) {
    return {&c.m_pGV,
            &c.m_pPartitionFace,
            &c.m_pCommunication,
            &c.m_pKVRCom,
            &c.m_pMesh,
            &c.m_FlagDebugOutput,
            &c.m_pDebugFile,
            &c.m_MeshFileType,
            &c.m_nCV_Total,
            &c.m_nCV,
            &c.m_nNode,
            &c.m_nCountAux,
            &c.m_nInnerFace,
            &c.m_nBoundaryFace,
            &c.m_nWallFace,
            &c.m_nInletFace,
            &c.m_nOutletFace,
            &c.m_nSymmFace,
            &c.m_pXc,
            &c.m_pYc,
            &c.m_pZc,
            &c.m_pVolume,
            &c.m_pHostCellArrayA,
            &c.m_pHostCellArrayB,
            &c.m_ppCellNode,
            &c.m_pCellState,
            &c.m_ppCellFace,
            &c.m_ppCellFaceType,
            &c.m_ppCellNeighbour,
            &c.m_pWork1X,
            &c.m_pWork1Y,
            &c.m_pWork1Z,
            &c.m_pGradX,
            &c.m_pGradY,
            &c.m_pGradZ,
            &c.m_pNodeX,
            &c.m_pNodeY,
            &c.m_pNodeZ,
            &c.m_pCavityNodeConn,
            &c.m_ppNodeCell,
            &c.m_ppInnerFace,
            &c.m_pInnerFaceLambda};
}

std::vector<const void*> fieldsOfBoundaryFaces(const CKVR3DWeldLine& c) {
    return {&c.m_pWallFaceXc,   &c.m_pWallFaceYc,   &c.m_pWallFaceZc,   &c.m_pWallFaceSx,
            &c.m_pWallFaceSy,   &c.m_pWallFaceSz,   &c.m_pWallFaceCV,   &c.m_pWallFaceBnd,
            &c.m_pInletFaceXc,  &c.m_pInletFaceYc,  &c.m_pInletFaceZc,  &c.m_pInletFaceSx,
            &c.m_pInletFaceSy,  &c.m_pInletFaceSz,  &c.m_pInletFaceCV,  &c.m_pInletFaceBnd,
            &c.m_pOutletFaceXc, &c.m_pOutletFaceYc, &c.m_pOutletFaceZc, &c.m_pOutletFaceSx,
            &c.m_pOutletFaceSy, &c.m_pOutletFaceSz, &c.m_pOutletFaceCV, &c.m_pOutletFaceBnd,
            &c.m_pSymmFaceXc,   &c.m_pSymmFaceYc,   &c.m_pSymmFaceZc,   &c.m_pSymmFaceSx,
            &c.m_pSymmFaceSy,   &c.m_pSymmFaceSz,   &c.m_pSymmFaceCV,   &c.m_pSymmFaceBnd,
            &c.m_ppParFaceNode, &c.m_pWallFace20,   &c.m_pInletFace20,  &c.m_pOutletFace20,
            &c.m_pSymmFace20,   &c.m_ppNodeScratch};
}

std::vector<const void*> fieldsFromSettingsOn(const CKVR3DWeldLine& c) {
    return {&c.m_nGradLoopBound,
            &c.m_WeldlingAngleMethod,
            &c.m_nGrad,
            &c.m_nSmooth_beforeGrad,
            &c.m_nSmooth_afterGrad,
            &c.m_TruncateAngle,
            &c.m_BoundaryAngle,
            &c.m_GradValueFilterPara,
            &c.m_Volume_Filter,
            &c.m_GradMethodMFT,
            &c.m_pZeroGradFlag,
            &c.m_GradMeanFactor,
            &c.m_GradMagUpper,
            &c.m_GradMagLower,
            &c.m_pHostArray1,
            &c.m_pHostArray2,
            &c.m_pHostArray3,
            &c.m_pHostArray4,
            &c.m_pControlFilePath,
            &c.m_MeshFileName,
            &c.m_DebugFileName,
            &c.m_pReserved1,
            &c.m_pCavityGlobalNode,
            &c.m_pMapCTG2ZNL,
            &c.m_pVariable,
            &c.m_pVariableOrg,
            &c.m_pMeetingAngle,
            &c.m_pBiIMFlowData,
            &c.m_ppReserved2,
            &c.m_ppCellInnerFace,
            &c.m_nMaxCellFace,
            &c.m_nMinCellFace,
            &c.m_pCellFlag2,
            &c.m_bMethod40,
            &c.m_nDefaultPass,
            &c.m_RBF,
            &c.m_FaceAreaMag,
            &c.m_pGrad2X,
            &c.m_pGrad2Y,
            &c.m_pGrad2Z};
}

}  // namespace

TEST(RecordLayout, fields_lie_in_their_order) {
    const CKVR3DWeldLine record;
    std::vector<const void*> fields = fieldsBeforeBoundaryFaces(record);
    for (const void* field : fieldsOfBoundaryFaces(record)) fields.push_back(field);
    for (const void* field : fieldsFromSettingsOn(record)) fields.push_back(field);
    for (std::size_t i = 1; i < fields.size(); ++i)
        EXPECT_LT(fields[i - 1], fields[i]) << "field number " << i;
}

TEST(RecordLayout, names_hold_1024_characters) {
    static_assert(sizeof(CKVR3DWeldLine::m_MeshFileName) == 1024);
    static_assert(sizeof(CKVR3DWeldLine::m_DebugFileName) == 1024);
    static_assert(sizeof(CKVR3DWeldLine::m_RBF) == 5 * sizeof(CKvrFaceRBFInternalObject));
}

}  // namespace weldline::test
