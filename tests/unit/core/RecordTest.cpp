#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "BoxMesh.h"
#include "CKVR3DWeldLine.h"

namespace weldline::test {

namespace {

// A calculator on memory that was full of ones before, so that a forgotten initial value shows.
class FreshRecord {
  public:
    FreshRecord() : m_memory(std::make_unique<Memory>()) {
        std::memset(m_memory->bytes, 0xFF, sizeof m_memory->bytes);
        m_record = new (m_memory->bytes) CKVR3DWeldLine;
    }
    FreshRecord(const FreshRecord&) = delete;
    FreshRecord& operator=(const FreshRecord&) = delete;
    ~FreshRecord() { m_record->~CKVR3DWeldLine(); }

    CKVR3DWeldLine& operator*() const { return *m_record; }

  private:
    struct Memory {
        alignas(CKVR3DWeldLine) unsigned char bytes[sizeof(CKVR3DWeldLine)];
    };
    std::unique_ptr<Memory> m_memory;
    CKVR3DWeldLine* m_record;
};

std::vector<std::string> logOf(const std::string& action, std::vector<int> objects) {
    std::vector<std::string> log;
    for (int object : objects) log.push_back("RBF" + std::to_string(object) + " " + action);
    return log;
}

class RecordObjects : public ::testing::Test {
  protected:
    void SetUp() override {
        resetRbfObjects();
        callLog().clear();
    }
    void TearDown() override { resetRbfObjects(); }
};

}  // namespace

TEST(Record, destructor_is_virtual) {
    static_assert(std::has_virtual_destructor_v<CKVR3DWeldLine>);
}

TEST(Record, host_objects_start_at_null) {
    const FreshRecord record;
    EXPECT_EQ((*record).m_pGV, nullptr);
    EXPECT_EQ((*record).m_pPartitionFace, nullptr);
    EXPECT_EQ((*record).m_pCommunication, nullptr);
    EXPECT_EQ((*record).m_pKVRCom, nullptr);
    EXPECT_EQ((*record).m_pMesh, nullptr);
    EXPECT_EQ((*record).m_pDebugFile, nullptr);
    EXPECT_FALSE((*record).m_FlagDebugOutput);
    EXPECT_EQ((*record).m_MeshFileType, 0);
}

TEST(Record, reset_before_the_first_binding_has_nothing_to_reset) {
    const FreshRecord record;
    (*record).InitialValue();
    EXPECT_EQ((*record).m_pMeetingAngle, nullptr);
}

TEST(Record, counts_start_at_zero) {
    const FreshRecord record;
    const CKVR3DWeldLine& c = *record;
    const int counts[] = {c.m_nCV_Total,   c.m_nCV,           c.m_nNode,        c.m_nCountAux,
                          c.m_nInnerFace,  c.m_nBoundaryFace, c.m_nWallFace,    c.m_nInletFace,
                          c.m_nOutletFace, c.m_nSymmFace,     c.m_nMaxCellFace, c.m_nMinCellFace};
    for (int count : counts) EXPECT_EQ(count, 0);
}

TEST(Record, borrowed_arrays_start_at_null) {
    const FreshRecord record;
    const CKVR3DWeldLine& c = *record;
    const void* const pointers[] = {c.m_pXc,
                                    c.m_pYc,
                                    c.m_pZc,
                                    c.m_pVolume,
                                    c.m_pHostCellArrayA,
                                    c.m_pHostCellArrayB,
                                    c.m_ppCellNode,
                                    c.m_pCellState,
                                    c.m_ppCellFace,
                                    c.m_ppCellFaceType,
                                    c.m_ppCellNeighbour,
                                    c.m_pNodeX,
                                    c.m_pNodeY,
                                    c.m_pNodeZ,
                                    c.m_pCavityNodeConn,
                                    c.m_ppInnerFace,
                                    c.m_pInnerFaceLambda,
                                    c.m_pWallFaceXc,
                                    c.m_pWallFaceYc,
                                    c.m_pWallFaceZc,
                                    c.m_pWallFaceSx,
                                    c.m_pWallFaceSy,
                                    c.m_pWallFaceSz,
                                    c.m_pWallFaceCV,
                                    c.m_pWallFaceBnd,
                                    c.m_pInletFaceXc,
                                    c.m_pInletFaceYc,
                                    c.m_pInletFaceZc,
                                    c.m_pInletFaceSx,
                                    c.m_pInletFaceSy,
                                    c.m_pInletFaceSz,
                                    c.m_pInletFaceCV,
                                    c.m_pInletFaceBnd,
                                    c.m_pOutletFaceXc,
                                    c.m_pOutletFaceYc,
                                    c.m_pOutletFaceZc,
                                    c.m_pOutletFaceSx,
                                    c.m_pOutletFaceSy,
                                    c.m_pOutletFaceSz,
                                    c.m_pOutletFaceCV,
                                    c.m_pOutletFaceBnd,
                                    c.m_pSymmFaceXc,
                                    c.m_pSymmFaceYc,
                                    c.m_pSymmFaceZc,
                                    c.m_pSymmFaceSx,
                                    c.m_pSymmFaceSy,
                                    c.m_pSymmFaceSz,
                                    c.m_pSymmFaceCV,
                                    c.m_pSymmFaceBnd,
                                    c.m_ppParFaceNode,
                                    c.m_pWallFace20,
                                    c.m_pInletFace20,
                                    c.m_pOutletFace20,
                                    c.m_pSymmFace20,
                                    c.m_pHostArray1,
                                    c.m_pHostArray2,
                                    c.m_pHostArray3,
                                    c.m_pHostArray4,
                                    c.m_pControlFilePath,
                                    c.m_pCavityGlobalNode,
                                    c.m_pMapCTG2ZNL,
                                    c.m_pBiIMFlowData};
    for (std::size_t i = 0; i < std::size(pointers); ++i)
        EXPECT_EQ(pointers[i], nullptr) << "pointer number " << i;
}

TEST(Record, owned_arrays_start_at_null) {
    const FreshRecord record;
    const CKVR3DWeldLine& c = *record;
    const void* const pointers[] = {
        c.m_pWork1X,    c.m_pWork1Y,      c.m_pWork1Z,       c.m_pGradX,        c.m_pGradY,
        c.m_pGradZ,     c.m_ppNodeCell,   c.m_ppNodeScratch, c.m_pZeroGradFlag, c.m_pReserved1,
        c.m_pVariable,  c.m_pVariableOrg, c.m_pMeetingAngle, c.m_ppReserved2,   c.m_ppCellInnerFace,
        c.m_pCellFlag2, c.m_pGrad2X,      c.m_pGrad2Y,       c.m_pGrad2Z};
    for (std::size_t i = 0; i < std::size(pointers); ++i)
        EXPECT_EQ(pointers[i], nullptr) << "pointer number " << i;
}

TEST(Record, settings_start_at_their_defaults) {
    const FreshRecord record;
    EXPECT_EQ((*record).m_nGradLoopBound, 1);
    EXPECT_EQ((*record).m_WeldlingAngleMethod, 4);
    EXPECT_EQ((*record).m_nGrad, 6);
    EXPECT_EQ((*record).m_nSmooth_beforeGrad, 2);
    EXPECT_EQ((*record).m_nSmooth_afterGrad, 4);
    EXPECT_EQ((*record).m_TruncateAngle, 135.0);
    EXPECT_EQ((*record).m_BoundaryAngle, -1.0);
    EXPECT_EQ((*record).m_GradValueFilterPara, 1.0);
    EXPECT_EQ((*record).m_Volume_Filter, 0.2);
    EXPECT_EQ((*record).m_GradMethodMFT, 3);
    EXPECT_EQ((*record).m_GradMeanFactor, 1.0e-4);
    EXPECT_EQ((*record).m_GradMagUpper, 0.0);
    EXPECT_EQ((*record).m_GradMagLower, 0.0);
}

// Mesh file type 2 selects other boundary angles, so a host that never names a type must not get
// it.
TEST(Record, mesh_file_type_starts_at_another_value_than_2) {
    const FreshRecord record;
    EXPECT_NE((*record).m_MeshFileType, 2);
}

TEST_F(RecordObjects, five_rbf_objects_are_built_in_order_and_destroyed_in_reverse) {
    {
        const FreshRecord record;
        EXPECT_EQ(callLog(), logOf("construct", {0, 1, 2, 3, 4}));
        callLog().clear();
    }
    EXPECT_EQ(callLog(), logOf("destroy", {4, 3, 2, 1, 0}));
}

TEST_F(RecordObjects, a_throwing_rbf_object_undoes_the_earlier_ones_in_reverse) {
    for (int throwing = 0; throwing < 5; ++throwing) {
        resetRbfObjects(throwing);
        callLog().clear();
        EXPECT_THROW(std::make_unique<CKVR3DWeldLine>(), std::runtime_error);
        std::vector<std::string> expected;
        for (int i = 0; i < throwing; ++i) expected.push_back(logOf("construct", {i})[0]);
        for (int i = throwing - 1; i >= 0; --i) expected.push_back(logOf("destroy", {i})[0]);
        EXPECT_EQ(callLog(), expected) << "object " << throwing << " throws";
    }
}

// The sanitizer build tells when something below is not released, or released in the wrong way.
TEST(Record, destructor_releases_reserved_arrays_and_skips_empty_rows) {
    const auto record = std::make_unique<CKVR3DWeldLine>();
    record->m_nCV_Total = 3;
    record->m_pReserved1 = new char[16];
    record->m_ppReserved2 = new void*[4];
    record->m_ppReserved2[0] = new char[8];
    record->m_ppReserved2[1] = nullptr;
    record->m_ppReserved2[2] = new char[8];
    record->m_ppReserved2[3] = new char[8];
}

TEST(Record, destructor_leaves_borrowed_data_alone) {
    std::vector<int> row(4, 1);
    int* rows[] = {row.data()};
    TestHost host;
    addBox(host, 2, 2, 2, 1.0);
    host.finish();
    {
        CKVR3DWeldLine record;
        record.setWallFace20(rows);
        record.setCavityGlobalNode(row.data());
        record.setFlowData(host.gv(), host.mesh());
    }
    EXPECT_EQ(row, std::vector<int>(4, 1));
    EXPECT_EQ(host.mesh()->m_pVolume[8], 1.0);
    EXPECT_EQ(host.gv()->m_pFlowVariable[8], 1.0F);
}

}  // namespace weldline::test
