#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>

#include "Comparison.h"
#include "Transformation.h"

// A power of two changes exponents, never digits. With lengths times L and times times T every
// area takes L^2, every volume L^3, every gradient T / L, and every angle stays, as long as no
// number meets one of the calculation's absolute limits: 1e-30 for "reached" and as guard of
// denominators, 0.001 (or 1e-30) for flat gradients.

namespace weldline::test {

struct Factors {
    double length;
    double time;
};

void PrintTo(const Factors& factors, std::ostream* stream) {
    *stream << "lengths times " << factors.length << ", times times " << factors.time;
}

namespace {

std::vector<double> times(double factor, std::vector<double> values) {
    for (double& value : values) value *= factor;
    return values;
}

Outcome plainRun(const std::string& control) {
    TestHost host;
    addShakenBox(host);
    return freshRun(host, control);
}

Outcome scaledRun(const Factors& factors, const std::string& control) {
    TestHost host;
    addShakenBox(host);
    transform(host, {.length = factors.length, .time = factors.time});
    return freshRun(host, control);
}

bool allAre(double value, const std::vector<double>& values) {
    return std::all_of(values.begin(), values.end(), [=](double v) { return v == value; });
}

}  // namespace

class Scale : public ::testing::TestWithParam<Factors> {};

TEST_P(Scale, keeps_the_angles_and_scales_the_gradients_exactly) {
    const double gradientFactor = GetParam().time / GetParam().length;
    for (const Choice& choice : everyChoice()) {
        SCOPED_TRACE(inWords(choice));
        const auto [plain, scaled] = compareRuns(choice, [](TestHost& host) {
            transform(host, {.length = GetParam().length, .time = GetParam().time});
        });
        EXPECT_GE(plain.nodesBelow180(), 5);
        EXPECT_EQ(scaled.angle, plain.angle);
        EXPECT_EQ(scaled.variable, times(GetParam().time, plain.variable));
        EXPECT_EQ(scaled.flatFlag, plain.flatFlag);
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(scaled.gradient[axis], times(gradientFactor, plain.gradient[axis]));
            EXPECT_EQ(scaled.secondGradient[axis],
                      times(gradientFactor, plain.secondGradient[axis]));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(PowersOfTwo, Scale,
                         ::testing::Values(Factors{2.0, 1.0}, Factors{0.5, 1.0}, Factors{1.0, 2.0},
                                           Factors{1.0, 0x1p20}, Factors{0x1p-10, 1.0},
                                           Factors{0x1p-10, 0x1p-12}, Factors{0x1p20, 0x1p22}));

// Lengths 4096 times as large: every gradient is below 0.001, so that every cell is flat and
// nothing meets. The default scheme, whose limit is 1e-30, does not notice.
TEST(Scale, keeps_the_absolute_limit_of_flat_gradients) {
    const Factors large{4096.0, 1.0};
    const Outcome upwind = scaledRun(large, settings(4, 4));
    EXPECT_TRUE(allAre(180.0, upwind.angle));
    EXPECT_TRUE(allAre(0.0, upwind.gradient[0]));
    const Outcome standard = scaledRun(large, settings(4, 1));
    EXPECT_EQ(standard.angle, plainRun(settings(4, 1)).angle);
    EXPECT_GE(standard.nodesBelow180(), 5);
}

// Cells of about 1e-15 volume units: next to it the guard 1e-30 in the denominator of the default
// scheme shows in the last digits. The upwind scheme divides by the bare volume and stays exact.
TEST(Scale, keeps_the_guard_beside_small_volumes) {
    const Factors small{0x1p-16, 1.0};
    const Outcome plain = plainRun(settings(4, 1));
    const Outcome standard = scaledRun(small, settings(4, 1));
    EXPECT_EQ(standard.variable, plain.variable);
    const std::vector<double> exact = times(0x1p16, plain.gradient[0]);
    EXPECT_NE(standard.gradient[0], exact);
    for (std::size_t i = 0; i < exact.size(); ++i)
        EXPECT_NEAR(standard.gradient[0][i], exact[i], 1e-12 * 0x1p16);
    EXPECT_EQ(scaledRun(small, settings(4, 4)).gradient[0],
              times(0x1p16, plainRun(settings(4, 4)).gradient[0]));
}

// Times 2^-110, about 8e-34, put every cell below 1e-30: the melt has reached none of them.
TEST(Scale, keeps_the_absolute_limit_of_reached_cells) {
    for (const Choice& choice : everyChoice()) {
        SCOPED_TRACE(inWords(choice));
        const Outcome early =
            scaledRun({1.0, 0x1p-110}, settings(choice.method, choice.gradientMethod));
        EXPECT_TRUE(allAre(180.0, early.angle));
        EXPECT_TRUE(allAre(0.0, early.variable));
    }
}

}  // namespace weldline::test
