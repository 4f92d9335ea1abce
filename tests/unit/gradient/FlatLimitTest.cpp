#include "NumericsTest.h"

// The length that is compared with the flat limit is the root of (x*x + y*y) + z*z. For the vectors
// here the bracketings (x*x + z*z) + y*y and x*x + (y*y + z*z) fall on the other side of the limit.

namespace weldline::test {

namespace {

struct Sample {
    Point g;
    bool flat;
};

constexpr Sample coarse[] = {{{0.000483, 0.00019, 0.0008547578604493789}, false},
                             {{0.000337, 0.0005809999999999999, 0.0007408576111507528}, true}};
constexpr Sample fine[] = {
    {{6.160000000000001e-31, 6.790000000000001e-31, 3.993782668098001e-31}, false},
    {{5.09e-31, 6.570000000000001e-31, 5.5612049054139335e-31}, true}};

class FlatLimit : public NumericsTest {
  protected:
    // [1] with a wall of area (x, y, z), value 1 everywhere, volume 1: the gradient is the area.
    void buildOneWall(const Point& area) {
        host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 1.0, {}), area, {1, 0, 0});
        bind();
        phi = slots(1.0);
        g = vectors(0.0);
    }

    void expect(const Sample& sample) {
        EXPECT_EQ(g.x[1], sample.flat ? 0.0 : sample.g[0]);
        EXPECT_EQ(g.y[1], sample.flat ? 0.0 : sample.g[1]);
        EXPECT_EQ(g.z[1], sample.flat ? 0.0 : sample.g[2]);
        EXPECT_EQ(calc.m_pZeroGradFlag[1], sample.flat ? 1 : 0);
    }

    std::vector<double> phi;
    Vectors g;
};

class CoarseFlatLimit : public FlatLimit, public ::testing::WithParamInterface<Sample> {};
class FineFlatLimit : public FlatLimit, public ::testing::WithParamInterface<Sample> {};

TEST_P(CoarseFlatLimit, upwind_gradient) {
    buildOneWall(GetParam().g);
    calc.GradVarb_Upwind(phi.data(), g.x.data(), g.y.data(), g.z.data());
    expect(GetParam());
}

TEST_P(CoarseFlatLimit, rbf_gradient) {
    buildOneWall(GetParam().g);
    calc.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
    expect(GetParam());
}

// Walls at unit distance along the axes with the components as differences: the matrix is one.
TEST_P(CoarseFlatLimit, least_squares_gradient) {
    host.addCell({0, 0, 0}, 1.0, {});
    for (const Point& offset : {Point{1, 0, 0}, Point{0, 1, 0}, Point{0, 0, 1}})
        host.addBoundary(Group::Wall, 1, {}, offset);
    bind();
    phi = {NaN, 0.0, GetParam().g[0], GetParam().g[1], GetParam().g[2]};
    g = vectors(0.0);
    calc.GradVarb_Iterative(phi.data(), g.x.data(), g.y.data(), g.z.data());
    expect(GetParam());
}

TEST_P(FineFlatLimit, default_gradient) {
    buildOneWall(GetParam().g);
    calc.GradVarb(1, phi.data(), g.x.data(), g.y.data(), g.z.data());
    expect(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Samples, CoarseFlatLimit, ::testing::ValuesIn(coarse));
INSTANTIATE_TEST_SUITE_P(Samples, FineFlatLimit, ::testing::ValuesIn(fine));

}  // namespace

}  // namespace weldline::test
