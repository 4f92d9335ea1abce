// When cells were reached, worked out by hand from two or three steps each.
#include "fill/FillTimeSeries.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "base/Errors.h"

namespace weldline::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// One cell with these values at the times 0, 1, 2, ...
FillTimeSeries oneCell(const std::vector<double>& values, double level = 0.5) {
    FillTimeSeries series(level);
    for (std::size_t i = 0; i < values.size(); ++i) series.add(static_cast<double>(i), {values[i]});
    return series;
}

double timeOf(const std::vector<double>& values, double level = 0.5) {
    return oneCell(values, level).times().front();
}

std::string errorOf(FillTimeSeries& series, double time, const std::vector<double>& values) {
    try {
        series.add(time, values);
        return "";
    } catch (const InputError& error) {
        return error.what();
    }
}

// From 0.25 to 0.75 the middle is passed at half the way: 3 + 0.5 * 4 = 5.
TEST(FillTimeSeries, crossing_is_linear_between_two_steps) {
    FillTimeSeries series;
    series.add(3.0, {0.25, 0.0});
    series.add(7.0, {0.75, 2.0});
    EXPECT_EQ(series.times(), (std::vector<double>{5.0, 4.0}));
    EXPECT_TRUE(series.isReached(0));
    EXPECT_FALSE(series.wasFullAtStart(0));
    EXPECT_FALSE(series.hasEmptied(0));
}

// 0.75 of the way from 0.125 to 0.625 is 0.5.
TEST(FillTimeSeries, crossing_lies_between_the_two_steps_around_it) {
    EXPECT_EQ(timeOf({0.0, 0.125, 0.625, 1.0}), 1.75);
}

TEST(FillTimeSeries, value_exactly_at_the_level_is_full) {
    EXPECT_EQ(timeOf({0.0, 0.5, 1.0}), 1.0);
    EXPECT_TRUE(oneCell({0.5, 0.5}).wasFullAtStart(0));
    EXPECT_FALSE(oneCell({0.5, 0.5}).hasEmptied(0));
}

TEST(FillTimeSeries, value_just_below_the_level_is_not_full) {
    const FillTimeSeries series = oneCell({0.0, std::nextafter(0.5, 0.0)});
    EXPECT_TRUE(std::isnan(series.times().front()));
    EXPECT_FALSE(series.isReached(0));
}

TEST(FillTimeSeries, first_crossing_counts_when_a_cell_empties_and_fills_again) {
    const FillTimeSeries series = oneCell({0.0, 1.0, 0.25, 0.75});
    EXPECT_EQ(series.times().front(), 0.5);
    EXPECT_TRUE(series.hasEmptied(0));
}

TEST(FillTimeSeries, full_at_the_start_has_the_time_of_the_first_step) {
    FillTimeSeries series;
    series.add(2.0, {1.0, 0.9, 0.0});
    series.add(4.0, {1.0, 0.1, 1.0});
    EXPECT_EQ(series.times(), (std::vector<double>{2.0, 2.0, 3.0}));
    EXPECT_TRUE(series.wasFullAtStart(0));
    EXPECT_FALSE(series.hasEmptied(0));
    EXPECT_TRUE(series.wasFullAtStart(1));
    EXPECT_TRUE(series.hasEmptied(1));
    EXPECT_FALSE(series.wasFullAtStart(2));
}

TEST(FillTimeSeries, never_full_is_not_a_number) {
    EXPECT_TRUE(std::isnan(timeOf({0.0, 0.4, 0.3, 0.49})));
}

TEST(FillTimeSeries, another_level) {
    EXPECT_EQ(timeOf({0.0, 1.0}, 0.25), 0.25);
    EXPECT_EQ(timeOf({0.0, 0.5, 1.0}, 0.75), 1.5);
    EXPECT_TRUE(std::isnan(timeOf({0.0, 0.5}, 0.75)));
}

TEST(FillTimeSeries, a_value_that_is_no_number_is_not_full) {
    const FillTimeSeries series = oneCell({nan, 0.0, nan, 0.25});
    EXPECT_FALSE(series.isReached(0));
    EXPECT_TRUE(series.hasNoNumber(0));
    EXPECT_FALSE(oneCell({0.0, std::numeric_limits<double>::infinity()}).isReached(0));
    EXPECT_FALSE(oneCell({0.0, 1.0}).hasNoNumber(0));
}

TEST(FillTimeSeries, without_a_number_before_the_step_itself_counts) {
    const FillTimeSeries series = oneCell({0.0, nan, 1.0});
    EXPECT_EQ(series.times().front(), 2.0);
    EXPECT_FALSE(oneCell({nan, 1.0}).wasFullAtStart(0));
    EXPECT_EQ(timeOf({nan, 1.0}), 1.0);
}

TEST(FillTimeSeries, a_full_cell_without_a_number_has_not_emptied) {
    EXPECT_FALSE(oneCell({0.0, 1.0, nan, 1.0}).hasEmptied(0));
}

TEST(FillTimeSeries, times_have_to_ascend) {
    FillTimeSeries series;
    series.add(0.25, {0.0});
    EXPECT_EQ(errorOf(series, 0.25, {1.0}),
              "the times of the series do not ascend: 0.25 comes after 0.25");
    EXPECT_EQ(errorOf(series, 0.125, {1.0}),
              "the times of the series do not ascend: 0.125 comes after 0.25");
    EXPECT_EQ(errorOf(series, nan, {1.0}), "a time of the series is no finite number");
    EXPECT_EQ(series.steps(), 1u);
    series.add(0.5, {1.0});
    EXPECT_EQ(series.times().front(), 0.375);
}

TEST(FillTimeSeries, number_of_cells_has_to_stay) {
    FillTimeSeries series;
    series.add(0.0, {0.0, 0.0});
    EXPECT_EQ(errorOf(series, 0.5, {0.0}),
              "the number of cells changes from 2 at time 0 to 1 at time 0.5; a fill time needs "
              "the same mesh at all times");
}

}  // namespace
}  // namespace weldline::test
