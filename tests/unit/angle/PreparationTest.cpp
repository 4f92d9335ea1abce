// What the methods do before their loops: boundary angle and gradient-magnitude limits.

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

double preparedAngle(int method, double boundaryAngle, int meshFileType = 0) {
    TwoCells bench;
    bench.line.m_BoundaryAngle = boundaryAngle;
    bench.line.m_MeshFileType = meshFileType;
    bench.run(method);
    return bench.line.m_BoundaryAngle;
}

class Preparation : public testing::TestWithParam<int> {};

}  // namespace

// cos(75.0 / 180.0 * 3.14159265), and so on for 65 and 90 degrees.
constexpr double kCos65 = 0.42261826291555904;
constexpr double kCos75 = 0.2588190465473015;
constexpr double kCos90 = 1.7948965149208059e-09;

TEST(BoundaryAngle, default_of_method_1_depends_on_the_mesh_file_type) {
    EXPECT_EQ(preparedAngle(1, -1.0, 2), kCos75);
    for (int type : {0, 1, 3, -2}) EXPECT_EQ(preparedAngle(1, -1.0, type), kCos65);
}

TEST(BoundaryAngle, default_of_method_2_depends_on_the_mesh_file_type) {
    EXPECT_EQ(preparedAngle(2, -1.0, 2), kCos90);
    for (int type : {0, 1, 3, -2}) EXPECT_EQ(preparedAngle(2, -1.0, type), kCos75);
}

TEST(BoundaryAngle, default_of_method_3_is_75) {
    for (int type : {0, 1, 2, 3}) EXPECT_EQ(preparedAngle(3, -1.0, type), kCos75);
}

TEST(BoundaryAngle, default_of_method_4_is_120_degrees) {
    for (int type : {0, 1, 2, 3}) EXPECT_EQ(preparedAngle(4, -1.0, type), 120.0);
}

TEST_P(Preparation, takes_any_negative_angle_as_unset) {
    const double unset = preparedAngle(GetParam(), -1.0);
    EXPECT_EQ(preparedAngle(GetParam(), -1e-300), unset);
    EXPECT_EQ(preparedAngle(GetParam(), -500.0), unset);
    EXPECT_NE(preparedAngle(GetParam(), 0.0), unset);
    EXPECT_NE(preparedAngle(GetParam(), -0.0), unset);
}

// cos(60.0 / 180.0 * 3.14159265); multiplied first it would end in ...284.
TEST_P(Preparation, divides_before_it_multiplies) {
    EXPECT_EQ(preparedAngle(GetParam(), 60.0), 0.5000000010362841);
    EXPECT_EQ(preparedAngle(GetParam(), 45.0), 0.7071067818211393);
    EXPECT_EQ(preparedAngle(GetParam(), 0.0), 1.0);
}

// cos(179.999999 / 180.0 * 3.14159265) = -0.9999999999999998; of 180 degrees it would be -1, of
// 179.9999985 degrees it is -0.9999999999999996.
TEST_P(Preparation, caps_the_angle_below_180) {
    for (double angle : {179.999999, 179.9999995, 180.0, 360.0, 1e300})
        EXPECT_EQ(preparedAngle(GetParam(), angle), -0.9999999999999998) << angle;
    EXPECT_EQ(preparedAngle(GetParam(), 179.9999985), -0.9999999999999996);
}

// The first run's cosine, read as degrees: cos(cosine / 180.0 * 3.14159265).
TEST_P(Preparation, keeps_cosine_as_degrees_of_a_second_run) {
    TwoCells bench;
    bench.line.m_BoundaryAngle = 75.0;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_BoundaryAngle, kCos75);
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_BoundaryAngle, 0.9999897972683047);
}

// cos(120 degrees) is negative, so the second run falls back to the default of the method.
TEST_P(Preparation, keeps_negative_cosine_as_unset_in_a_second_run) {
    TwoCells bench;
    bench.line.m_BoundaryAngle = 120.0;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_BoundaryAngle, -0.49999999792743177);
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_BoundaryAngle, preparedAngle(GetParam(), -1.0));
}

// Lengths 3-4-5 and 1000 of the pace maker: upper 1000 * 0.99; lower 1010 / 3 * 1e-4 * 2.
TEST_P(Preparation, limits_come_from_the_gradients_of_the_own_cells) {
    TwoCells bench;
    bench.setGradient(1, {3, 4, 0});
    bench.setGradient(2, {0, -3, 4});
    bench.line.m_GradValueFilterPara = 2.0;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagUpper, 990.0);
    EXPECT_EQ(bench.line.m_GradMagLower, 1010.0 / 3.0 * 1.0e-4 * 2.0);
}

TEST_P(Preparation, limits_leave_out_halo_slots) {
    HaloPair bench;  // own cell 1, pace maker 2
    bench.setGradient(bench.halo, {-5000, 0, 0});
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagUpper, 990.0);
    EXPECT_EQ(bench.line.m_GradMagLower, 1001.0 / 2.0 * 1.0e-4);
}

// 13.4 / 3 * 1e-4 * 0.1; every other grouping of the same factors ends differently.
TEST_P(Preparation, lower_limit_divides_before_it_multiplies) {
    TwoCells bench;
    bench.setGradient(1, {13.4, 0, 0});
    bench.setGradient(2, {0, 0, 0});
    bench.setGradient(3, {0, 0, 0});
    bench.line.m_GradValueFilterPara = 0.1;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagLower, 4.466666666666668e-05);
}

// (1e16 + 1) + 1 is 1e16, because the odd number 1e16 + 1 rounds to even; 1 + 1 + 1e16 is 2 more.
TEST_P(Preparation, lower_limit_sums_in_cell_order) {
    TwoCells bench;
    bench.setGradient(1, {1e16, 0, 0});
    bench.setGradient(2, {1, 0, 0});
    bench.setGradient(3, {1, 0, 0});
    bench.line.m_GradMeanFactor = 3.0;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagLower, 1e16 / 3.0 * 3.0);
    EXPECT_NE(bench.line.m_GradMagLower, (1e16 + 2.0) / 3.0 * 3.0);
}

// Lengths 0, 1e-21 and 1e-20: each counts as 1e-20.
TEST_P(Preparation, limits_lift_short_gradients) {
    TwoCells bench;
    bench.setGradient(1, {0, 0, 0});
    bench.setGradient(2, {1e-21, 0, 0});
    bench.setGradient(3, {0, 1e-20, 0});
    bench.line.m_GradMeanFactor = 1.0;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagUpper, 1e-20 * 0.99);
    EXPECT_EQ(bench.line.m_GradMagLower, (1e-20 + 1e-20 + 1e-20) / 3.0);
}

// Not a number is neither short nor the largest, but the sum takes it.
TEST_P(Preparation, limits_with_a_gradient_that_is_not_a_number) {
    TwoCells bench;
    bench.setGradient(2, {NaN, 0, 0});
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagUpper, 990.0);
    EXPECT_TRUE(std::isnan(bench.line.m_GradMagLower));
}

// 0 / 0.
TEST_P(Preparation, limits_without_own_cells) {
    TwoCells bench;
    bench.line.m_nCV = 0;
    bench.run(GetParam());
    EXPECT_EQ(bench.line.m_GradMagUpper, 0.0);
    EXPECT_TRUE(std::isnan(bench.line.m_GradMagLower));
}

// The second gradient is far below the mean length of 334 and is not rejected.
TEST_P(Preparation, lower_limit_that_is_not_a_number_rejects_nothing) {
    for (double factor : {1.0, NaN}) {
        EXPECT_EQ(meets(GetParam(),
                        [&](TwoCells& bench) {
                            bench.setGradient(2, {-1e-9, 0, 0});
                            bench.line.m_GradMeanFactor = factor;
                        }),
                  factor != 1.0);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Preparation, testing::Values(1, 2, 3), methodName);

TEST(PreparationOfMethod4, keeps_degrees) {
    EXPECT_EQ(preparedAngle(4, 45.0), 45.0);
    EXPECT_EQ(preparedAngle(4, 0.0), 0.0);
    EXPECT_EQ(preparedAngle(4, 179.9999985), 179.9999985);
    for (double angle : {179.999999, 180.0, 360.0}) EXPECT_EQ(preparedAngle(4, angle), 179.999999);
}

TEST(PreparationOfMethod4, keeps_degrees_in_a_second_run) {
    TwoCells bench;
    bench.run(4);
    bench.run(4);
    EXPECT_EQ(bench.line.m_BoundaryAngle, 120.0);
}

TEST(PreparationOfMethod4, leaves_the_magnitude_limits_alone) {
    TwoCells bench;
    bench.line.m_GradMagUpper = 7.0;
    bench.line.m_GradMagLower = -3.0;
    bench.run(4);
    EXPECT_EQ(bench.line.m_GradMagUpper, 7.0);
    EXPECT_EQ(bench.line.m_GradMagLower, -3.0);
}

}  // namespace weldline::test
