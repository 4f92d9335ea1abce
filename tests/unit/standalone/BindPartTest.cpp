// Two boxes, 1 and 3 wide, each on a rank of its own, seen from the left one. Its slots: 1 is the
// own cell, 2 to 6 the boundary faces, 7 the halo.
//
//     | 0 |     1     |      walls at x = 0, 1, 4

#include <gtest/gtest.h>

#include "BindBoxMesh.h"
#include "CCommunication.h"
#include "GridMesh.h"
#include "JoinedPart.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "bind/Analysis.h"
#include "comm/ThreadRanks.h"
#include "partition/SplitMesh.h"

namespace weldline::test {

namespace {

std::vector<int> row(const int* entries) {
    return {entries + 1, entries + 1 + entries[0]};
}

// Calls `check` on each rank with its part of the two boxes.
void onBothRanks(const std::function<void(Ranks&, const JoinedPart&)>& check) {
    const MeshPart whole = wholePart(boxRow({0, 1, 4}));
    const std::vector<int> partOfCell{0, 1};
    MeshSplitter splitter(whole, partOfCell, 2);
    const std::vector<MeshPart> parts{splitter.part(0), splitter.part(1)};
    runAsThreads(2, [&](Ranks& ranks) {
        check(ranks, JoinedPart(ranks, parts[static_cast<std::size_t>(ranks.rank())]));
    });
}

HostOptions named() {
    HostOptions options;
    options.controlFile = "run.cmp";
    return options;
}

}  // namespace

TEST(BoundPart, has_the_cell_across_in_a_halo_slot) {
    onBothRanks([](Ranks& ranks, const JoinedPart& own) {
        const float time = ranks.rank() == 0 ? 2.5F : 4.5F;
        HostModel model(own.mesh, own.groups, {time}, named(),
                        {ranks, own.interface, own.part.nodeNumber});
        EXPECT_EQ(*model.globalVariables().m_pProcessNumber, ranks.rank());
        if (ranks.rank() == 1) return;
        CKVR3DFiniteVolumeMesh& mesh = model.mesh();
        EXPECT_EQ(mesh.m_nCV, 1);
        EXPECT_EQ(mesh.m_nCV_Total, 7);
        EXPECT_EQ(mesh.m_nInnerFace, 0);
        EXPECT_EQ(mesh.m_nWallFace + mesh.m_nInletFace + mesh.m_nSymmFace, 5);
        EXPECT_EQ(mesh.m_pXc[7], 2.5);
        EXPECT_EQ(mesh.m_pYc[7], 0.5);
        EXPECT_EQ(mesh.m_pZc[7], 0.5);
        EXPECT_DOUBLE_EQ(mesh.m_pVolume[7], 3.0);
        const float* value = model.globalVariables().m_pFlowVariable;
        EXPECT_EQ(std::vector<float>(value + 1, value + 8),
                  (std::vector<float>{2.5F, 2.5F, 2.5F, 2.5F, 2.5F, 2.5F, 4.5F}));
        EXPECT_EQ(row(mesh.m_ppCellNeighbour[1]), std::vector{7});
        EXPECT_EQ(row(mesh.m_ppCellFace[1]).back(), 1);
        EXPECT_EQ(row(mesh.m_ppCellFaceType[1]).back(), 101);
        std::vector<int> nodes = row(mesh.m_ppParFaceNode[1]);
        std::sort(nodes.begin(), nodes.end());
        EXPECT_EQ(nodes, (std::vector{5, 6, 7, 8}));
    });
}

TEST(BoundPart, answers_the_interface_face_from_its_side) {
    onBothRanks([](Ranks& ranks, const JoinedPart& own) {
        HostModel model(own.mesh, own.groups, {1.0F}, named(),
                        {ranks, own.interface, own.part.nodeNumber});
        const bool left = ranks.rank() == 0;
        CPartitionFace_DLL& faces = model.partitionFaces();
        ASSERT_EQ(faces.NParInterFace(), 1);
        EXPECT_EQ(faces.ijParCV()[1], 1);
        EXPECT_EQ(faces.ijPar()[1], 7);
        EXPECT_EQ(faces.ijParSx()[1], left ? 1.0 : -1.0);
        EXPECT_EQ(faces.ijParSy()[1], 0.0);
        EXPECT_EQ(faces.ijParSz()[1], 0.0);
        EXPECT_EQ(faces.ijParxc()[1], 1.0);
        EXPECT_EQ(faces.ijParyc()[1], 0.5);
        EXPECT_EQ(faces.ijParzc()[1], 0.5);
        EXPECT_EQ(faces.ParInterFace_Lamda()[1], left ? 0.25 : 0.75);
        // The nodes at x = 1 and beyond, by their numbers in the whole mesh, from 1.
        EXPECT_EQ(model.globalNodes()[1], left ? 1 : 5);
        EXPECT_EQ(model.globalNodes()[8], left ? 8 : 12);
    });
}

TEST(BoundPart, fetches_the_second_injection_though_only_one_rank_has_one) {
    onBothRanks([](Ranks& ranks, const JoinedPart& own) {
        HostOptions options = named();
        if (ranks.rank() == 1) options.biInjection = {8.5F};
        if (ranks.rank() == 0) options.biInjection = {7.5F};
        HostModel model(own.mesh, own.groups, {0.0F}, options,
                        {ranks, own.interface, own.part.nodeNumber});
        EXPECT_EQ(*model.globalVariables().m_pAnalysisMode, 11);
        EXPECT_EQ(model.biInjection()[7], ranks.rank() == 0 ? 8.5F : 7.5F);
    });
}

TEST(BoundPart, a_wrong_size_on_one_rank_is_told_on_all) {
    onBothRanks([](Ranks& ranks, const JoinedPart& own) {
        const std::vector<float> times(ranks.rank() == 1 ? 2 : 1, 1.0F);
        EXPECT_THROW(HostModel(own.mesh, own.groups, times, named(),
                               {ranks, own.interface, own.part.nodeNumber}),
                     InputError);
    });
}

TEST(BoundPart, a_control_file_that_one_rank_cannot_open_fails_on_all) {
    const TemporaryFolder folder;
    const std::string there = folder.write("run.cmp", "");
    onBothRanks([&](Ranks& ranks, const JoinedPart& own) {
        HostOptions options;
        options.controlFile = ranks.rank() == 0 ? there : folder.path("none.cmp");
        const RankPart part{ranks, own.interface, own.part.nodeNumber};
        HostModel model(own.mesh, own.groups, {1.0F}, options, part);
        EXPECT_THROW(runWeldLine(model, part), InputError);
    });
}

// A bar of 8 x 2 x 2 cubes, filled from both ends and cut where the fronts meet; one cell of the
// right half has a state. Its nodes are free of weld lines on both ranks.
TEST(BoundPart, a_cell_state_keeps_nodes_of_other_ranks_free) {
    const TemporaryFolder folder;
    const std::string control =
        folder.write("run.cmp", "[WeldLinePlotCtrl]\n[/WeldLinePlotCtrl]\n");
    MeshPart whole = wholePart(hexahedraMesh(8, 2, 2));
    whole.patches[1].name = "gate2";
    whole.patches[2].name = "wall";
    std::vector<int> partOfCell;
    for (int c = 0; c < 32; ++c) partOfCell.push_back(c % 8 < 4 ? 0 : 1);
    whole.cellFields = {{}, {}};
    for (int c = 0; c < 32; ++c) {
        whole.cellFields[0].push_back(1.0 + std::min(c % 8, 7 - c % 8));
        whole.cellFields[1].push_back(c == 4 ? 1.0 : 0.0);
    }
    MeshSplitter splitter(whole, partOfCell, 2);
    const std::vector<MeshPart> parts{splitter.part(0), splitter.part(1)};
    runAsThreads(2, [&](Ranks& ranks) {
        const JoinedPart own(ranks, parts[static_cast<std::size_t>(ranks.rank())]);
        const RankPart part{ranks, own.interface, own.part.nodeNumber};
        HostOptions options;
        options.controlFile = control;
        const auto& fields = own.part.cellFields;
        options.cellState.assign(fields[1].begin(), fields[1].end());
        HostModel model(own.mesh, own.groups, {fields[0].begin(), fields[0].end()}, options, part);
        const std::vector<double> angles = runWeldLine(model, part);
        for (std::size_t n = 0; n < angles.size(); ++n) {
            const Vec3 p = own.mesh.points[n];
            if (p.x != 4.0) continue;
            // Cell 4 spans y and z from 0 to 1.
            const bool free = p.y < 2.0 && p.z < 2.0;
            EXPECT_EQ(angles[n] == 180.0, free) << p.y << " " << p.z;
        }
    });
}

}  // namespace weldline::test
