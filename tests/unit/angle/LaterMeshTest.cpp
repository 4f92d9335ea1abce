// A later mesh with fewer cells behind the rows of the first run: what it no longer has takes no
// part, although the rows still name it and the first mesh's data still lie in the arrays.

#include "Bench.h"
#include "angle/Finishing.h"

namespace weldline::test {

namespace {

//   +--------+--------+
//   | A ->   |   <- B |      cells 2 (A) and 3 (B) share inner face 1 and nodes 1 and 2 and meet
//   +--------+--------+      head-on; cell 1, in both nodes, lifts the limit of gradients
struct LastCellMeets : Bench {
    LastCellMeets() {
        addNode({10, 20, 30});
        addNode({10, 21, 31});
        addCell({7, 20, 30}, {1000, 0, 0}, {1, 2});
        addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
        addCell({11, 20, 30}, {-1, 0, 0}, {1, 2});
        host.addInner(2, 3, {1, 0, 0}, {10, 20, 30});
        bind(PaceMaker::No);
        line.m_pZeroGradFlag[1] = 1;
    }
};

// Do the two meet where the later mesh has so many own cells, and so many slots?
bool meetsInLaterMesh(int method, int ownCells, int slots) {
    LastCellMeets bench;
    bench.line.m_nCV = ownCells;
    bench.line.m_nCV_Total = slots;
    bench.run(method);
    return bench.met(1);
}

}  // namespace

TEST(LaterMesh, cells_beyond_the_slots_meet_nothing) {
    for (const int method : {1, 2, 3, 4}) {
        EXPECT_TRUE(meetsInLaterMesh(method, 3, 3)) << method;
        EXPECT_FALSE(meetsInLaterMesh(method, 2, 2)) << method;
    }
}

// Methods 1 and 3 pair own cells; methods 2 and 4 walk across a face to any slot behind it.
TEST(LaterMesh, slots_beyond_the_own_cells_are_found_across_faces_only) {
    for (const int method : {2, 4}) EXPECT_TRUE(meetsInLaterMesh(method, 2, 3)) << method;
    for (const int method : {1, 3}) EXPECT_FALSE(meetsInLaterMesh(method, 2, 3)) << method;
}

//   +-----+-----+-----+
//   | A->   C     <-B |     A - C and C - B share faces; A and B are neighbours of both partners
//   +-----+-----+-----+     of C, and only the second ring joins A and B
//
// Node 1 belongs to A and to C twice, so that C comes twice among A's partners; the neighbour lists
// of C name B.
TEST(LaterMesh, method_3_leaves_out_second_ring_cells_beyond_the_slots) {
    for (const bool isBeyond : {false, true}) {
        Bench bench;
        bench.addNode({10, 20, 30});
        bench.addNode({12, 20, 30});
        bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});         // A
        bench.addCell({10, 20, 30}, {1000, 0, 0}, {1, 1, 2});  // C, lifts the limit of gradients
        const int b = bench.addCell({11, 20, 30}, {-1, 0, 0}, {2});  // B
        bench.host.addInner(1, 2, {1, 0, 0}, {9.5, 20, 30});
        bench.host.addNeighbour(2, b);
        bench.bind();
        bench.line.m_pZeroGradFlag[2] = 1;
        if (isBeyond) bench.line.m_nCV_Total = bench.line.m_nCV = 2;
        bench.run(3);
        EXPECT_EQ(bench.met(1), !isBeyond);
    }
}

// Node 1 meets at A and B; its only neighbour below the limit is node 2 by way of cell C, which is
// no own cell any more.
TEST(LaterMesh, truncation_looks_for_neighbours_in_own_cells_only) {
    for (const bool isOwn : {true, false}) {
        Bench bench;
        for (int n = 0; n < 2; ++n) bench.addNode({10, 20, 30});
        bench.addCell({9, 20, 30}, {1, 0, 0}, {1});
        const int c = bench.addCell({11, 20, 30}, {-1, 0, 0}, {1, 2});
        bench.bind(Bench::PaceMaker::No);
        bench.line.m_TruncateAngle = 135.0;
        bench.line.m_pMeetingAngle[1] = 90.0;
        bench.line.m_pMeetingAngle[2] = 90.0;
        if (!isOwn) bench.line.m_nCV = c - 1;
        bench.line.truncateAngle();
        EXPECT_EQ(bench.angle(1), isOwn ? 90.0 : 180.0);
    }
}

// Cell 1 lists node 0, which is none: it is no neighbour, and no cell state reaches it.
TEST(LaterMesh, node_0_of_a_cell_is_left_out) {
    for (const bool isSwitchedOff : {false, true}) {
        Bench bench;
        for (int n = 0; n < 2; ++n) bench.addNode({10, 20, 30});
        bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
        bench.bind(Bench::PaceMaker::No);
        bench.line.m_ppCellNode[1][2] = 0;
        bench.line.m_TruncateAngle = 135.0;
        for (const int node : {0, 1}) bench.line.m_pMeetingAngle[node] = 90.0;
        bench.line.m_pMeetingAngle[2] = 180.0;
        bench.host.setState(1, isSwitchedOff ? 1 : 0);
        core::finishMeetingAngles(bench.line);
        EXPECT_EQ(bench.angle(0), 90.0);
        EXPECT_EQ(bench.angle(1), 180.0);
    }
}

TEST(LaterMesh, cell_with_a_negative_count_of_nodes_has_none) {
    Bench bench;
    for (int n = 0; n < 2; ++n) bench.addNode({10, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
    bench.bind(Bench::PaceMaker::No);
    bench.line.m_ppCellNode[1][0] = -1;
    bench.line.m_TruncateAngle = 135.0;
    for (const int node : {1, 2}) bench.line.m_pMeetingAngle[node] = 90.0;
    core::finishMeetingAngles(bench.line);
    EXPECT_EQ(bench.angle(1), 180.0);
}

// Methods called for without the connectivity of a run: without rows of nodes no node has a cell,
// and without rows of cells no cell has an inner face.
TEST(LaterMesh, rows_that_are_not_made_yet_are_empty) {
    for (const bool hasNodeRows : {false, true}) {
        TwoCells bench;
        CKVR3DWeldLine line;
        line.setFlowData(bench.host.gv(), bench.host.mesh());
        if (hasNodeRows) line.getInnerCell03Conn();
        line.CalNodeVectorAngle_Modified_Hybrid();
        for (int node = 1; node <= 4; ++node) EXPECT_EQ(line.m_pMeetingAngle[node], 180.0);
    }
}

// Without boundary slots the last own cell is the last slot, and its row of inner faces the last of
// the table. Face 2 is found in the row of cell 3 alone: seen from cell 3 its number is a position
// beyond the cell's only face.
//
//   +-----+-----+-----+
//   |  1  1  2->2<- 3 |
//   +-----+-----+-----+
TEST(LaterMesh, last_row_of_the_face_table_is_read) {
    Bench bench;
    bench.addNode({10, 20, 30});
    bench.addNode({10, 21, 31});
    bench.addCell({7, 20, 30}, {1000, 0, 0}, {1, 2});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
    bench.addCell({11, 20, 30}, {-1, 0, 0}, {1, 2});
    bench.host.addInner(1, 2, {1, 0, 0}, {8, 20, 30});
    bench.host.addInner(2, 3, {1, 0, 0}, {10, 20, 30});
    bench.bind(Bench::PaceMaker::No);
    bench.line.m_pZeroGradFlag[1] = 1;
    bench.run(3);
    EXPECT_EQ(bench.angle(1), kHeadOn);
}

}  // namespace weldline::test
