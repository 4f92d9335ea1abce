#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "io/DataSet.h"

namespace weldline::test {

// To the last bit; NaN equals NaN.
inline void expectTimes(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t c = 0; c < expected.size(); ++c) {
        if (std::isnan(expected[c])) {
            EXPECT_TRUE(std::isnan(actual[c])) << c;
        } else {
            EXPECT_EQ(actual[c], expected[c]) << c;
        }
    }
}

// The fill time always comes from the phase fraction.
inline ReadOptions fromSeries(const std::string& field = "") {
    ReadOptions options;
    options.series.use = SeriesOptions::Use::Always;
    options.series.field = field;
    return options;
}

}  // namespace weldline::test
