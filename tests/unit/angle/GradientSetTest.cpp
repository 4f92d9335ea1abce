// Method 4 first decides which gradient set it compares: the second one is copied over the first
// when the gradient method is 2 or 3 and the host's switch is within 0.001 of 1.

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

// The second set is (100 + slot, 200 + slot, 300 + slot) in every slot, slot 0 included.
struct TwoSets : HaloPair {
    TwoSets(int gradientMethod, double gradSetSwitch) {
        line.m_GradMethodMFT = gradientMethod;
        host.gradSetSwitch = gradSetSwitch;
        for (int slot = 0; slot <= host.slots(); ++slot) {
            setGradient(slot, {1.0 + slot, 2.0 + slot, 3.0 + slot});
            setSecondGradient(slot, {100.0 + slot, 200.0 + slot, 300.0 + slot});
        }
    }
    bool copied(int slot) const {
        return line.m_pGradX[slot] == 100.0 + slot && line.m_pGradY[slot] == 200.0 + slot &&
               line.m_pGradZ[slot] == 300.0 + slot;
    }
    bool kept(int slot) const {
        return line.m_pGradX[slot] == 1.0 + slot && line.m_pGradY[slot] == 2.0 + slot &&
               line.m_pGradZ[slot] == 3.0 + slot;
    }
};

bool selectsSecond(double gradSetSwitch, int gradientMethod = 3) {
    TwoSets bench(gradientMethod, gradSetSwitch);
    bench.run(4);
    EXPECT_NE(bench.copied(1), bench.kept(1));
    return bench.copied(1);
}

}  // namespace

TEST(GradientSet, switch_of_1_selects_the_second_set) {
    EXPECT_TRUE(selectsSecond(1.0));
}

TEST(GradientSet, switch_limits_are_outside) {
    EXPECT_TRUE(selectsSecond(1.0009));
    EXPECT_FALSE(selectsSecond(1.001));
    EXPECT_TRUE(selectsSecond(0.9991));
    EXPECT_FALSE(selectsSecond(0.999));
}

// The doubles beside the limits follow the difference from 1 as it is computed.
TEST(GradientSet, doubles_beside_the_switch_limits) {
    EXPECT_TRUE(selectsSecond(std::nextafter(1.001, 0.0)));
    EXPECT_FALSE(selectsSecond(std::nextafter(1.001, 2.0)));
    EXPECT_FALSE(selectsSecond(std::nextafter(0.999, 0.0)));
    EXPECT_TRUE(selectsSecond(std::nextafter(0.999, 2.0)));
}

TEST(GradientSet, other_switch_values_keep_the_first_set) {
    for (double value : {0.0, 2.0, -1.0, 1e300, HUGE_VAL, -HUGE_VAL, NaN})
        EXPECT_FALSE(selectsSecond(value)) << value;
}

TEST(GradientSet, only_gradient_methods_2_and_3_have_a_second_set) {
    for (int method : {2, 3}) EXPECT_TRUE(selectsSecond(1.0, method)) << method;
    for (int method : {-2, -1, 0, 1, 4, 5, 40}) EXPECT_FALSE(selectsSecond(1.0, method)) << method;
}

TEST(GradientSet, all_slots_are_copied_and_none_back) {
    TwoSets bench(2, 1.0);
    bench.run(4);
    EXPECT_TRUE(bench.kept(0));
    for (int slot = 1; slot <= bench.host.slots(); ++slot) {
        EXPECT_TRUE(bench.copied(slot)) << slot;
        EXPECT_EQ(bench.line.m_pGrad2X[slot], 100.0 + slot);
        EXPECT_EQ(bench.line.m_pGrad2Y[slot], 200.0 + slot);
        EXPECT_EQ(bench.line.m_pGrad2Z[slot], 300.0 + slot);
    }
}

TEST(GradientSet, unselected_second_set_changes_nothing) {
    TwoSets bench(3, 0.0);
    bench.run(4);
    for (int slot = 0; slot <= bench.host.slots(); ++slot) EXPECT_TRUE(bench.kept(slot)) << slot;
}

// The first set flows along, the second one meets head-on.
TEST(GradientSet, selected_set_is_the_one_compared) {
    for (double value : {1.0, 0.0}) {
        EXPECT_EQ(meets(4,
                        [&](TwoCells& bench) {
                            bench.host.gradSetSwitch = value;
                            bench.setGradient(2, {1, 0, 0});
                            bench.setSecondGradient(1, {1, 0, 0});
                            bench.setSecondGradient(2, {-1, 0, 0});
                        }),
                  value == 1.0);
    }
}

TEST(GradientSet, other_methods_never_look_at_the_second_set) {
    for (int method : {1, 2, 3}) {
        TwoSets bench(3, 1.0);
        bench.run(method);
        for (int slot = 0; slot <= bench.host.slots(); ++slot) EXPECT_TRUE(bench.kept(slot));
    }
}

}  // namespace weldline::test
