#include <gtest/gtest.h>

#include "Comparison.h"
#include "Transformation.h"

// Which renamings of the same mesh the bits survive, and which they do not.

namespace weldline::test {

// The sums are (x + y) + z, so x and y may change places. The default scheme's face value has an
// order of its own, and elimination takes the axes one after the other.
TEST(Order, x_and_y_may_change_places_in_the_upwind_and_rbf_schemes) {
    for (const Choice& choice : {Choice{4, 2}, Choice{4, 2, 0.0}, Choice{4, 4}}) {
        SCOPED_TRACE(inWords(choice));
        const auto [plain, exchanged] = compareRuns(choice, exchangeXAndY);
        EXPECT_GE(plain.nodesBelow180(), 5);
        EXPECT_EQ(exchanged.angle, plain.angle);
        EXPECT_EQ(exchanged.variable, plain.variable);
        EXPECT_EQ(exchanged.gradient[0], plain.gradient[1]);
        EXPECT_EQ(exchanged.gradient[1], plain.gradient[0]);
        EXPECT_EQ(exchanged.gradient[2], plain.gradient[2]);
    }
}

TEST(Order, keeps_the_axes_apart_in_the_default_scheme_and_in_elimination) {
    for (const Choice& choice : {Choice{4, 1}, Choice{4, 3}}) {
        SCOPED_TRACE(inWords(choice));
        const auto [plain, exchanged] = compareRuns(choice, exchangeXAndY);
        EXPECT_EQ(exchanged.variable, plain.variable);
        EXPECT_NE(exchanged.gradient[2], plain.gradient[2]);
        for (std::size_t i = 0; i < plain.variable.size(); ++i)
            EXPECT_NEAR(exchanged.gradient[2][i], plain.gradient[2][i], 1e-11);
    }
}

// Turning a face round changes the order of two addends at most, never the bracketing; with
// weights that are multiples of 1/64, 1 - lambda is exact. Stencils of the RBF scheme follow the
// order of the face's cells, so that scheme is left out.
TEST(Order, inner_faces_may_be_turned_round) {
    for (const Choice& choice :
         {Choice{1, 1}, Choice{2, 1}, Choice{3, 1}, Choice{4, 1}, Choice{4, 3}, Choice{4, 4}}) {
        SCOPED_TRACE(inWords(choice));
        const auto [plain, turned] = compareRuns(choice, turnInnerFaces);
        EXPECT_GE(plain.nodesBelow180(), 5);
        EXPECT_EQ(turned.angle, plain.angle);
        EXPECT_EQ(turned.variable, plain.variable);
        EXPECT_EQ(turned.gradient, plain.gradient);
        EXPECT_EQ(turned.secondGradient, plain.secondGradient);
    }
}

// The same faces in another order are the same sums with other bracketing: other last digits.
TEST(Order, keeps_the_order_of_the_faces_in_the_bits) {
    const auto [plain, reversed] = compareRuns({1, 1}, reverseInnerFaces);
    EXPECT_NE(reversed.variable, plain.variable);
    EXPECT_NE(reversed.gradient, plain.gradient);
    for (std::size_t i = 0; i < plain.variable.size(); ++i)
        EXPECT_NEAR(reversed.variable[i], plain.variable[i], 1e-13);
}

}  // namespace weldline::test
