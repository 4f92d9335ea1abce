#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include "Rig.h"

namespace weldline::test {

namespace {

// A plate of 3 x 2 x 1 cubes whose counts all differ: 6 cells, 7 inner faces, 2 inlet faces (-x),
// 3 outlet faces (-y), 9 symmetry faces (+y and -z), 8 wall faces (+x and +z), 24 nodes.
std::optional<Group> allGroups(Point normal, Point) {
    if (normal[0] < 0.0) return Group::Inlet;
    if (normal[1] < 0.0) return Group::Outlet;
    if (normal[1] > 0.0 || normal[2] < 0.0) return Group::Symm;
    return Group::Wall;
}

// What the record must refer to, and what it refers to.
using Pairs = std::vector<std::pair<const void*, const void*>>;

Pairs cellPairs(const CKVR3DWeldLine& c, const CKVR3DFiniteVolumeMesh& mesh) {
    return {{mesh.m_pXc, c.m_pXc},
            {mesh.m_pYc, c.m_pYc},
            {mesh.m_pZc, c.m_pZc},
            {mesh.m_pVolume, c.m_pVolume},
            {mesh.m_pHostCellArrayB, c.m_pHostCellArrayB},
            {mesh.m_ppCellNode, c.m_ppCellNode},
            {mesh.m_ppCellFace, c.m_ppCellFace},
            {mesh.m_ppCellFaceType, c.m_ppCellFaceType},
            {mesh.m_ppCellNeighbour, c.m_ppCellNeighbour},
            {mesh.m_pNodeX, c.m_pNodeX},
            {mesh.m_pNodeY, c.m_pNodeY},
            {mesh.m_pNodeZ, c.m_pNodeZ},
            {mesh.m_ppInnerFace, c.m_ppInnerFace},
            {mesh.m_pInnerFaceLambda, c.m_pInnerFaceLambda},
            {mesh.m_ppParFaceNode, c.m_ppParFaceNode}};
}

Pairs groupPairs(const CKVR3DWeldLine& c, const CKVR3DFiniteVolumeMesh& mesh) {
    return {{mesh.m_pWallFaceXc, c.m_pWallFaceXc},     {mesh.m_pWallFaceYc, c.m_pWallFaceYc},
            {mesh.m_pWallFaceZc, c.m_pWallFaceZc},     {mesh.m_pWallFaceSx, c.m_pWallFaceSx},
            {mesh.m_pWallFaceSy, c.m_pWallFaceSy},     {mesh.m_pWallFaceSz, c.m_pWallFaceSz},
            {mesh.m_pWallFaceCV, c.m_pWallFaceCV},     {mesh.m_pWallFaceBnd, c.m_pWallFaceBnd},
            {mesh.m_pInletFaceXc, c.m_pInletFaceXc},   {mesh.m_pInletFaceYc, c.m_pInletFaceYc},
            {mesh.m_pInletFaceZc, c.m_pInletFaceZc},   {mesh.m_pInletFaceSx, c.m_pInletFaceSx},
            {mesh.m_pInletFaceSy, c.m_pInletFaceSy},   {mesh.m_pInletFaceSz, c.m_pInletFaceSz},
            {mesh.m_pInletFaceCV, c.m_pInletFaceCV},   {mesh.m_pInletFaceBnd, c.m_pInletFaceBnd},
            {mesh.m_pOutletFaceXc, c.m_pOutletFaceXc}, {mesh.m_pOutletFaceYc, c.m_pOutletFaceYc},
            {mesh.m_pOutletFaceZc, c.m_pOutletFaceZc}, {mesh.m_pOutletFaceSx, c.m_pOutletFaceSx},
            {mesh.m_pOutletFaceSy, c.m_pOutletFaceSy}, {mesh.m_pOutletFaceSz, c.m_pOutletFaceSz},
            {mesh.m_pOutletFaceCV, c.m_pOutletFaceCV}, {mesh.m_pOutletFaceBnd, c.m_pOutletFaceBnd},
            {mesh.m_pSymmFaceXc, c.m_pSymmFaceXc},     {mesh.m_pSymmFaceYc, c.m_pSymmFaceYc},
            {mesh.m_pSymmFaceZc, c.m_pSymmFaceZc},     {mesh.m_pSymmFaceSx, c.m_pSymmFaceSx},
            {mesh.m_pSymmFaceSy, c.m_pSymmFaceSy},     {mesh.m_pSymmFaceSz, c.m_pSymmFaceSz},
            {mesh.m_pSymmFaceCV, c.m_pSymmFaceCV},     {mesh.m_pSymmFaceBnd, c.m_pSymmFaceBnd}};
}

Pairs solverPairs(const CKVR3DWeldLine& c, const CKvr3dGV& gv) {
    return {{gv.m_pCellState, c.m_pCellState},
            {gv.m_pHostCellArrayA, c.m_pHostCellArrayA},
            {gv.m_pHostArray1, c.m_pHostArray1},
            {gv.m_pHostArray2, c.m_pHostArray2},
            {gv.m_pHostArray3, c.m_pHostArray3},
            {gv.m_pHostArray4, c.m_pHostArray4},
            {gv.m_pControlFilePath, c.m_pControlFilePath}};
}

void expectBound(const Pairs& pairs) {
    std::set<const void*> distinct;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        EXPECT_NE(pairs[i].first, nullptr) << "array number " << i;
        EXPECT_EQ(pairs[i].second, pairs[i].first) << "array number " << i;
        distinct.insert(pairs[i].first);
    }
    EXPECT_EQ(distinct.size(), pairs.size()) << "two arrays of the host are the same";
}

void fill(double* array, int last, double value) {
    std::fill_n(array, last + 1, value);
}

}  // namespace

TEST(Binding, takes_every_count_from_the_mesh) {
    const Rig rig(3, 2, 1, allGroups);
    const CKVR3DWeldLine& c = rig.calculator;
    EXPECT_EQ(c.m_nCV_Total, 6 + 22);
    EXPECT_EQ(c.m_nCV, 6);
    EXPECT_EQ(c.m_nNode, 24);
    EXPECT_EQ(c.m_nCountAux, 77);
    EXPECT_EQ(c.m_nInnerFace, 7);
    EXPECT_EQ(c.m_nWallFace, 8);
    EXPECT_EQ(c.m_nInletFace, 2);
    EXPECT_EQ(c.m_nOutletFace, 3);
    EXPECT_EQ(c.m_nSymmFace, 9);
    EXPECT_EQ(c.m_nBoundaryFace, 22);
}

TEST(Binding, refers_to_the_host_objects) {
    Rig rig;
    EXPECT_EQ(rig.calculator.m_pGV, rig.host.gv());
    EXPECT_EQ(rig.calculator.m_pMesh, rig.host.mesh());
}

TEST(Binding, refers_to_every_array_of_the_mesh) {
    Rig rig(3, 2, 1, allGroups);
    int arrayB = 0;
    rig.host.mesh()->m_pHostCellArrayB = &arrayB;
    rig.bind();
    expectBound(cellPairs(rig.calculator, *rig.host.mesh()));
    expectBound(groupPairs(rig.calculator, *rig.host.mesh()));
}

TEST(Binding, refers_to_every_array_of_the_solver_object) {
    Rig rig;
    int arrays[5] = {};
    CKvr3dGV& gv = *rig.host.gv();
    gv.m_pHostCellArrayA = &arrays[0];
    gv.m_pHostArray1 = &arrays[1];
    gv.m_pHostArray2 = &arrays[2];
    gv.m_pHostArray3 = &arrays[3];
    gv.m_pHostArray4 = &arrays[4];
    rig.bind();
    expectBound(solverPairs(rig.calculator, gv));
}

TEST(Binding, gives_every_owned_array_an_address_of_its_own) {
    const Rig rig;
    const CKVR3DWeldLine& c = rig.calculator;
    const std::set<const void*> owned{
        c.m_pVariable, c.m_pVariableOrg,  c.m_pWork1X,       c.m_pWork1Y,    c.m_pWork1Z,
        c.m_pGradX,    c.m_pGradY,        c.m_pGradZ,        c.m_pGrad2X,    c.m_pGrad2Y,
        c.m_pGrad2Z,   c.m_ppNodeScratch, c.m_pMeetingAngle, c.m_pCellFlag2, c.m_pZeroGradFlag};
    EXPECT_EQ(owned.size(), 15U);
    EXPECT_EQ(owned.count(nullptr), 0U);
}

TEST(Binding, work_arrays_start_at_zero_in_all_slots) {
    const Rig rig;
    const CKVR3DWeldLine& c = rig.calculator;
    const std::vector<double> zeros(rig.host.slots() + 1, 0.0);
    for (const double* array : {c.m_pWork1X, c.m_pWork1Y, c.m_pWork1Z, c.m_pGradX, c.m_pGradY,
                                c.m_pGradZ, c.m_pGrad2X, c.m_pGrad2Y, c.m_pGrad2Z})
        EXPECT_TRUE(sameBits(slotsOf(array, rig.host.slots()), zeros));
    EXPECT_TRUE(sameBits(slotsOf(c.m_pMeetingAngle, 27), std::vector<double>(28, 0.0)));
    EXPECT_EQ(slotsOf(c.m_pCellFlag2, rig.host.slots()), std::vector<int>(zeros.size(), 0));
    EXPECT_EQ(slotsOf(c.m_pZeroGradFlag, rig.host.slots()), std::vector<int>(zeros.size(), 0));
}

TEST(Binding, every_node_has_80_zero_bytes_of_its_own) {
    const Rig rig;
    std::set<const void*> blocks;
    for (int n = 0; n <= 27; ++n) {
        const auto* block = static_cast<const unsigned char*>(rig.calculator.m_ppNodeScratch[n]);
        ASSERT_NE(block, nullptr) << "node " << n;
        EXPECT_TRUE(std::all_of(block, block + 80, [](unsigned char b) { return b == 0; }));
        blocks.insert(block);
    }
    EXPECT_EQ(blocks.size(), 28U);
}

TEST(Binding, blocks_of_different_nodes_do_not_overlap) {
    const Rig rig;
    void** blocks = rig.calculator.m_ppNodeScratch;
    for (int n = 0; n <= 27; ++n) std::fill_n(static_cast<unsigned char*>(blocks[n]), 80, n);
    for (int n = 0; n <= 27; ++n) {
        const auto* block = static_cast<const unsigned char*>(blocks[n]);
        EXPECT_TRUE(std::all_of(block, block + 80, [n](unsigned char b) { return b == n; })) << n;
    }
}

TEST(Binding, loads_the_variable_of_every_slot_widened) {
    Rig rig;
    for (int slot = 1; slot <= rig.host.slots(); ++slot)
        rig.host.setValue(slot, 0.1F * static_cast<float>(slot));
    rig.bind();
    EXPECT_EQ(rig.calculator.m_pVariable[0], 0.0);
    EXPECT_EQ(rig.calculator.m_pVariableOrg[0], 0.0);
    for (int slot = 1; slot <= rig.host.slots(); ++slot) {
        const double value = 0.1F * static_cast<float>(slot);
        EXPECT_EQ(rig.calculator.m_pVariable[slot], value) << "slot " << slot;
        EXPECT_EQ(rig.calculator.m_pVariableOrg[slot], value) << "slot " << slot;
    }
}

TEST(Binding, a_mesh_without_anything_gets_arrays_of_one_slot) {
    TestHost host;
    host.finish();
    CKVR3DWeldLine calculator;
    EXPECT_TRUE(calculator.setFlowData(host.gv(), host.mesh()));
    EXPECT_EQ(calculator.getMeetingAngle()[0], 0.0);
    EXPECT_EQ(calculator.m_pVariable[0], 0.0);
    EXPECT_NE(calculator.m_ppNodeScratch[0], nullptr);
}

TEST(InitialValue, clears_work_arrays_first_gradient_set_flags_and_angles) {
    Rig rig;
    CKVR3DWeldLine& c = rig.calculator;
    const int last = rig.host.slots();
    double* const cleared[] = {c.m_pWork1X, c.m_pWork1Y, c.m_pWork1Z,
                               c.m_pGradX,  c.m_pGradY,  c.m_pGradZ};
    for (double* array : cleared) fill(array, last, 3.0);
    fill(c.m_pMeetingAngle, 27, 3.0);
    std::fill_n(c.m_pCellFlag2, last + 1, 3);
    std::fill_n(c.m_pZeroGradFlag, last + 1, 1);
    c.InitialValue();
    for (const double* array : cleared)
        EXPECT_TRUE(sameBits(slotsOf(array, last), std::vector<double>(last + 1, 0.0)));
    EXPECT_TRUE(sameBits(slotsOf(c.m_pMeetingAngle, 27), std::vector<double>(28, 0.0)));
    EXPECT_EQ(slotsOf(c.m_pCellFlag2, last), std::vector<int>(last + 1, 0));
    EXPECT_EQ(slotsOf(c.m_pZeroGradFlag, last), std::vector<int>(last + 1, 0));
}

TEST(InitialValue, keeps_variable_and_second_gradient_set) {
    Rig rig;
    CKVR3DWeldLine& c = rig.calculator;
    const int last = rig.host.slots();
    double* const kept[] = {c.m_pVariable, c.m_pVariableOrg, c.m_pGrad2X, c.m_pGrad2Y, c.m_pGrad2Z};
    for (double* array : kept) fill(array, last, 3.0);
    c.InitialValue();
    for (const double* array : kept)
        EXPECT_TRUE(sameBits(slotsOf(array, last), std::vector<double>(last + 1, 3.0)));
}

}  // namespace weldline::test
