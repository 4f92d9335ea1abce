#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "BindBoxMesh.h"
#include "base/Errors.h"
#include "bind/FillTime.h"

namespace weldline::test {

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

// Cells in a row, inlet at the left end:   I| 0 | 1 | 2 | 3 |W
FillTime prepared(const std::vector<double>& raw, ZeroFillTime zero = ZeroFillTime::Automatic,
                  std::string_view sides = "IWWWWW") {
    const FvMesh mesh = boxMesh(static_cast<int>(raw.size()), 1, 1);
    return prepareFillTime(raw, mesh, boxGroups(mesh, sides), zero);
}

}  // namespace

TEST(FillTime, marked_cells_are_not_reached) {
    const FillTime t = prepared({nan, -1.0, infinity, -infinity, 1e300, 2.0});
    EXPECT_EQ(t.values, (std::vector<float>{0, 0, 0, 0, 0, 2}));
    EXPECT_EQ(t.counts.marked, 5);
    EXPECT_EQ(t.counts.notReached, 5);
    EXPECT_EQ(t.counts.reached, 1);
}

TEST(FillTime, zero_without_marks_is_not_reached_away_from_the_inlet) {
    const FillTime t = prepared({1.0, 2.0, 0.0, 0.0});
    EXPECT_EQ(t.values, (std::vector<float>{1, 2, 0, 0}));
    EXPECT_EQ(t.counts.zeroNotReached, 2);
    EXPECT_EQ(t.counts.zeroFilled, 0);
    EXPECT_EQ(t.counts.reached, 2);
}

// The inlet's cell and the one behind it were filled at the start; the last one was never reached.
TEST(FillTime, zero_connected_to_the_inlet_is_filled) {
    const FillTime t = prepared({0.0, 0.0, 4.0, 0.0});
    EXPECT_EQ(t.values, (std::vector<float>{4e-6F, 4e-6F, 4, 0}));
    EXPECT_EQ(t.counts.zeroFilled, 2);
    EXPECT_EQ(t.counts.zeroNotReached, 1);
    EXPECT_EQ(t.counts.reached, 3);
    EXPECT_EQ(t.counts.notReached, 1);
}

TEST(FillTime, zero_without_inlet_and_marks_is_not_reached) {
    const FillTime t = prepared({0.0, 1.0, 2.0}, ZeroFillTime::Automatic, "WWWWWW");
    EXPECT_EQ(t.values, (std::vector<float>{0, 1, 2}));
}

TEST(FillTime, zero_beside_marks_is_filled_everywhere) {
    for (const double mark : {nan, -1.0, infinity}) {
        const FillTime t = prepared({1.0, 2.0, 0.0, mark});
        EXPECT_EQ(t.values, (std::vector<float>{1, 2, 1e-6F, 0}));
        EXPECT_EQ(t.counts.zeroFilled, 1);
        EXPECT_EQ(t.counts.marked, 1);
    }
}

TEST(FillTime, choice_overrules_the_data_set) {
    EXPECT_EQ(prepared({0.0, 1.0, nan}, ZeroFillTime::NotReached).values,
              (std::vector<float>{0, 1, 0}));
    EXPECT_EQ(prepared({1.0, 2.0, 0.0}, ZeroFillTime::Filled).values,
              (std::vector<float>{1, 2, 1e-6F}));
}

TEST(FillTime, negative_zero_and_tiny_values_count_as_zero) {
    const FillTime t = prepared({1.0, -0.0, 1e-30, 1e-40});
    EXPECT_EQ(t.counts.zeroNotReached, 3);
    EXPECT_FALSE(std::signbit(t.values[1]));
}

TEST(FillTime, smallest_time_above_the_limit_is_reached) {
    const FillTime t = prepared({1.0, std::nextafter(1e-30, 1.0)});
    EXPECT_EQ(t.counts.reached, 2);
    EXPECT_TRUE(isReached(t.values[1]));
}

TEST(FillTime, start_time_is_reached_when_nothing_else_is) {
    const FillTime t = prepared({0.0, 0.0}, ZeroFillTime::Filled);
    EXPECT_EQ(t.values, (std::vector<float>{1e-6F, 1e-6F}));
    EXPECT_EQ(t.counts.earliest, 0.0);
    EXPECT_EQ(t.counts.latest, 0.0);
    EXPECT_TRUE(isReached(prepared({2e-30, 0.0}, ZeroFillTime::Filled).values[1]));
}

TEST(FillTime, counts_earliest_and_latest_time_above_zero) {
    const FillTime t = prepared({0.0, 3.0, 0.5, -7.0});
    EXPECT_EQ(t.counts.earliest, 0.5);
    EXPECT_EQ(t.counts.latest, 3.0);
}

TEST(FillTime, wrong_number_of_values_is_refused) {
    const FvMesh mesh = boxMesh(2, 1, 1);
    EXPECT_THROW(prepareFillTime({1.0}, mesh, boxGroups(mesh, "WWWWWW")), InputError);
}

}  // namespace weldline::test
