// The cone test: do both gradients point at the judged place within the boundary angle?
//
//   A (9, 20, 30) -> . Q (10, 20, 30) . <- B (11, 20, 30)       node 1 and face centre in Q
//
// At 60 degrees methods 1 to 3 have the limit cos(60 / 180 * pi) = 0.5000000010362841, method 4
// cos(60 * pi / 180) = 0.500000001036284, one step of a double less. The gradients (x, y, 0) below
// have these cosines x / sqrt(x * x + y * y) with the x axis, and the next larger ones.

#include "Bench.h"

namespace weldline::test {

namespace {

constexpr double kX = 0.001 * 1024;
constexpr double kYAbove = 0.0017320508027824858 * 1024;    // cosine 0.5000000010362842
constexpr double kYAt = 0.0017320508027824863 * 1024;       // cosine 0.5000000010362841
constexpr double kYMethod4 = 0.0017320508027824867 * 1024;  // cosine 0.500000001036284

class Cone : public testing::TestWithParam<int> {
  protected:
    bool meetsGradients(Point a, Point b, double boundaryAngle = 60.0) const {
        return meets(
            GetParam(),
            [&](TwoCells& bench) {
                bench.setGradient(1, a);
                bench.setGradient(2, b);
                bench.line.m_BoundaryAngle = boundaryAngle;
            },
            Layout().judgedAt({10, 20, 30}));
    }
};
using ConeOfMethod4 = Cone;
using ConeOfEveryMethod = Cone;

}  // namespace

TEST_P(Cone, first_gradient_on_the_limit_is_outside) {
    EXPECT_FALSE(meetsGradients({kX, kYAt, 0}, {-1, 0, 0}));
    EXPECT_TRUE(meetsGradients({kX, kYAbove, 0}, {-1, 0, 0}));
}

TEST_P(Cone, second_gradient_on_the_limit_is_outside) {
    EXPECT_FALSE(meetsGradients({1, 0, 0}, {-kX, kYAt, 0}));
    EXPECT_TRUE(meetsGradients({1, 0, 0}, {-kX, kYAbove, 0}));
}

INSTANTIATE_TEST_SUITE_P(All, Cone, testing::Values(1, 2, 3), methodName);

TEST_P(ConeOfMethod4, keeps_multiplication_before_division) {
    EXPECT_TRUE(meetsGradients({kX, kYAt, 0}, {-1, 0, 0}));
    EXPECT_TRUE(meetsGradients({1, 0, 0}, {-kX, kYAt, 0}));
}

TEST_P(ConeOfMethod4, gradient_on_the_limit_is_outside) {
    EXPECT_FALSE(meetsGradients({kX, kYMethod4, 0}, {-1, 0, 0}));
    EXPECT_FALSE(meetsGradients({1, 0, 0}, {-kX, kYMethod4, 0}));
}

// The default of 120 degrees has the limit -0.49999999792743216: cosines of -0.4 are inside, of
// -0.6 outside. In the first lines A turns away and B comes on, then the other way round.
TEST_P(ConeOfMethod4, default_is_wide) {
    EXPECT_TRUE(meetsGradients({-0.4, 0.9, 0}, {-1, 0, 0}, -1.0));
    EXPECT_FALSE(meetsGradients({-0.6, 0.8, 0}, {-1, 0, 0}, -1.0));
    EXPECT_TRUE(meetsGradients({1, 0, 0}, {0.4, 0.9, 0}, -1.0));
    EXPECT_FALSE(meetsGradients({1, 0, 0}, {0.6, 0.8, 0}, -1.0));
}

INSTANTIATE_TEST_SUITE_P(All, ConeOfMethod4, testing::Values(4), methodName);

// (0.6, 0.8, 0) is inside 60 degrees (cosine 0.6), (0.4, 0.9, 0) is not (0.406).
TEST_P(ConeOfEveryMethod, both_gradients_must_be_inside) {
    EXPECT_TRUE(meetsGradients({0.6, 0.8, 0}, {-0.6, 0.8, 0}));
    EXPECT_FALSE(meetsGradients({0.4, 0.9, 0}, {-0.6, 0.8, 0}));
    EXPECT_FALSE(meetsGradients({0.6, 0.8, 0}, {-0.4, 0.9, 0}));
    EXPECT_FALSE(meetsGradients({0.4, 0.9, 0}, {-0.4, 0.9, 0}));
}

TEST_P(ConeOfEveryMethod, of_zero_degrees_is_empty) {
    EXPECT_FALSE(meetsGradients({1, 0, 0}, {-1, 0, 0}, 0.0));
}

// A length of 1e-30 is as large as what guards the division: straight to Q, 1 away, the cosine is
// 1e-30 / (1 * 1e-30 + 1e-30) = 0.5, just outside 60 degrees.
TEST_P(ConeOfEveryMethod, keeps_tiny_gradients_at_half_their_cosine) {
    for (double boundaryAngle : {60.0, 61.0}) {
        const Change tiny = [&](TwoCells& bench) {
            bench.setGradient(1, {1e-30, 0, 0});
            bench.line.m_GradMeanFactor = 0.0;
            bench.line.m_BoundaryAngle = boundaryAngle;
        };
        EXPECT_EQ(meets(GetParam(), tiny, Layout().judgedAt({10, 20, 30})), boundaryAngle == 61.0);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ConeOfEveryMethod, testing::Values(1, 2, 3, 4), methodName);

// Node 1 straight between the cells, the face centre far to the side, and the other way round.
TEST(ConePoint, is_the_node_in_method_1) {
    Layout node{.face = {10, 90, 30}};
    node.nodes[0] = {10, 20, 30};
    EXPECT_TRUE(meets(
        1, [](TwoCells&) {}, node));
    Layout face;
    face.nodes[0] = {10, 90, 30};
    EXPECT_FALSE(meets(
        1, [](TwoCells&) {}, face));
}

TEST(ConePoint, is_the_face_centre_in_methods_2_to_4) {
    Layout node{.face = {10, 90, 30}};
    node.nodes[0] = {10, 20, 30};
    Layout face;
    face.nodes[0] = {10, 90, 30};
    // Across 70 lengths aside the cosine is 1 / sqrt(4901) = 0.014, outside 60 degrees.
    const Change narrow = [](TwoCells& bench) { bench.line.m_BoundaryAngle = 60.0; };
    for (int method : {2, 3, 4}) {
        EXPECT_FALSE(meets(method, narrow, node)) << method;
        EXPECT_TRUE(meets(method, narrow, face)) << method;
    }
}

// Default 90 degrees for mesh file type 2: the limit is 1.79e-9, not 0, because of the eight digits
// of pi. A's gradient is perpendicular to the way to the face centre but for the given part; the
// face centre lies off the line of centres, so that the gradient still points to the middle.
//
//   F (9, 21, 30)
//   |
//   A (9, 20, 30) ->     <- B (11, 20, 30)
TEST(ConePoint, keeps_perpendicular_gradients_outside_90_degrees) {
    const Layout above{.face = {9, 21, 30}};
    const auto meetsWithSide = [&](double y) {
        return meets(
            2,
            [&](TwoCells& bench) {
                bench.line.m_MeshFileType = 2;
                bench.setGradient(1, {1, y, 0});
            },
            above);
    };
    EXPECT_FALSE(meetsWithSide(0.0));
    EXPECT_FALSE(meetsWithSide(1.7e-9));
    EXPECT_TRUE(meetsWithSide(1.9e-9));
}

}  // namespace weldline::test
