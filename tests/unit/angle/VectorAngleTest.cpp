// The angle between two gradients, seen through the pairs that the methods accept.

#include "Bench.h"

namespace weldline::test {

namespace {

class VectorAngle : public testing::TestWithParam<int> {
  protected:
    // Node 1 after `change`, with a left-over of -5 in it: an angle of 0 replaces it (180), an
    // angle that is not a number does not (185).
    double angleOverLeftOver(const Change& change, const Layout& layout = {}) const {
        TwoCells bench(layout);
        change(bench);
        bench.line.m_pMeetingAngle[1] = -5.0;
        bench.run(GetParam());
        return bench.angle(1);
    }
};
using MagnitudeLimitedAngle = VectorAngle;

}  // namespace

TEST_P(VectorAngle, head_on_is_just_below_zero) {
    TwoCells bench;
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
}

// (1, 1, 0) against (-1, 1, 0): the products cancel, acos(0) = 90.00000010284 degrees.
TEST_P(VectorAngle, perpendicular_is_just_below_ninety) {
    TwoCells bench;
    bench.setGradient(1, {1, 1, 0});
    bench.setGradient(2, {-1, 1, 0});
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kPerpendicular);
}

// 3-4-5: (1, 0, 0) against (-0.8, 0.6, 0). The squares 0.64 and 0.36 sum to 1, so the cosine is
// -0.8, acos(-0.8) = 2.498091544796509; the true pi would leave 36.8698976.
TEST_P(VectorAngle, keeps_eight_digit_pi) {
    TwoCells bench;
    bench.setGradient(2, {-0.8, 0.6, 0});
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), 36.86989748229402);
}

// The cosine of (0.3, 0.5, 0) with its opposite rounds to -1.0000000000000002; acos of that would
// not be a number, and the pair would be lost.
TEST_P(VectorAngle, raises_a_cosine_below_minus_one) {
    TwoCells bench;
    bench.line.m_BoundaryAngle = 150.0;
    bench.setGradient(1, {0.3, 0.5, 0});
    bench.setGradient(2, {-0.3, -0.5, 0});
    bench.run(GetParam());
    EXPECT_EQ(bench.angle(1), kHeadOn);
}

INSTANTIATE_TEST_SUITE_P(All, VectorAngle, testing::Values(1, 2, 3, 4), methodName);

// Only method 4 can accept parallel gradients. (0.3, 0.5, 0) against its half: the cosine rounds
// to 1.0000000000000002 and counts as 1. A steps 1 along u = (0.514, 0.857, 0), B half of that, so
// the points come as close as 1.79.
TEST(ParallelGradients, lower_a_cosine_above_one) {
    TwoCells bench;
    bench.line.m_BoundaryAngle = 150.0;
    bench.setGradient(1, {0.3, 0.5, 0});
    bench.setGradient(2, {0.15, 0.25, 0});
    bench.line.m_pMeetingAngle[1] = -5.0;
    bench.run(4);
    EXPECT_EQ(bench.angle(1), 180.0);
}

// Lengths of 1e200 overflow to infinity, pass all limits (infinity is not above infinity), and the
// cosine is -inf / inf.
TEST_P(MagnitudeLimitedAngle, passes_not_a_number_through) {
    const Change huge = [](TwoCells& bench) {
        bench.line.m_BoundaryAngle = 100.0;
        bench.setGradient(1, {1e200, 0, 0});
        bench.setGradient(2, {-1e200, 0, 0});
    };
    EXPECT_EQ(angleOverLeftOver(huge), 185.0);
}

// The square of 1e-200 is 0, so gradient A has the length 0 though it points to B: the cosine is
// 0 / (0 * 1 + 1e-30).
TEST_P(MagnitudeLimitedAngle, of_zero_length_is_ninety) {
    const Change tiny = [](TwoCells& bench) {
        bench.line.m_BoundaryAngle = 100.0;
        bench.line.m_GradMeanFactor = 0.0;
        bench.setGradient(1, {1e-200, 0, 0});
    };
    EXPECT_EQ(angleOverLeftOver(tiny), kPerpendicular);
}

TEST_P(MagnitudeLimitedAngle, needs_no_number_in_the_gradient) {
    for (int cell : {1, 2})
        for (int axis : {0, 1, 2}) {
            Point gradient{cell == 1 ? 1.0 : -1.0, 0, 0};
            gradient[axis] = NaN;
            EXPECT_FALSE(
                meets(GetParam(), [&](TwoCells& bench) { bench.setGradient(cell, gradient); }))
                << "cell " << cell << " axis " << axis;
        }
}

INSTANTIATE_TEST_SUITE_P(All, MagnitudeLimitedAngle, testing::Values(1, 2, 3), methodName);

}  // namespace weldline::test
