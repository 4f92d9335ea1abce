// Direction tests of methods 1 to 3 between two cells whose centres differ by (2, 2, 2): the way
// from A to the mid-point is (1, 1, 1), from B (-1, -1, -1). So the axis products of A are its
// gradient's components, and those of B the negated ones.
//
//            B (12, 12, 12)
//          /
//        M            node 1 and the face centre lie together in the point Q
//      /
//    A (10, 10, 10)

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

constexpr Point kMiddle{11, 11, 11};
constexpr double kWideCone = 170.0;

Point minus(Point p) {
    return {-p[0], -p[1], -p[2]};
}

class Direction : public testing::TestWithParam<int> {
  protected:
    // Whether cells with these axis products meet.
    bool meetsProducts(Point a, Point b, Point q = kMiddle) const {
        Layout layout{.a = {10, 10, 10}, .b = {12, 12, 12}};
        return meets(
            GetParam(),
            [&](TwoCells& bench) {
                bench.setGradient(1, a);
                bench.setGradient(2, minus(b));
                bench.line.m_BoundaryAngle = kWideCone;
            },
            layout.judgedAt(q));
    }

    // Whether gradients of these tiny lengths meet along the x axis.
    bool meetsAlongX(double a, double b) const {
        return meets(
            GetParam(),
            [&](TwoCells& bench) {
                bench.setGradient(1, {a, 0, 0});
                bench.setGradient(2, {-b, 0, 0});
                bench.line.m_BoundaryAngle = 100.0;
                bench.line.m_GradMeanFactor = 0.0;
            },
            Layout().judgedAt({10, 20, 30}));
    }
};

}  // namespace

// The products of A sum to 0 in the first case. Planes xy and zx count in both, and both
// gradients point well at Q = A + (2, -1, -1).
TEST_P(Direction, first_gradient_must_point_to_the_middle) {
    const Point q{12, 9, 9};
    EXPECT_FALSE(meetsProducts({2, -1, -1}, {1, 1, 1}, q));
    EXPECT_TRUE(meetsProducts({2, -0.9, -1}, {1, 1, 1}, q));
}

TEST_P(Direction, second_gradient_must_point_to_the_middle) {
    const Point q{10, 13, 13};  // B + (-2, 1, 1)
    EXPECT_FALSE(meetsProducts({1, 1, 1}, {2, -1, -1}, q));
    EXPECT_TRUE(meetsProducts({1, 1, 1}, {2, -0.9, -1}, q));
}

// (1 - 0.3) - 0.7 is 0 in doubles, (1 - 0.7) - 0.3 is 5.6e-17: x and y are summed first.
TEST_P(Direction, sums_x_and_y_before_z) {
    const Point q{12, 9.5, 9.5};
    EXPECT_FALSE(meetsProducts({1, -0.3, -0.7}, {1, 1, 1}, q));
    EXPECT_TRUE(meetsProducts({1, -0.7, -0.3}, {1, 1, 1}, q));
    const Point r{10, 12.5, 12.5};
    EXPECT_FALSE(meetsProducts({1, 1, 1}, {1, -0.3, -0.7}, r));
    EXPECT_TRUE(meetsProducts({1, 1, 1}, {1, -0.7, -0.3}, r));
}

TEST_P(Direction, away_from_the_middle_never_meets) {
    EXPECT_FALSE(meetsProducts({-1, -1, -1}, {1, 1, 1}));
    EXPECT_FALSE(meetsProducts({1, 1, 1}, {-1, -1, -1}));
    EXPECT_FALSE(meetsProducts({-1, -1, -1}, {-1, -1, -1}));
}

// (3, -1, -1) is positive in xy and zx, (-1, 3, -1) in xy and yz, (-1, -1, 3) in yz and zx.
TEST_P(Direction, one_common_plane_is_too_few) {
    EXPECT_FALSE(meetsProducts({3, -1, -1}, {-1, 3, -1}));  // xy
    EXPECT_FALSE(meetsProducts({-1, 3, -1}, {-1, -1, 3}));  // yz
    EXPECT_FALSE(meetsProducts({-1, -1, 3}, {3, -1, -1}));  // zx
}

TEST_P(Direction, two_common_planes_are_enough) {
    EXPECT_TRUE(meetsProducts({3, -1, -1}, {3, -1, -1}));
    EXPECT_TRUE(meetsProducts({-1, 3, -1}, {-1, 3, -1}));
    EXPECT_TRUE(meetsProducts({-1, -1, 3}, {-1, -1, 3}));
    EXPECT_TRUE(meetsProducts({3, -1, -1}, {1, 1, 1}));
}

TEST_P(Direction, three_common_planes_are_enough) {
    EXPECT_TRUE(meetsProducts({1, 1, 1}, {1, 1, 1}));
}

// xy and yz of (1, -1, 1) are exactly 0: only zx is left.
TEST_P(Direction, a_plane_sum_of_zero_does_not_count) {
    EXPECT_FALSE(meetsProducts({1, -1, 1}, {1, 1, 1}));
    EXPECT_TRUE(meetsProducts({1, -0.9, 1}, {1, 1, 1}));
    EXPECT_FALSE(meetsProducts({1, 1, 1}, {1, -1, 1}));
    EXPECT_TRUE(meetsProducts({1, 1, 1}, {1, -0.9, 1}));
}

// Along x the sums of xy and zx are the lengths themselves; yz is 0.
TEST_P(Direction, a_plane_counts_unless_both_sums_are_below_the_limit) {
    const double limit = 1e-30;
    const double under = std::nextafter(limit, 0.0);
    EXPECT_TRUE(meetsAlongX(limit, limit));
    EXPECT_TRUE(meetsAlongX(under, limit));
    EXPECT_TRUE(meetsAlongX(limit, under));
    EXPECT_FALSE(meetsAlongX(under, under));
}

// Planes xy and zx count. The gradients are (3, -1, -1) and (1, -3, -3): x, y and z agree in
// sign; in the second case x does not, because a product of 0 is not positive.
TEST_P(Direction, three_agreeing_signs_refuse) {
    EXPECT_FALSE(meetsProducts({3, -1, -1}, {-1, 3, 3}));
    EXPECT_TRUE(meetsProducts({3, -1, -1}, {0, 3, 3}));
    EXPECT_FALSE(meetsProducts({-1, 3, -1}, {3, -1, 3}));
    EXPECT_TRUE(meetsProducts({-1, 3, -1}, {3, 0, 3}));
    EXPECT_FALSE(meetsProducts({-1, -1, 3}, {3, 3, -1}));
    EXPECT_TRUE(meetsProducts({-1, -1, 3}, {3, 3, 0}));
}

INSTANTIATE_TEST_SUITE_P(All, Direction, testing::Values(1, 2, 3), methodName);

}  // namespace weldline::test
