#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "render/RoundNumbers.h"
#include "render/TimeBands.h"

namespace weldline::test {

TEST(RoundNumbers, below_a_limit) {
    EXPECT_EQ(roundDown(1.0), 1.0);
    EXPECT_EQ(roundDown(1.99), 1.0);
    EXPECT_EQ(roundDown(2.0), 2.0);
    EXPECT_EQ(roundDown(4.999), 2.0);
    EXPECT_EQ(roundDown(9.7), 5.0);
    EXPECT_EQ(roundDown(1000.0), 1000.0);
    EXPECT_EQ(roundDown(0.02), 0.02);
    EXPECT_EQ(roundDown(0.0199), 0.01);
    EXPECT_EQ(roundDown(3e-7), 2e-7);
    EXPECT_EQ(roundDown(0.1 + 0.2 - 0.1), 0.2);
}

TEST(RoundNumbers, above_a_limit) {
    EXPECT_EQ(roundUp(1.0), 1.0);
    EXPECT_EQ(roundUp(1.01), 2.0);
    EXPECT_EQ(roundUp(2.5), 5.0);
    EXPECT_EQ(roundUp(5.1), 10.0);
    EXPECT_EQ(roundUp(0.03), 0.05);
    EXPECT_EQ(roundUp(70.0), 100.0);
    EXPECT_EQ(roundUp(0.1 + 0.2 - 0.1), 0.2);
}

TEST(RoundNumbers, shown_with_six_digits) {
    EXPECT_EQ(legendNumber(0.1 + 0.2), "0.3");
    EXPECT_EQ(legendNumber(-0.0), "0");
    EXPECT_EQ(legendNumber(1234567.0), "1.23457e+06");
    EXPECT_EQ(legendNumber(0.05), "0.05");
}

TEST(EvenBands, share_the_time_out) {
    const TimeBands bands = evenBands(1.0, 3.0, 4);
    EXPECT_EQ(bands.edges, (std::vector<double>{1.0, 1.5, 2.0, 2.5, 3.0}));
    EXPECT_EQ(bands.count(), 4);
}

// 4.9 / 12 is above 0.2: bands of 0.5.
TEST(RoundBands, have_edges_at_multiples_of_a_round_width) {
    const TimeBands bands = roundBands(0.02, 4.92);
    EXPECT_EQ(bands.edges, (std::vector<double>{0, 0.5, 1, 1.5, 2, 2.5, 3, 3.5, 4, 4.5, 5}));
}

TEST(RoundBands, take_no_further_band_for_a_rounding_error) {
    const TimeBands bands = roundBands(1e-9, 6.0 + 1e-9);
    EXPECT_EQ(bands.low(), 0.0);
    EXPECT_EQ(bands.high(), 6.0);
}

TEST(RoundBands, are_5_to_14_and_hold_both_times) {
    for (double earliest : {0.0, 0.37, 12.0, 1e4})
        for (double span = 1e-3; span < 1e3; span *= 1.17) {
            const TimeBands bands = roundBands(earliest, earliest + span);
            EXPECT_GE(bands.count(), 5) << earliest << " " << span;
            EXPECT_LE(bands.count(), 14) << earliest << " " << span;
            EXPECT_LE(bands.low(), earliest + 1e-6 * span);
            EXPECT_GE(bands.high(), earliest + span - 1e-6 * span);
        }
}

TEST(RoundBands, of_one_time_are_one) {
    EXPECT_EQ(roundBands(2.0, 2.0).edges, (std::vector<double>{2.0, 2.0}));
}

TEST(LabelStep, leaves_at_most_seven_numbers) {
    EXPECT_EQ(labelStep(1), 1);
    EXPECT_EQ(labelStep(6), 1);
    EXPECT_EQ(labelStep(7), 2);
    EXPECT_EQ(labelStep(12), 2);
    EXPECT_EQ(labelStep(13), 3);
    EXPECT_EQ(labelStep(256), 43);
}

}  // namespace weldline::test
