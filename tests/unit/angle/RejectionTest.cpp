// The reasons for which methods 1 to 3 drop a pair before they look at directions, one by one, and
// which of them method 4 shares. Every test starts from the pair of TwoCells, which meets.

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

constexpr double kReached = 1e-30;  // a cell is reached by the melt above this value

double above(double value) {
    return std::nextafter(value, HUGE_VAL);
}

double below(double value) {
    return std::nextafter(value, -HUGE_VAL);
}

class Rejection : public testing::TestWithParam<int> {
  protected:
    bool meetsLoaded(int cell, double value) const {
        return meets(GetParam(), [&](TwoCells& b) { b.line.m_pVariableOrg[cell] = value; });
    }
    bool meetsSmoothed(int cell, double value) const {
        return meets(GetParam(), [&](TwoCells& b) { b.line.m_pVariable[cell] = value; });
    }
    bool meetsVolumes(double first, double second, double limit) const {
        return meets(GetParam(), [&](TwoCells& b) {
            b.line.m_pVolume[1] = first;
            b.line.m_pVolume[2] = second;
            b.line.m_Volume_Filter = limit;
        });
    }
    bool meetsFlag(int cell, int flag) const {
        return meets(GetParam(), [&](TwoCells& b) { b.line.m_pZeroGradFlag[cell] = flag; });
    }
    // Gradients of these lengths towards each other; the pace maker's is `pace` long.
    bool meetsLengths(double first, double second, double pace, double meanFactor) const {
        return meets(GetParam(), [&](TwoCells& b) {
            b.setGradient(1, {first, 0, 0});
            b.setGradient(2, {-second, 0, 0});
            b.setGradient(3, {0, pace, 0});
            b.line.m_GradMeanFactor = meanFactor;
        });
    }
};
using RejectionOfMethod4 = Rejection;
using RejectionOfEveryMethod = Rejection;

}  // namespace

TEST_P(RejectionOfEveryMethod, none_for_the_plain_pair) {
    EXPECT_TRUE(meets(GetParam(), [](TwoCells&) {}));
}

TEST_P(RejectionOfEveryMethod, first_cell_with_zeroed_gradient) {
    EXPECT_FALSE(meetsFlag(1, 1));
}

TEST_P(RejectionOfEveryMethod, second_cell_with_zeroed_gradient) {
    EXPECT_FALSE(meetsFlag(2, 1));
}

TEST_P(RejectionOfEveryMethod, only_flag_1_means_zeroed) {
    for (int cell : {1, 2})
        for (int flag : {0, 2, 3, -1}) EXPECT_TRUE(meetsFlag(cell, flag)) << flag;
}

INSTANTIATE_TEST_SUITE_P(All, RejectionOfEveryMethod, testing::Values(1, 2, 3, 4), methodName);

TEST_P(Rejection, first_cell_not_reached) {
    EXPECT_FALSE(meetsLoaded(1, kReached));
    EXPECT_TRUE(meetsLoaded(1, above(kReached)));
}

TEST_P(Rejection, second_cell_not_reached) {
    EXPECT_FALSE(meetsLoaded(2, kReached));
    EXPECT_TRUE(meetsLoaded(2, above(kReached)));
}

TEST_P(Rejection, zero_and_negative_values_are_not_reached) {
    for (int cell : {1, 2})
        for (double value : {0.0, -0.0, -1.0}) EXPECT_FALSE(meetsLoaded(cell, value)) << value;
}

TEST_P(Rejection, keeps_a_value_that_is_not_a_number_as_reached) {
    EXPECT_TRUE(meetsLoaded(1, NaN));
    EXPECT_TRUE(meetsLoaded(2, NaN));
}

TEST_P(Rejection, keeps_the_loaded_variable_as_the_one_that_counts) {
    EXPECT_TRUE(meetsSmoothed(1, 0.0));
    EXPECT_TRUE(meetsSmoothed(2, 0.0));
}

// Limit 0.25, so 1 / 0.25 = 4 exactly.
TEST_P(Rejection, first_volume_too_large) {
    EXPECT_TRUE(meetsVolumes(4.0, 1.0, 0.25));
    EXPECT_FALSE(meetsVolumes(above(4.0), 1.0, 0.25));
}

TEST_P(Rejection, first_volume_too_small) {
    EXPECT_TRUE(meetsVolumes(0.25, 1.0, 0.25));
    EXPECT_FALSE(meetsVolumes(below(0.25), 1.0, 0.25));
}

TEST_P(Rejection, limit_1_drops_unequal_volumes) {
    EXPECT_TRUE(meetsVolumes(3.0, 3.0, 1.0));
    EXPECT_FALSE(meetsVolumes(3.0, above(3.0), 1.0));
    EXPECT_FALSE(meetsVolumes(above(3.0), 3.0, 1.0));
}

TEST_P(Rejection, limit_above_1_drops_all_volumes) {
    EXPECT_FALSE(meetsVolumes(3.0, 3.0, 2.0));
    EXPECT_FALSE(meetsVolumes(6.0, 3.0, 2.0));
    EXPECT_FALSE(meetsVolumes(3.0, 6.0, 2.0));
}

TEST_P(Rejection, limit_0_drops_no_volumes) {
    EXPECT_TRUE(meetsVolumes(1e-100, 1e100, 0.0));
}

TEST_P(Rejection, volumes_count_only_when_both_are_non_zero) {
    EXPECT_TRUE(meetsVolumes(0.0, 1.0, 2.0));
    EXPECT_TRUE(meetsVolumes(1.0, 0.0, 2.0));
    EXPECT_TRUE(meetsVolumes(-0.0, 1.0, 2.0));
    EXPECT_TRUE(meetsVolumes(0.0, 0.0, 2.0));
}

// A negative ratio is below every limit that is not negative.
TEST_P(Rejection, keeps_negative_volumes_apart_from_positive_ones) {
    EXPECT_FALSE(meetsVolumes(-1.0, 1.0, 0.2));
    EXPECT_TRUE(meetsVolumes(-1.0, -1.0, 0.2));
}

TEST_P(Rejection, keeps_a_volume_that_is_not_a_number) {
    EXPECT_TRUE(meetsVolumes(NaN, 1.0, 2.0));
    EXPECT_TRUE(meetsVolumes(1.0, NaN, 2.0));
}

// Upper limit 100 * 0.99 = 99.
TEST_P(Rejection, first_gradient_above_the_upper_limit) {
    EXPECT_TRUE(meetsLengths(99.0, 1.0, 100.0, 0.0));
    EXPECT_FALSE(meetsLengths(above(99.0), 1.0, 100.0, 0.0));
}

TEST_P(Rejection, second_gradient_above_the_upper_limit) {
    EXPECT_TRUE(meetsLengths(1.0, 99.0, 100.0, 0.0));
    EXPECT_FALSE(meetsLengths(1.0, above(99.0), 100.0, 0.0));
}

// Lower limit (2 + 3 + 7) / 3 * 0.5 = 2; a length just below 2 leaves the sum at 12.
TEST_P(Rejection, first_gradient_below_the_lower_limit) {
    EXPECT_TRUE(meetsLengths(2.0, 3.0, 7.0, 0.5));
    EXPECT_FALSE(meetsLengths(below(2.0), 3.0, 7.0, 0.5));
}

TEST_P(Rejection, second_gradient_below_the_lower_limit) {
    EXPECT_TRUE(meetsLengths(3.0, 2.0, 7.0, 0.5));
    EXPECT_FALSE(meetsLengths(3.0, below(2.0), 7.0, 0.5));
}

// In the limit the length 1e-21 counts as 1e-20: (1e-20 + 1e-20 + 3e-20) / 3 * 0.5 = 8.3e-21. In
// the comparison it does not.
TEST_P(Rejection, keeps_short_gradients_short_in_the_comparison) {
    EXPECT_FALSE(meetsLengths(1e-21, 1e-20, 3e-20, 0.5));
    EXPECT_FALSE(meetsLengths(1e-20, 1e-21, 3e-20, 0.5));
    EXPECT_TRUE(meetsLengths(1e-20, 1e-20, 3e-20, 0.5));
}

INSTANTIATE_TEST_SUITE_P(All, Rejection, testing::Values(1, 2, 3), methodName);

TEST_P(RejectionOfMethod4, first_cell_not_reached) {
    EXPECT_FALSE(meetsSmoothed(1, kReached));
    EXPECT_TRUE(meetsSmoothed(1, above(kReached)));
}

TEST_P(RejectionOfMethod4, second_cell_not_reached) {
    EXPECT_FALSE(meetsSmoothed(2, kReached));
    EXPECT_TRUE(meetsSmoothed(2, above(kReached)));
}

TEST_P(RejectionOfMethod4, keeps_the_smoothed_variable_as_the_one_that_counts) {
    EXPECT_TRUE(meetsLoaded(1, 0.0));
    EXPECT_TRUE(meetsLoaded(2, 0.0));
}

TEST_P(RejectionOfMethod4, none_for_unlike_volumes) {
    EXPECT_TRUE(meetsVolumes(100.0, 1.0, 0.2));
    EXPECT_TRUE(meetsVolumes(1.0, 100.0, 0.2));
    EXPECT_TRUE(meetsVolumes(1.0, 1.0, 2.0));
}

TEST_P(RejectionOfMethod4, none_for_the_largest_and_the_smallest_gradient) {
    EXPECT_TRUE(meetsLengths(5.0, 5.0, 1.0, 1.0));
    EXPECT_TRUE(meetsLengths(1e-9, 1e-9, 1e9, 1.0));
}

INSTANTIATE_TEST_SUITE_P(All, RejectionOfMethod4, testing::Values(4), methodName);

}  // namespace weldline::test
