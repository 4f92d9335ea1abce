// The walk over the faces of a node's cells, which methods 2 and 4 share: inner faces whose other
// cell contains the node, and interface faces that name the node.

#include "Bench.h"

namespace weldline::test {

namespace {

class FaceWalk : public testing::TestWithParam<int> {
  protected:
    bool meetsHalo(const std::function<void(HaloPair&)>& change) const {
        HaloPair bench;
        change(bench);
        bench.run(GetParam());
        return bench.met(1);
    }
};

//   A -> | <- B | C       face 1 between A and B, face 2 between B and C; node 1 in A, B and C,
//        1                node 2 in A and C, node 3 in A and B
struct ThreeCells : Bench {
    ThreeCells() {
        for (int n = 0; n < 3; ++n) addNode({10, 20, 30});
        addCell({9, 20, 30}, {1, 0, 0}, {1, 2, 3});
        addCell({11, 20, 30}, {-1, 0, 0}, {1, 3});
        addCell({13, 20, 30}, {-1, 0, 0}, {1, 2});
        host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
        host.addInner(2, 3, {1, 0, 0}, {12, 20, 30});
        bind();
    }
};

}  // namespace

TEST_P(FaceWalk, all_nodes_of_the_face_meet) {
    TwoCells bench;
    bench.run(GetParam());
    for (int node = 1; node <= 4; ++node) EXPECT_EQ(bench.angle(node), kHeadOn);
}

TEST_P(FaceWalk, cells_without_a_common_face_do_not_meet) {
    EXPECT_FALSE(meets(GetParam(), [](TwoCells&) {}, {.sharedFace = false}));
}

// B does not contain node 2, so face 1 is no business of node 2, though its centre is near.
TEST_P(FaceWalk, other_cell_must_contain_the_node) {
    ThreeCells bench;
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
    EXPECT_EQ(bench.angle(2), 180.0);
    EXPECT_EQ(bench.angle(3), kHeadOn);
}

TEST_P(FaceWalk, skips_faces_that_are_neither_inner_nor_interface) {
    for (int type : {1, 2, 3, 4, -1, 100, 102})
        EXPECT_FALSE(meets(GetParam(), [&](TwoCells& bench) {
            bench.line.m_ppCellFaceType[1][1] = type;
            bench.line.m_ppCellFaceType[2][1] = type;
        })) << type;
}

TEST_P(FaceWalk, one_side_of_an_inner_face_is_enough) {
    for (int cell : {1, 2})
        EXPECT_TRUE(meets(GetParam(), [&](TwoCells& bench) {
            bench.line.m_ppCellFaceType[cell][1] = 1;
        })) << cell;
}

TEST_P(FaceWalk, walks_no_further_than_the_count_of_faces) {
    EXPECT_FALSE(meets(GetParam(), [](TwoCells& bench) {
        bench.line.m_ppCellFace[1][0] = 0;
        bench.line.m_ppCellFace[2][0] = 0;
    }));
}

TEST_P(FaceWalk, takes_the_cells_of_a_face_in_either_order) {
    EXPECT_TRUE(meets(GetParam(), [](TwoCells& bench) { bench.host.setInnerCells(1, 2, 1); }));
}

TEST_P(FaceWalk, cuts_the_reals_of_a_face_record) {
    EXPECT_TRUE(meets(GetParam(), [](TwoCells& bench) { bench.host.setInnerCells(1, 1.9, 2.9); }));
    EXPECT_TRUE(meets(GetParam(), [](TwoCells& bench) { bench.host.setInnerCells(1, 2.5, 1.5); }));
}

// The record of face 2 names B and C only, but A's row lists the face: A is then compared with the
// first of the two, which is B; with B and C exchanged, with C.
TEST_P(FaceWalk, keeps_the_first_cell_of_a_foreign_face) {
    for (bool exchanged : {false, true}) {
        ThreeCells bench;
        bench.line.m_ppCellFace[1][1] = 2;
        bench.line.m_ppInnerFace[2][6] = 10.0;  // the centre between A and B
        bench.line.m_ppCellFaceType[2][1] = bench.line.m_ppCellFaceType[2][2] = 1;
        bench.setGradient(3, {0, 0, 0});
        if (exchanged) bench.host.setInnerCells(2, 3, 2);
        bench.run(GetParam());
        EXPECT_EQ(bench.met(1), !exchanged);
    }
}

TEST_P(FaceWalk, interface_face_meets_at_the_nodes_that_it_names) {
    HaloPair bench;
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
    EXPECT_EQ(bench.angle(2), kHeadOn);
    EXPECT_EQ(bench.angle(3), 180.0);
}

TEST_P(FaceWalk, interface_face_without_nodes_is_skipped) {
    EXPECT_FALSE(meetsHalo([](HaloPair& b) { b.line.m_ppParFaceNode[1][0] = 0; }));
    EXPECT_FALSE(meetsHalo([](HaloPair& b) { b.line.m_ppParFaceNode[1][0] = -1; }));
}

TEST_P(FaceWalk, interface_face_names_its_cells_in_either_order) {
    EXPECT_TRUE(meetsHalo([](HaloPair& b) {
        std::swap(b.host.partition()->ijParCV()[1], b.host.partition()->ijPar()[1]);
    }));
}

TEST_P(FaceWalk, interface_face_is_judged_at_its_own_centre) {
    EXPECT_FALSE(meetsHalo([](HaloPair& b) {
        b.line.m_BoundaryAngle = 60.0;
        b.host.partition()->ijParyc()[1] = 90.0;
    }));
    EXPECT_FALSE(meetsHalo([](HaloPair& b) {
        b.line.m_BoundaryAngle = 60.0;
        b.host.partition()->ijParzc()[1] = -90.0;
    }));
    EXPECT_FALSE(meetsHalo([](HaloPair& b) {
        b.line.m_BoundaryAngle = 60.0;
        b.host.partition()->ijParxc()[1] = 90.0;
    }));
}

TEST_P(FaceWalk, halo_slot_counts_like_any_cell) {
    EXPECT_FALSE(meetsHalo([](HaloPair& b) { b.line.m_pZeroGradFlag[b.halo] = 1; }));
    EXPECT_TRUE(meetsHalo([](HaloPair& b) { b.line.m_pZeroGradFlag[b.halo] = 2; }));
    EXPECT_FALSE(meetsHalo([](HaloPair& b) { b.setGradient(b.halo, {1, 0, 0}); }));
    EXPECT_FALSE(meetsHalo(
        [](HaloPair& b) { b.line.m_pVariable[b.halo] = b.line.m_pVariableOrg[b.halo] = 0.0; }));
    EXPECT_FALSE(meetsHalo([](HaloPair& b) { b.line.m_pXc[b.halo] = 9.0; }));
}

// Interface face 1 (node 3) has a neighbour that flows along with A, face 2 (nodes 1 and 2) one
// that comes on. The number in A's row leads to centre, cells and nodes, not the position.
TEST_P(FaceWalk, interface_faces_are_found_by_number) {
    Bench bench;
    for (int n = 0; n < 3; ++n) bench.addNode({10, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2, 3});
    bench.host.addInterface(1, {1, 0, 0}, {10, 90, 30}, 0.5, {11, 90, 30}, 1.0, {3});
    bench.host.addInterface(1, {1, 0, 0}, {10, 20, 30}, 0.5, {11, 20, 30}, 1.0, {1, 2});
    bench.bind();
    bench.line.m_BoundaryAngle = 60.0;
    bench.setGradient(bench.host.haloSlot(1), {1, 0, 0});
    bench.setGradient(bench.host.haloSlot(2), {-1, 0, 0});
    std::swap(bench.line.m_ppCellFace[1][1], bench.line.m_ppCellFace[1][2]);
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
    EXPECT_EQ(bench.angle(2), kHeadOn);
    EXPECT_EQ(bench.angle(3), 180.0);
}

// 143.13 degrees from the pair against left-overs of 100 and 150.
TEST_P(FaceWalk, keeps_left_over_angles_in_the_maximum) {
    for (double leftOver : {100.0, 150.0}) {
        TwoCells bench;
        bench.setGradient(2, {-0.8, 0.6, 0});
        bench.line.m_pMeetingAngle[1] = leftOver;
        bench.run(GetParam());
        EXPECT_EQ(bench.angle(1), leftOver == 100.0 ? 36.86989748229402 : 30.0);
    }
}

// Face 1 between A and B counts at node 1 alone, face 2 between A and C at nodes 1 and 2: what was
// judged at node 1 is looked up at node 2, where only C is a cell of the node as well.
TEST_P(FaceWalk, a_judged_face_counts_at_the_nodes_of_its_other_cell_only) {
    Bench bench;
    for (int n = 0; n < 2; ++n) bench.addNode({10, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});        // A
    bench.addCell({11, 20, 30}, {-1, 0, 0}, {1});         // B, head-on
    bench.addCell({11, 20, 30}, {-0.8, 0.6, 0}, {1, 2});  // C, 143.13 degrees
    bench.host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
    bench.host.addInner(1, 3, {1, 0, 0}, {10, 20, 30});
    bench.bind();
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
    EXPECT_EQ(bench.angle(2), 36.86989748229402);
}

// One look at the interface face's cells (2 arrays) and, if its pair may meet, at its centre (3
// arrays), although the face names two nodes of the cell, which has three. Method 2 needs no centre
// to see that cells in one place do not flow towards each other.
TEST_P(FaceWalk, asks_the_host_once_for_an_interface_face) {
    for (const bool isAccepted : {true, false}) {
        HaloPair bench;
        if (!isAccepted) bench.line.m_pXc[bench.halo] = 9.0;  // in A's centre: nothing comes closer
        const int before = bench.host.partitionCalls;
        bench.run(GetParam());
        EXPECT_EQ(bench.met(1), isAccepted);
        EXPECT_EQ(bench.host.partitionCalls - before, isAccepted || GetParam() == 4 ? 5 : 2);
    }
}

INSTANTIATE_TEST_SUITE_P(All, FaceWalk, testing::Values(2, 4), methodName);

// The ratios 3 / 0.3 and 0.3 / 3 differ in the volume filter (see the cell loop); either cell is
// the first once, so one order that passes is enough.
TEST(FaceLoop, inner_faces_are_met_from_both_sides) {
    for (double first : {0.3, 3.0})
        EXPECT_TRUE(meets(2, [&](TwoCells& bench) {
            bench.line.m_pVolume[1] = first;
            bench.line.m_pVolume[2] = first == 3.0 ? 0.3 : 3.0;
            bench.line.m_Volume_Filter = 0.1;
        }));
}

// An interface face is met from the own cell only, which is the first.
TEST(FaceLoop, halo_volume_counts_as_the_second) {
    for (double own : {0.3, 3.0}) {
        HaloPair bench;
        bench.line.m_pVolume[1] = own;
        bench.line.m_pVolume[bench.halo] = own == 3.0 ? 0.3 : 3.0;
        bench.line.m_Volume_Filter = 0.1;
        bench.run(2);
        EXPECT_EQ(bench.met(1), own == 3.0);
    }
}

TEST(FaceLoop, row_with_a_negative_count_is_empty) {
    HaloPair bench;
    for (const int count : {-1, -100}) {
        bench.line.m_ppParFaceNode[1][0] = count;
        bench.run(2);
        EXPECT_EQ(bench.angle(1), 180.0) << count;
        bench.line.m_pMeetingAngle[1] = 0.0;
        bench.line.m_BoundaryAngle = -1.0;
    }
}

}  // namespace weldline::test
