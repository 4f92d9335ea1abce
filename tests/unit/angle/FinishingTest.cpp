// What every method does after its pairs: 180 minus, truncation, cell-state override.

#include "Bench.h"

namespace weldline::test {

namespace {

class Finishing : public testing::TestWithParam<int> {};

//   1  A | B  2..5  C  6      A and B meet head-on at nodes 2 to 5, which belong to both; node 1 is
//                             A's alone; C, without faces, has nodes 5 and 6
struct ThreeCells : Bench {
    ThreeCells() {
        for (int n = 0; n < 6; ++n) addNode({10, 20, 30});
        addCell({9, 20, 30}, {1, 0, 0}, {1, 2, 3, 4, 5});
        addCell({11, 20, 30}, {-1, 0, 0}, {2, 3, 4, 5});
        addCell({13, 20, 30}, {1, 0, 0}, {5, 6});
        host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
        bind();
        line.m_TruncateAngle = 135.0;
    }
    void expectMet(const std::vector<bool>& expected) const {
        for (int n = 1; n <= 6; ++n)
            EXPECT_EQ(angle(n), expected[n - 1] ? kHeadOn : 180.0) << "node " << n;
    }
};

}  // namespace

TEST_P(Finishing, nodes_without_a_pair_get_180) {
    ThreeCells bench;
    bench.run(GetParam());
    bench.expectMet({false, true, true, true, true, false});
}

TEST_P(Finishing, slot_0_is_left_alone) {
    ThreeCells bench;
    bench.line.m_pMeetingAngle[0] = 12.5;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_pMeetingAngle[0], 12.5);
}

TEST_P(Finishing, angles_at_the_threshold_become_180) {
    TwoCells bench;
    bench.line.m_TruncateAngle = kHeadOn;
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), 180.0);
}

// Only node 1 belongs to both cells, so its neighbours are all at 180.
TEST_P(Finishing, lone_nodes_become_180) {
    for (double truncation : {135.0, kNoTruncation}) {
        Bench bench;
        for (int n = 0; n < 3; ++n) bench.addNode({10, 20, 30});
        bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
        bench.addCell({11, 20, 30}, {-1, 0, 0}, {1, 3});
        bench.host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
        bench.bind();
        bench.line.m_TruncateAngle = truncation;
        bench.run(GetParam());
        EXPECT_EQ(bench.angle(1), truncation == 135.0 ? 180.0 : kHeadOn);
    }
}

TEST_P(Finishing, cell_state_from_1_or_of_minus_1_gives_180) {
    for (int state : {1, 2, 100, -1}) {
        ThreeCells bench;
        bench.host.setState(3, state);
        bench.run(GetParam());
        bench.expectMet({false, true, true, true, false, false});
    }
}

TEST_P(Finishing, other_cell_states_do_nothing) {
    for (int state : {0, -2, -100}) {
        ThreeCells bench;
        for (int cell : {1, 2, 3}) bench.host.setState(cell, state);
        bench.run(GetParam());
        bench.expectMet({false, true, true, true, true, false});
    }
}

TEST_P(Finishing, cell_state_reaches_all_nodes_of_the_cell) {
    ThreeCells bench;
    bench.host.setState(2, -1);
    bench.run(GetParam());
    bench.expectMet({false, false, false, false, false, false});
}

TEST_P(Finishing, cell_state_of_the_last_own_cell_counts) {
    ThreeCells bench;
    bench.host.setState(4, 1);  // the pace maker, in all nodes
    bench.run(GetParam());
    bench.expectMet({false, false, false, false, false, false});
}

// Two meeting nodes: the state of C takes node 2. Were it applied before the truncation, node 1
// would then stand alone and go to 180 as well.
TEST_P(Finishing, cell_state_comes_after_truncation) {
    Bench bench;
    for (int n = 0; n < 2; ++n) bench.addNode({10, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1, 2});
    bench.addCell({11, 20, 30}, {-1, 0, 0}, {1, 2});
    const int c = bench.addCell({13, 20, 30}, {1, 0, 0}, {2});
    bench.host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
    bench.bind();
    bench.line.m_TruncateAngle = 135.0;
    bench.host.setState(c, 1);
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
    EXPECT_EQ(bench.angle(2), 180.0);
}

// A second run without a reset starts from 180 where nothing met: 180 - 180 is 0. Where the pair
// met, kHeadOn was left, and the pair's angle is again the larger one.
TEST_P(Finishing, keeps_angles_of_the_run_before) {
    ThreeCells bench;
    bench.line.m_TruncateAngle = kNoTruncation;
    bench.run(GetParam());
    bench.line.m_BoundaryAngle = -1.0;
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), 0.0);
    EXPECT_EQ(bench.angle(2), kHeadOn);
    EXPECT_EQ(bench.angle(6), 0.0);
}

TEST_P(Finishing, reset_before_a_second_run_gives_the_same_angles) {
    ThreeCells bench;
    bench.run(GetParam());
    for (int n = 0; n <= 6; ++n) bench.line.m_pMeetingAngle[n] = 0.0;
    bench.line.m_BoundaryAngle = -1.0;
    bench.run(GetParam());
    bench.expectMet({false, true, true, true, true, false});
}

INSTANTIATE_TEST_SUITE_P(All, Finishing, testing::Values(1, 2, 3, 4), methodName);

}  // namespace weldline::test
