#include <gtest/gtest.h>

#include "Comparison.h"
#include "Transformation.h"

// Rounding knows no sign, and every step of the calculation takes the components of vectors either
// singly or in products of two components of the same axis. A mesh mirrored in its numbers alone
// (same faces in the same order, between the same cells) therefore gives the same bits everywhere
// but for the sign of the mirrored gradient components.

namespace weldline::test {

namespace {

Point mirrorOf(int axes) {
    return {(axes & 1) != 0 ? -1.0 : 1.0, (axes & 2) != 0 ? -1.0 : 1.0,
            (axes & 4) != 0 ? -1.0 : 1.0};
}

std::string nameOfAxes(const ::testing::TestParamInfo<int>& axes) {
    std::string name;
    for (int axis = 0; axis < 3; ++axis)
        if ((axes.param & (1 << axis)) != 0) name += "xyz"[axis];
    return name;
}

// A sum that cancels is +0.0 on both sides, so a zero keeps its sign: equal, not same bits.
void expectFlipped(const std::vector<double>& mirrored, const std::vector<double>& plain,
                   double sign, const char* name) {
    ASSERT_EQ(mirrored.size(), plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i)
        EXPECT_EQ(mirrored[i], sign * plain[i]) << name << " at " << i + 1;
}

}  // namespace

class Mirror : public ::testing::TestWithParam<int> {};

TEST_P(Mirror, flips_the_sign_of_its_gradient_component_and_nothing_else) {
    const Point mirror = mirrorOf(GetParam());
    for (const Choice& choice : everyChoice()) {
        SCOPED_TRACE(inWords(choice));
        const auto [plain, mirrored] =
            compareRuns(choice, [&](TestHost& host) { transform(host, {.mirror = mirror}); });
        EXPECT_GE(plain.nodesBelow180(), 5);
        EXPECT_EQ(mirrored.angle, plain.angle);
        EXPECT_EQ(mirrored.variable, plain.variable);
        EXPECT_EQ(mirrored.flatFlag, plain.flatFlag);
        for (int axis = 0; axis < 3; ++axis) {
            expectFlipped(mirrored.gradient[axis], plain.gradient[axis], mirror[axis], "gradient");
            expectFlipped(mirrored.secondGradient[axis], plain.secondGradient[axis], mirror[axis],
                          "second gradient");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Axes, Mirror, ::testing::Range(1, 8), nameOfAxes);

}  // namespace weldline::test
