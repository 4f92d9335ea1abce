// Method 4: the converging-step pair test. In most cases the centres are 2 apart along x, so that a
// full step is 1:
//
//   A (9, 20, 30)     F (10, 20, 30)     B (11, 20, 30)
//
// and all pairs pass a cone of 150 degrees around the way to F.

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

bool converge(Point a, Point b) {
    return meets(4, [&](TwoCells& bench) {
        bench.setGradient(1, a);
        bench.setGradient(2, b);
        bench.line.m_BoundaryAngle = 150.0;
    });
}

Point times(double factor, Point p) {
    return {factor * p[0], factor * p[1], factor * p[2]};
}

// Unit vectors: along x, and half turned away from it.
constexpr Point kRight{1, 0, 0};
constexpr Point kLeft{-1, 0, 0};
constexpr Point kRightUp{0.6, 0.8, 0};
constexpr Point kLeftUp{-0.6, 0.8, 0};

}  // namespace

// Steps of 1 to the right and of 1 to (0.6, 0.8): points (10, 20) and (11.6, 20.8), 1.79 apart.
TEST(ConvergingStep, equal_lengths_step_alike) {
    EXPECT_TRUE(converge(kRight, kRightUp));
}

// A steps 1 to (10, 20). B, half as long, steps 0.5 to (11.3, 20.4): 1.36 apart, nearer than 2.
// Exchanged steps would lead to (9.5, 20) and (11.6, 20.8): 2.25 apart.
TEST(ConvergingStep, larger_first_gradient_steps_farther) {
    EXPECT_TRUE(converge(times(2, kRight), kRightUp));
    EXPECT_FALSE(converge(kRight, times(2, kRightUp)));
}

// The mirrored pair: B steps 1 to the left, A 0.5 to (-0.6, 0.8).
TEST(ConvergingStep, larger_second_gradient_steps_farther) {
    EXPECT_TRUE(converge(kLeftUp, times(2, kLeft)));
    EXPECT_FALSE(converge(times(2, kLeftUp), kLeft));
}

// Parallel gradients (x, y, 0), centres 3 apart: rounding alone decides whether the moved points
// are closer. Dividing before multiplying they are in the first case and not in the second; with
// the product or the quotient formed in another order it is the other way round.
//
//   A (1, 20, 30)    F (2.5, 80, 30) far up     B (4, 20, 30)
TEST(ConvergingStep, keeps_division_before_multiplication) {
    const auto converges = [](double x, double y) {
        TwoCells bench({.a = {1, 20, 30}, .b = {4, 20, 30}, .face = {2.5, 80, 30}});
        bench.setGradient(1, {x, y, 0});
        bench.setGradient(2, {x, y, 0});
        bench.line.m_pMeetingAngle[1] = -5.0;  // an angle of 0 replaces it
        bench.run(4);
        return bench.angle(1) != 185.0;
    };
    EXPECT_TRUE(converges(0.07, 0.6));
    EXPECT_FALSE(converges(0.09, 2.3));
}

// Head-on, one four times as long: steps of 1 and 0.25 lead to 10 and 10.75. A step of four times
// the other's 1 would overshoot to 13.
TEST(ConvergingStep, larger_gradient_steps_no_more_than_half_the_distance) {
    EXPECT_TRUE(converge(times(4, kRight), kLeft));
    EXPECT_TRUE(converge(kRight, times(4, kLeft)));
}

// Both flow up, across the line of centres: equal steps keep the distance of 2, unequal steps make
// it larger.
TEST(ConvergingStep, needs_a_smaller_distance) {
    EXPECT_FALSE(converge({0, 1, 0}, {0, 1, 0}));
    EXPECT_FALSE(converge({0, 1, 0}, {0, 0.5, 0}));
    EXPECT_FALSE(converge({0, 0.5, 0}, {0, 1, 0}));
    EXPECT_TRUE(converge({0.001, 1, 0}, {-0.001, 1, 0}));
}

// A steps to (10, 20), B flows away to (11.4, 20.9): 1.66 apart. Both away, they part: 3.3.
TEST(ConvergingStep, one_may_flow_away_from_the_other) {
    EXPECT_TRUE(converge(kRight, {0.4, 0.9, 0}));
    EXPECT_FALSE(converge({-0.4, 0.9, 0}, {0.4, -0.9, 0}));
}

// Lengths of 1e-30 are as large as what guards the division: the factor of A is
// 1e-30 / (1e-30 + 1e-30) = 0.5, the one of B stays 1. So A steps 0.5 and B 1. B is a neighbour
// behind an interface face here, because an inner face is met in both orders.
TEST(ConvergingStep, keeps_equal_lengths_in_the_second_branch) {
    const auto convergeAtInterface = [](Point a, Point b) {
        HaloPair bench;
        bench.line.m_BoundaryAngle = 150.0;
        bench.setGradient(1, times(1e-30, a));
        bench.setGradient(bench.halo, times(1e-30, b));
        bench.run(4);
        return bench.met(1);
    };
    EXPECT_FALSE(convergeAtInterface(kRight, kRightUp));  // 2.25 apart
    EXPECT_TRUE(convergeAtInterface(kLeftUp, kLeft));     // 1.36 apart
}

TEST(ConvergingStep, gradient_of_zero_length_drops_the_pair) {
    EXPECT_FALSE(converge({0, 0, 0}, kLeft));
    EXPECT_FALSE(converge(kRight, {0, 0, 0}));
    EXPECT_FALSE(converge({0, 0, 0}, {0, 0, 0}));
}

TEST(ConvergingStep, needs_a_number_in_every_component) {
    for (int axis : {0, 1, 2}) {
        Point a = kRight, b = kLeft;
        a[axis] = b[axis] = NaN;
        EXPECT_FALSE(converge(a, kLeft));
        EXPECT_FALSE(converge(kRight, b));
    }
}

TEST(ConvergingStep, cells_in_one_place_do_not_converge) {
    EXPECT_FALSE(meets(4, [](TwoCells&) {}, {.b = {9, 20, 30}, .face = {9, 25, 30}}));
}

// The distance of the centres counts in all directions: with B at (11, 22, 31) it is 3, the steps
// are 1.5 along x, and the points (10.5, 20, 30) and (9.5, 22, 31) are sqrt(6) apart. Steps of 1
// would do as well, steps of 2.5 (the sum of the differences halved) would not: sqrt(14).
//
// In the second case both steps of 1 across lead to (9.4, 20.92) and (10.6, 19.08), 2.2 apart;
// half of that would lead to (9.2, 20.46) and (10.8, 19.54), 1.84 apart.
TEST(ConvergingStep, step_is_half_the_distance_of_the_centres) {
    EXPECT_TRUE(meets(4, [](TwoCells&) {}, {.b = {11, 22, 31}}));
    EXPECT_FALSE(converge({0.4, 0.92, 0}, {-0.4, -0.92, 0}));
}

// Neither the towards-each-other test nor the plane count: A flows on, B flows away ahead of it.
// Method 2 refuses the pair, method 4 accepts it.
TEST(ConvergingStep, needs_no_streams_towards_each_other) {
    const Change chase = [](TwoCells& bench) {
        bench.line.m_BoundaryAngle = 130.0;
        bench.setGradient(1, kRight);
        bench.setGradient(2, kRightUp);
    };
    EXPECT_TRUE(meets(4, chase));
    EXPECT_FALSE(meets(2, chase));
}

// Diagonal centres (10, 10, 10) and (12, 12, 12): gradients (3, -1, -1) and (1, -3, -3) bring the
// points from 3.46 to 2.09 apart but share all signs; (0, -3, -3) does not share the one of x.
TEST(ConvergingStep, three_agreeing_signs_refuse) {
    const Layout diagonal{.a = {10, 10, 10}, .b = {12, 12, 12}, .face = {11, 11, 11}};
    const auto meetsWith = [&](Point b) {
        return meets(
            4,
            [&](TwoCells& bench) {
                bench.setGradient(1, {3, -1, -1});
                bench.setGradient(2, b);
            },
            diagonal);
    };
    EXPECT_FALSE(meetsWith({1, -3, -3}));
    EXPECT_TRUE(meetsWith({0, -3, -3}));
}

// cos = -0.8: the angle is 143.13, the rest r = 36.86989748229402. The truncation angle T one
// double above r makes 180 - T round to that very angle: equality is accepted, and r is below T.
TEST(ConvergingStep, keeps_an_angle_equal_to_the_threshold) {
    constexpr double rest = 36.86989748229402;
    const double limit = std::nextafter(rest, 180.0);
    ASSERT_EQ(180.0 - limit, 180.0 - rest);
    TwoCells bench;
    bench.setGradient(2, {-0.8, 0.6, 0});
    bench.line.m_TruncateAngle = limit;
    bench.run(4);
    EXPECT_EQ(bench.angle(1), rest);
}

TEST(ConvergingStep, angle_below_the_threshold_leaves_180) {
    TwoCells bench;
    bench.setGradient(2, {-0.8, 0.6, 0});
    bench.line.m_TruncateAngle = 36.0;
    bench.run(4);
    EXPECT_EQ(bench.angle(1), 180.0);
}

TEST(ConvergingStep, rest_equal_to_the_truncation_angle_becomes_180) {
    TwoCells bench;
    bench.setGradient(2, {-0.8, 0.6, 0});
    bench.line.m_TruncateAngle = 36.86989748229402;
    bench.run(4);
    EXPECT_EQ(bench.angle(1), 180.0);
}

// Node 1 is shared by pairs of 143.13 and of 90 degrees, in either order of their cells.
//
//   A (9, 20, 30) ->  1  B1 and B2, both at (11, 20, 30) and face neighbours of A
TEST(ConvergingStep, largest_angle_of_all_pairs_stays) {
    for (bool wideFirst : {true, false}) {
        Bench bench;
        bench.addNode({10, 20, 30});
        bench.addNode({600, 600, 600});
        bench.addCell({9, 20, 30}, {1, 0, 0}, {1});
        const Point wide{-0.8, 0.6, 0}, right{0, -1, 0};
        bench.addCell({11, 20, 30}, wideFirst ? wide : right, {1});
        bench.addCell({11, 20, 30}, wideFirst ? right : wide, {1});
        bench.host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
        bench.host.addInner(1, 3, {1, 0, 0}, {10, 20, 30});
        bench.bind();
        bench.run(4);
        EXPECT_EQ(bench.angle(1), 36.86989748229402);
    }
}

}  // namespace weldline::test
