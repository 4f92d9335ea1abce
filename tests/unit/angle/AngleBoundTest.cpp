// The bound that rules out, without root and arc cosine, that two gradients meet at an angle.

#include "angle/VectorAngle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace weldline::test {

namespace {

using core::AngleBound;
using core::Vec3;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A gradient of length `length` at `degrees` to the x axis.
Vec3 at(double degrees, double length = 1.0) {
    const double radians = degrees * core::kPi / 180.0;
    return {length * std::cos(radians), length * std::sin(radians), 0.0};
}

const Vec3 ahead{1.0, 0.0, 0.0};

}  // namespace

TEST(AngleBound, excludes_what_is_clearly_below_and_nothing_else) {
    const AngleBound bound(45.0);
    for (const double degrees : {0.0, 10.0, 44.9, 44.9999}) {
        EXPECT_TRUE(bound.excludes(ahead, at(degrees))) << degrees;
        EXPECT_TRUE(bound.excludes(at(-degrees, 1e3), Vec3{0.25, 0.0, 0.0})) << degrees;
    }
    for (const double degrees : {45.0, 45.0001, 90.0, 135.0, 180.0})
        EXPECT_FALSE(bound.excludes(ahead, at(degrees))) << degrees;
}

TEST(AngleBound, of_ninety_degrees_and_more_excludes_acute_angles_only) {
    for (const double smallest : {90.0, 120.0, 180.0, 200.0}) {
        const AngleBound bound(smallest);
        EXPECT_TRUE(bound.excludes(ahead, at(89.99))) << smallest;
        EXPECT_FALSE(bound.excludes(ahead, Vec3{0.0, 1.0, 0.0})) << smallest;
        EXPECT_FALSE(bound.excludes(ahead, at(90.01))) << smallest;
        EXPECT_FALSE(bound.excludes(ahead, at(150.0))) << smallest;
    }
}

TEST(AngleBound, that_every_pair_reaches_excludes_nothing) {
    for (const double smallest : {0.0, -1.0, -90.0, -1e300, kNaN}) {
        const AngleBound bound(smallest);
        EXPECT_FALSE(bound.excludes(ahead, ahead)) << smallest;
        EXPECT_FALSE(bound.excludes(at(30.0, 7.0), at(30.0, 3.0))) << smallest;
    }
}

// The 1e-30 in the denominator of the angle turns parallel gradients this small into perpendicular
// ones: 1e-16 * 1e-16 / (1e-32 + 1e-30) is a cosine of 0.0099.
TEST(AngleBound, excludes_no_gradients_so_small_that_the_guard_counts) {
    const AngleBound bound(45.0);
    const Vec3 small{1e-16, 0.0, 0.0};
    EXPECT_GT(core::vectorAngle(small, small), 89.0);
    EXPECT_FALSE(bound.excludes(small, small));
    EXPECT_FALSE(bound.excludes(Vec3{0.0, 0.0, 0.0}, ahead));
}

TEST(AngleBound, excludes_nothing_that_is_not_finite) {
    const AngleBound bound(45.0);
    const Vec3 huge{1e200, 0.0, 0.0};
    EXPECT_FALSE(bound.excludes(huge, huge));
    EXPECT_FALSE(bound.excludes(Vec3{kNaN, 1.0, 0.0}, ahead));
    EXPECT_FALSE(bound.excludes(Vec3{std::numeric_limits<double>::infinity(), 0.0, 0.0}, ahead));
}

// Never on the wrong side: what is excluded has an angle below the smallest one, whatever lengths
// and directions, at angles close to it too.
TEST(AngleBound, never_excludes_an_angle_that_reaches_it) {
    std::mt19937_64 engine(11);
    const auto unit = [&] { return static_cast<double>(engine() >> 11) * 0x1p-53; };
    int excluded = 0;
    for (int i = 0; i < 200000; ++i) {
        const double smallest = 180.0 * unit();
        const AngleBound bound(smallest);
        const double apart = smallest + (unit() - 0.5) * std::pow(10.0, -16.0 * unit());
        const double turn = 360.0 * unit();
        const Vec3 ga = at(turn, std::pow(10.0, 20.0 * unit() - 14.0));
        const Vec3 gb = at(turn + apart, std::pow(10.0, 20.0 * unit() - 14.0));
        if (!bound.excludes(ga, gb)) continue;
        ++excluded;
        ASSERT_LT(core::vectorAngle(ga, gb), smallest) << i;
    }
    EXPECT_GT(excluded, 10000);
}

}  // namespace weldline::test
