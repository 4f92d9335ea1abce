#include <gtest/gtest.h>

#include <array>

#include "BindBoxMesh.h"
#include "base/Errors.h"
#include "bind/HostModel.h"

// Two cubes, inlet on the left, outlet on the right, symmetry below, walls else:
//
//      W   W
//    +---+---+      cell 1: x 0 to 1, cell 2: x 1 to 2 (1-based)
//  I | 1 | 2 | O    boundary faces of cell 1: x-, y-, y+, z-, z+ -> slots 3 to 7
//    +---+---+                    of cell 2: x+, y-, y+, z-, z+ -> slots 8 to 12
//      W   W        z-: symmetry

namespace weldline::test {

namespace {

class TwoCubes : public ::testing::Test {
  protected:
    static HostOptions options() {
        HostOptions o;
        o.controlFile = "run.cmp";
        return o;
    }

    FvMesh fv = boxMesh(2, 1, 1);
    BoundaryGroups groups = boxGroups(fv, "IOWWSW");
    HostModel host{fv, groups, {2.5F, 0.0F}, options()};
    CKVR3DFiniteVolumeMesh& mesh = host.mesh();
    CKvr3dGV& gv = host.globalVariables();
};

template <class T>
std::vector<T> slots(const T* array, int count) {
    return {array + 1, array + 1 + count};
}

std::vector<int> row(const int* entries) {
    return {entries + 1, entries + 1 + entries[0]};
}

}  // namespace

TEST_F(TwoCubes, counts) {
    EXPECT_EQ(mesh.m_nCV, 2);
    EXPECT_EQ(mesh.m_nCV_Total, 12);
    EXPECT_EQ(mesh.m_nNode, 12);
    EXPECT_EQ(mesh.m_nInnerFace, 1);
    EXPECT_EQ(mesh.m_nInletFace, 1);
    EXPECT_EQ(mesh.m_nOutletFace, 1);
    EXPECT_EQ(mesh.m_nSymmFace, 2);
    EXPECT_EQ(mesh.m_nWallFace, 6);
}

TEST_F(TwoCubes, boundary_slots_hold_fill_time_and_volume_of_their_cell) {
    EXPECT_EQ(slots(gv.m_pFlowVariable, 12),
              (std::vector<float>{2.5F, 0, 2.5F, 2.5F, 2.5F, 2.5F, 2.5F, 0, 0, 0, 0, 0}));
    EXPECT_EQ(slots(mesh.m_pVolume, 12), std::vector<double>(12, 1.0));
}

TEST_F(TwoCubes, centres_of_boundary_slots_are_face_centres) {
    EXPECT_EQ(slots(mesh.m_pXc, 12),
              (std::vector<double>{0.5, 1.5, 0, 0.5, 0.5, 0.5, 0.5, 2, 1.5, 1.5, 1.5, 1.5}));
    EXPECT_EQ(slots(mesh.m_pYc, 12),
              (std::vector<double>{0.5, 0.5, 0.5, 0, 1, 0.5, 0.5, 0.5, 0, 1, 0.5, 0.5}));
    EXPECT_EQ(slots(mesh.m_pZc, 12),
              (std::vector<double>{0.5, 0.5, 0.5, 0.5, 0.5, 0, 1, 0.5, 0.5, 0.5, 0, 1}));
}

TEST_F(TwoCubes, inner_face_record) {
    EXPECT_EQ(slots(mesh.m_ppInnerFace[1], 8), (std::vector<double>{1, 2, 1, 0, 0, 1, 0.5, 0.5}));
    EXPECT_EQ(mesh.m_pInnerFaceLambda[1], 0.5);
}

// Point (i, j, k) has the number 1 + i + 3 (j + 2 k).
TEST_F(TwoCubes, nodes) {
    EXPECT_EQ(mesh.m_pNodeX[3], 2.0);
    EXPECT_EQ(mesh.m_pNodeY[4], 1.0);
    EXPECT_EQ(mesh.m_pNodeZ[7], 1.0);
    EXPECT_EQ(row(mesh.m_ppCellNode[2]), (std::vector<int>{2, 3, 6, 5, 8, 9, 12, 11}));
    EXPECT_EQ(row(host.cellNodes()[1]), (std::vector<int>{1, 2, 5, 4, 7, 8, 11, 10}));
}

TEST_F(TwoCubes, cell_faces_are_numbered_within_their_kind) {
    // inner 1, then inlet 1, wall 1 and 2, symmetry 1, wall 3
    EXPECT_EQ(row(mesh.m_ppCellFace[1]), (std::vector<int>{1, 1, 1, 2, 1, 3}));
    EXPECT_EQ(row(mesh.m_ppCellFaceType[1]), (std::vector<int>{0, 2, 1, 1, 4, 1}));
    // inner 1, then outlet 1, wall 4 and 5, symmetry 2, wall 6
    EXPECT_EQ(row(mesh.m_ppCellFace[2]), (std::vector<int>{1, 1, 4, 5, 2, 6}));
    EXPECT_EQ(row(mesh.m_ppCellFaceType[2]), (std::vector<int>{0, 3, 1, 1, 4, 1}));
}

TEST_F(TwoCubes, cell_neighbours) {
    EXPECT_EQ(row(mesh.m_ppCellNeighbour[1]), std::vector<int>{2});
    EXPECT_EQ(row(mesh.m_ppCellNeighbour[2]), std::vector<int>{1});
}

TEST_F(TwoCubes, groups_name_cell_and_slot) {
    EXPECT_EQ(slots(mesh.m_pWallFaceCV, 6), (std::vector<int>{1, 1, 1, 2, 2, 2}));
    EXPECT_EQ(slots(mesh.m_pWallFaceBnd, 6), (std::vector<int>{4, 5, 7, 9, 10, 12}));
    EXPECT_EQ(slots(mesh.m_pInletFaceCV, 1), std::vector<int>{1});
    EXPECT_EQ(slots(mesh.m_pInletFaceBnd, 1), std::vector<int>{3});
    EXPECT_EQ(slots(mesh.m_pOutletFaceCV, 1), std::vector<int>{2});
    EXPECT_EQ(slots(mesh.m_pOutletFaceBnd, 1), std::vector<int>{8});
    EXPECT_EQ(slots(mesh.m_pSymmFaceCV, 2), (std::vector<int>{1, 2}));
    EXPECT_EQ(slots(mesh.m_pSymmFaceBnd, 2), (std::vector<int>{6, 11}));
}

TEST_F(TwoCubes, groups_hold_centres_and_outward_areas) {
    EXPECT_EQ(mesh.m_pInletFaceSx[1], -1.0);
    EXPECT_EQ(mesh.m_pOutletFaceSx[1], 1.0);
    EXPECT_EQ(mesh.m_pOutletFaceXc[1], 2.0);
    EXPECT_EQ(slots(mesh.m_pSymmFaceSz, 2), (std::vector<double>{-1, -1}));
    EXPECT_EQ(slots(mesh.m_pSymmFaceZc, 2), (std::vector<double>{0, 0}));
    EXPECT_EQ(slots(mesh.m_pWallFaceSy, 6), (std::vector<double>{-1, 1, 0, -1, 1, 0}));
    EXPECT_EQ(slots(mesh.m_pWallFaceYc, 6), (std::vector<double>{0, 1, 0.5, 0, 1, 0.5}));
    EXPECT_EQ(slots(mesh.m_pWallFaceSz, 6), (std::vector<double>{0, 0, 1, 0, 0, 1}));
}

TEST_F(TwoCubes, lists_for_the_setters_exist) {
    for (const GroupKind kind :
         {GroupKind::Wall, GroupKind::Inlet, GroupKind::Outlet, GroupKind::Symmetry})
        EXPECT_NE(host.faceNodes(kind), nullptr);
    // x- face of cell 1: points (0,0,0), (0,0,1), (0,1,1), (0,1,0)
    EXPECT_EQ(row(host.faceNodes(GroupKind::Inlet)[1]), (std::vector<int>{1, 7, 10, 4}));
    EXPECT_EQ(slots(host.globalNodes(), 3), (std::vector<int>{1, 2, 3}));
    EXPECT_NE(host.cavityMap(), nullptr);
    EXPECT_EQ(host.biInjection(), nullptr);
}

TEST_F(TwoCubes, defaults_of_the_solver_object) {
    EXPECT_STREQ(gv.m_pControlFilePath, "run.cmp");
    EXPECT_STREQ(gv.m_pMeshFilePath, "");
    EXPECT_EQ(*gv.m_pProcessNumber, 0);
    EXPECT_EQ(*gv.m_pAnalysisMode, 0);
    EXPECT_EQ(*gv.m_pGradSetSwitch, 1.0);
    EXPECT_EQ(slots(gv.m_pCellState, 12), std::vector<int>(12, 0));
}

TEST_F(TwoCubes, bi_injection_switches_the_analysis_mode) {
    HostOptions o = options();
    o.biInjection = {7.0F, 8.0F};
    HostModel other(fv, groups, {1.0F, 0.0F}, o);
    EXPECT_EQ(*other.globalVariables().m_pAnalysisMode, 11);
    EXPECT_EQ(slots(other.biInjection(), 12),
              (std::vector<float>{7, 8, 7, 7, 7, 7, 7, 8, 8, 8, 8, 8}));
}

TEST_F(TwoCubes, options_reach_the_solver_object) {
    HostOptions o = options();
    o.cellState = {0, -1};
    o.gradientSetSwitch = 0.0;
    o.meshFile = "part.q7f";
    HostModel other(fv, groups, {1.0F, 0.0F}, o);
    CKvr3dGV& solver = other.globalVariables();
    EXPECT_EQ(slots(solver.m_pCellState, 3), (std::vector<int>{0, -1, 0}));
    EXPECT_EQ(*solver.m_pGradSetSwitch, 0.0);
    EXPECT_EQ(*solver.m_pProcessNumber, 0);
    EXPECT_STREQ(solver.m_pMeshFilePath, "part.q7f");
}

TEST_F(TwoCubes, control_file_without_an_ending_is_refused) {
    for (const char* path : {"", "run", "case.v2/run"}) {
        HostOptions o = options();
        o.controlFile = path;
        EXPECT_THROW(HostModel(fv, groups, {1.0F, 0.0F}, o), UsageError) << path;
    }
}

TEST_F(TwoCubes, wrong_array_sizes_are_refused) {
    EXPECT_THROW(HostModel(fv, groups, {1.0F}, options()), InputError);
    HostOptions o = options();
    o.cellState = {1};
    EXPECT_THROW(HostModel(fv, groups, {1.0F, 1.0F}, o), InputError);
    o = options();
    o.biInjection = {1.0F, 1.0F, 1.0F};
    EXPECT_THROW(HostModel(fv, groups, {1.0F, 1.0F}, o), InputError);
}

TEST(HostModel, groups_without_faces_have_arrays_all_the_same) {
    const FvMesh fv = boxMesh(1, 1, 1);
    HostOptions o;
    o.controlFile = "run.cmp";
    HostModel host(fv, boxGroups(fv, "WWWWWW"), {1.0F}, o);
    EXPECT_EQ(host.mesh().m_nInnerFace, 0);
    EXPECT_EQ(host.mesh().m_nInletFace, 0);
    EXPECT_NE(host.mesh().m_pInletFaceCV, nullptr);
    EXPECT_NE(host.mesh().m_ppInnerFace, nullptr);
    EXPECT_EQ(host.mesh().m_ppCellNeighbour[1][0], 0);
}

}  // namespace weldline::test
