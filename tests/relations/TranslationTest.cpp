#include <gtest/gtest.h>

#include "Comparison.h"
#include "Transformation.h"

// The box's coordinates are multiples of 1/1024 and its weights multiples of 1/64: moved by powers
// of two, every coordinate and every interpolated one stays exact, and so every difference of two
// is the same number. Only differences enter, except in method 3.

namespace weldline::test {

namespace {

void moveFarAway(TestHost& host) {
    transform(host, {.shift = {1024.0, -512.0, 2048.0}});
}

}  // namespace

TEST(Translation, changes_no_bit_of_any_result) {
    for (const Choice& choice : everyChoice()) {
        if (choice.method == 3) continue;  // see below
        SCOPED_TRACE(inWords(choice));
        const auto [here, there] = compareRuns(choice, moveFarAway);
        EXPECT_GE(here.nodesBelow180(), 5);
        EXPECT_EQ(there.angle, here.angle);
        EXPECT_EQ(there.variable, here.variable);
        EXPECT_EQ(there.gradient, here.gradient);
        EXPECT_EQ(there.secondGradient, here.secondGradient);
    }
}

// Method 3 looks up a face by a number that mostly lies beyond the cell's list, and takes the point
// (0, 0, 0) there: its angles depend on where the mesh lies, its gradients do not.
TEST(Translation, keeps_the_origin_in_method_3) {
    const auto [here, there] = compareRuns({3, 1}, moveFarAway);
    EXPECT_NE(there.angle, here.angle);
    EXPECT_EQ(there.gradient, here.gradient);
}

}  // namespace weldline::test
