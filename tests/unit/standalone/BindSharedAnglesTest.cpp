#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include "bind/SharedAngles.h"
#include "comm/ThreadRanks.h"

namespace weldline {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

std::uint64_t bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

// Three ranks; the first two share their nodes 0 and 1, all three share node 2.
TEST(SharedAngles, are_the_smallest_of_all_ranks) {
    const std::vector<std::vector<double>> before{
        {180.0, 20.0, 90.0, 5.0}, {30.0, 180.0, 180.0, 6.0}, {180.0, 1.0, 45.5}};
    const std::vector<std::vector<double>> after{
        {30.0, 20.0, 45.5, 5.0}, {30.0, 20.0, 45.5, 6.0}, {180.0, 1.0, 45.5}};
    runAsThreads(3, [&](Ranks& ranks) {
        const auto r = static_cast<std::size_t>(ranks.rank());
        const std::vector<std::vector<SharedNodes>> shared{
            {{1, {0, 1, 2}}, {2, {2}}}, {{0, {0, 1, 2}}, {2, {2}}}, {{0, {2}}, {1, {2}}}};
        std::vector<double> angles = before[r];
        takeSmallestAngles(ranks, shared[r], angles);
        EXPECT_EQ(angles, after[r]);
    });
}

// Per node what two ranks have, and the bits that both get.
TEST(SharedAngles, take_a_number_before_nan_and_the_same_bits_on_all_ranks) {
    const std::vector<std::vector<double>> before{{nan, 7.0, nan, 0.0, -0.0, -1e-7},
                                                  {8.0, nan, -nan, -0.0, 0.0, 0.0}};
    const std::vector<double> after{8.0, 7.0, nan, -0.0, -0.0, -1e-7};
    runAsThreads(2, [&](Ranks& ranks) {
        std::vector<double> angles = before[static_cast<std::size_t>(ranks.rank())];
        takeSmallestAngles(ranks, {{1 - ranks.rank(), {0, 1, 2, 3, 4, 5}}}, angles);
        for (std::size_t n = 0; n < after.size(); ++n)
            EXPECT_EQ(bits(angles[n]), bits(after[n])) << n;
    });
}

}  // namespace
}  // namespace weldline
