// Method 1: every two cells of a node, judged at the node.

#include "Bench.h"

namespace weldline::test {

//   1-----+-----2
//   | A ->|<- B |     node 1 in cell A alone
//   +-----+-----+
TEST(CellLoop, node_in_one_cell_meets_nothing) {
    Bench bench;
    bench.addNode({8, 20, 30});
    bench.addNode({12, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1});
    bench.addCell({11, 20, 30}, {-1, 0, 0}, {2});
    bench.host.addInner(1, 2, {4, 0, 0}, {10, 20, 30});
    bench.bind(Bench::PaceMaker::No);
    bench.run(1);
    EXPECT_EQ(bench.angle(1), 180.0);
    EXPECT_EQ(bench.angle(2), 180.0);
}

TEST(CellLoop, node_of_dropped_pairs_meets_nothing) {
    TwoCells bench;
    bench.line.m_pZeroGradFlag[2] = 1;
    bench.run(1);
    for (int node = 1; node <= 4; ++node) EXPECT_EQ(bench.angle(node), 180.0);
}

TEST(CellLoop, all_nodes_of_the_pair_meet) {
    TwoCells bench;
    bench.run(1);
    for (int node = 1; node <= 4; ++node) EXPECT_EQ(bench.angle(node), kHeadOn);
}

TEST(CellLoop, cells_without_a_common_face_meet) {
    EXPECT_TRUE(meets(1, [](TwoCells&) {}, {.sharedFace = false}));
}

// 0.3 / 3 is 0.09999999999999999, below the limit 0.1; 3 / 0.3 is 10, not above 1 / 0.1. So the
// order of the two cells decides, and the earlier cell of the node's row is the first.
TEST(CellLoop, earlier_cell_of_the_row_is_the_first) {
    const auto meetsVolumes = [](double first, double second) {
        return meets(1, [&](TwoCells& bench) {
            bench.line.m_pVolume[1] = first;
            bench.line.m_pVolume[2] = second;
            bench.line.m_Volume_Filter = 0.1;
        });
    };
    EXPECT_FALSE(meetsVolumes(0.3, 3.0));
    EXPECT_TRUE(meetsVolumes(3.0, 0.3));
}

TEST(CellLoop, order_is_that_of_the_row_not_of_the_numbers) {
    TwoCells bench;
    bench.line.m_pVolume[1] = 0.3;
    bench.line.m_pVolume[2] = 3.0;
    bench.line.m_Volume_Filter = 0.1;
    std::swap(bench.line.m_ppNodeCell[1][1], bench.line.m_ppNodeCell[1][2]);
    bench.run(1);
    EXPECT_TRUE(bench.met(1));
    EXPECT_FALSE(bench.met(2));
}

// Three cells around node 1:
//
//   A ->  1  <- B      A and B meet head-on; A and C, whose gradient is (-0.8, 0.6, 0), meet with
//            C         acos(-0.8) = 143.13 degrees; B and C do not meet
//
// Whatever the order, the largest angle stays.
TEST(CellLoop, largest_angle_of_all_pairs_stays) {
    const std::vector<std::pair<Point, Point>> cells{
        {{9, 20, 30}, {1, 0, 0}}, {{11, 20, 30}, {-1, 0, 0}}, {{11, 19, 30}, {-0.8, 0.6, 0}}};
    for (const std::vector<int>& order :
         std::vector<std::vector<int>>{{0, 1, 2}, {0, 2, 1}, {2, 0, 1}}) {
        Bench bench;
        bench.addNode({10, 20, 30});
        bench.addNode({600, 600, 600});
        for (int cell : order) bench.addCell(cells[cell].first, cells[cell].second, {1});
        bench.bind();
        bench.run(1);
        EXPECT_EQ(bench.angle(1), kHeadOn);
    }
}

// Without B: node 1 keeps the angle of A and C, 180 - 143.13.
TEST(CellLoop, nodes_keep_their_own_largest_angle) {
    Bench bench;
    bench.addNode({10, 20, 30});
    bench.addNode({10, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
    bench.addCell({11, 20, 30}, {-1, 0, 0}, {2});
    bench.addCell({11, 19, 30}, {-0.8, 0.6, 0}, {1});
    bench.bind();
    bench.run(1);
    EXPECT_EQ(bench.angle(1), 36.86989748229402);
    EXPECT_EQ(bench.angle(2), kHeadOn);
}

// 100 was left over: the pair's 143.13 is larger and replaces it. 150 is larger and stays.
TEST(CellLoop, keeps_left_over_angles_in_the_maximum) {
    for (double leftOver : {100.0, 150.0}) {
        TwoCells bench;
        bench.setGradient(2, {-0.8, 0.6, 0});
        bench.line.m_pMeetingAngle[1] = leftOver;
        bench.run(1);
        EXPECT_EQ(bench.angle(1), leftOver == 100.0 ? 36.86989748229402 : 30.0);
    }
}

}  // namespace weldline::test
