// Values at the ends of the number range, where the pair tests say something of their own.

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

class ExtremeValues : public testing::TestWithParam<int> {};

// The pair of methods 1 to 3, judged at `point`, with a cone of 120 degrees, whose cosine is below
// zero.
bool meetsInWideCone(int method, Point a, Point b, Point point) {
    Layout layout;
    layout.a = a;
    layout.b = b;
    layout.judgedAt(point);
    return meets(
        method, [](TwoCells& bench) { bench.line.m_BoundaryAngle = 120.0; }, layout);
}

// The mid-point of this centre with itself overflows, and so the gradient leads to it; only that a
// cell makes no pair with itself keeps the node from meeting. The angle of (0.2, 0.3, 0) with
// itself is not an exact 0, because its cosine is not an exact 1.
struct LonelyCell : Bench {
    LonelyCell() {
        addNode({0, 0, 0});
        addNode({1, 1, 1});
        addCell({1.7e308, 0, 0}, {0.2, 0.3, 0}, {1});
        addCell({0, 0, 0}, {1, 0, 0}, {1, 1});
        host.addInner(1, 2, {1, 0, 0}, {0, 0, 0});
        host.addNeighbour(2, 1);
        bind();
        line.m_pZeroGradFlag[2] = 1;
        line.m_BoundaryAngle = 120.0;
    }
};

}  // namespace

// From the far cell to the point is further than a number can say: inf / inf is not a number. From
// the near cell the squared length overflows, and the cosine is finite / inf = 0, within the cone.
TEST_P(ExtremeValues, cosine_that_is_not_a_number_lies_outside_of_any_cone) {
    EXPECT_FALSE(meetsInWideCone(GetParam(), {-1.7e308, 0, 0}, {1.2e308, 0, 0}, {1e308, 0, 0}));
    EXPECT_FALSE(meetsInWideCone(GetParam(), {-1.2e308, 0, 0}, {1.7e308, 0, 0}, {-1e308, 0, 0}));
    // Both ways within the range: both cosines are 0.
    EXPECT_TRUE(meetsInWideCone(GetParam(), {-1.2e308, 0, 0}, {1.2e308, 0, 0}, {0, 0, 0}));
}

// Component i of one gradient is zero and that of the other is not: their product has no sign. With
// d from A to B = (-3, 1, 1) in the axes (i, i + 1, i + 2): A's gradient (0, 1, 1) leads to B, 2 >
// 0; B's (1, 1, 1) leads to A, 3 - 1 - 1 > 0; so in the planes (i, i + 1), 1 > 0 and 3 - 1 > 0, and
// (i, i + 2).
TEST_P(ExtremeValues, zero_component_shares_no_sign) {
    for (int i = 0; i < 3; ++i) {
        const auto inAxes = [i](double first, double second, double third) {
            Point p{};
            p[i] = first;
            p[(i + 1) % 3] = second;
            p[(i + 2) % 3] = third;
            return p;
        };
        for (const bool isSwapped : {false, true}) {
            Layout layout;
            layout.a = inAxes(isSwapped ? -3 : 3, isSwapped ? 1 : -1, isSwapped ? 1 : -1);
            layout.b = inAxes(isSwapped ? 3 : -3, isSwapped ? -1 : 1, isSwapped ? -1 : 1);
            layout.judgedAt({0, 0, 0});
            const auto setGradients = [&](TwoCells& bench) {
                bench.line.m_BoundaryAngle = 179.0;
                bench.setGradient(isSwapped ? 2 : 1, inAxes(0, 1, 1));
                bench.setGradient(isSwapped ? 1 : 2, inAxes(1, 1, 1));
            };
            EXPECT_TRUE(meets(GetParam(), setGradients, layout)) << i << isSwapped;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ExtremeValues, testing::Values(1, 2, 3), methodName);

TEST(ExtremeValues, cell_makes_no_pair_with_itself) {
    LonelyCell bench;
    bench.run(1);
    EXPECT_EQ(bench.angle(1), 180.0);
}

// Cell 2, twice in the row of node 1, is twice a partner of cell 1, and names it as its neighbour.
TEST(ExtremeValues, cell_is_not_in_its_own_second_ring) {
    LonelyCell bench;
    bench.run(3);
    EXPECT_EQ(bench.angle(1), 180.0);
}

// Method 4 moves the less steep cell by |g_b| / (|g_a| + 1e-30) of half the distance D = 2. With
// |g_a| = 2e-30 and |g_b| = 1e-30 that is 1 / 3, not 1 / 2 or 1 (nor 1 / 1 for a guard taken off).
// Seen from A, A moves 1 along (0.64, 0.77), to (0.64, 0.77); B, from (2, 0), along (0.45, -0.89):
//   by 1 / 3 to (2.15, -0.30): the points lie sqrt(1.51^2 + 1.07^2) = 1.85 apart, closer than D;
//   by 1     to (2.45, -0.89): the points lie sqrt(1.81^2 + 1.66^2) = 2.46 apart.
// The pair lies across an interface, so that it is judged once: from the own cell, which is the
// steeper or the less steep one. The mirror image turns the one case into the other.
TEST(ExtremeValues, keeps_the_guard_in_the_ratio_of_tiny_gradients) {
    const Point steep{0.64 * 2e-30, 0.77 * 2e-30, 0};
    const Point lessSteep{0.45 * 1e-30, -0.89 * 1e-30, 0};
    HaloPair ownIsSteep;
    ownIsSteep.setGradient(1, steep);
    ownIsSteep.setGradient(ownIsSteep.halo, lessSteep);
    ownIsSteep.run(4);
    EXPECT_TRUE(ownIsSteep.met(1));
    HaloPair ownIsLessSteep;
    ownIsLessSteep.setGradient(1, {-lessSteep[0], lessSteep[1], 0});
    ownIsLessSteep.setGradient(ownIsLessSteep.halo, {-steep[0], steep[1], 0});
    ownIsLessSteep.run(4);
    EXPECT_TRUE(ownIsLessSteep.met(1));
}

// Two cells with the same gradient move side by side, and their distance D changes by its rounding
// only. In the first place the points come closer by one bit, because the squares are added as
// (x^2 + y^2) + z^2; in the second one, with y and z exchanged, they do not.
TEST(ExtremeValues, keeps_the_order_of_squares_in_the_distance) {
    const auto comesCloser = [](Point centre, Point gradient) {
        Bench bench;
        for (int n = 0; n < 2; ++n) bench.addNode({1, 0, 0});
        bench.addCell({0, 0, 0}, gradient, {1, 2});
        bench.host.addInterface(1, {1, 0, 0}, {centre[0] / 2, centre[1] / 2, centre[2] / 2}, 0.5,
                                centre, 1.0, {1, 2});
        bench.bind();
        bench.setGradient(bench.host.haloSlot(1), gradient);
        bench.run(4);
        return bench.met(1);
    };
    EXPECT_TRUE(comesCloser({1.98, 0.11, 0.19}, {0, 2, 2}));
    EXPECT_FALSE(comesCloser({1.98, 0.19, 0.11}, {0, 2, 2}));
}

TEST(ExtremeValues, method_4_rejects_for_the_flag_1_only) {
    for (const int flag : {-1, 0, 1, 2}) {
        HaloPair ownIsFlagged;
        ownIsFlagged.line.m_pZeroGradFlag[1] = flag;
        ownIsFlagged.run(4);
        EXPECT_EQ(ownIsFlagged.met(1), flag != 1) << flag;
        HaloPair haloIsFlagged;
        haloIsFlagged.line.m_pZeroGradFlag[haloIsFlagged.halo] = flag;
        haloIsFlagged.run(4);
        EXPECT_EQ(haloIsFlagged.met(1), flag != 1) << flag;
    }
}

TEST(ExtremeValues, method_4_without_a_switch_compares_the_first_set) {
    EXPECT_TRUE(meets(4, [](TwoCells& bench) {
        bench.line.m_pGV->m_pGradSetSwitch = nullptr;
        bench.setSecondGradient(1, {1, 0, 0});
        bench.setSecondGradient(2, {1, 0, 0});
    }));
}

// Around the angle whose cosine is 0.6, bit by bit; both gradients (+-3, 4, 0) make the cosine
// 3 / 5 with the way to the face.
TEST(ExtremeValues, cone_of_method_4_holds_to_the_last_bit) {
    double angle = std::acos(0.6) * 180.0 / 3.14159265;
    for (int i = 0; i < 40; ++i) angle = std::nextafter(angle, 0.0);
    for (int i = 0; i < 80; ++i, angle = std::nextafter(angle, 180.0)) {
        const auto setCone = [&](TwoCells& bench) {
            bench.line.m_BoundaryAngle = angle;
            bench.setGradient(1, {3, 4, 0});
            bench.setGradient(2, {-3, 4, 0});
        };
        const double limit = std::cos(angle * 3.14159265 / 180.0);
        EXPECT_EQ(meets(4, setCone), 0.6 > limit) << i;
    }
}

TEST(ExtremeValues, state_in_slot_0_means_nothing) {
    TwoCells bench;
    int row[] = {1, 1};  // the node list of no cell names node 1
    bench.line.m_ppCellNode[0] = row;
    bench.host.setState(0, 1);
    bench.run(1);
    EXPECT_EQ(bench.angle(1), kHeadOn);
    bench.line.m_ppCellNode[0] = nullptr;
}

}  // namespace weldline::test
