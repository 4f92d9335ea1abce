#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace weldline {

// How a fill time comes from a phase fraction over time; see FillTimeSeries.
struct SeriesOptions {
    enum class Use {
        Never,
        WhereNoFillTime,  // the data set holds no fill time, but one phase fraction over times
        Always
    };
    Use use = Use::Never;
    std::string field;  // cell array with the phase fraction; empty: the only one named alpha...
    double level = 0.5;
    std::function<void(const std::string&)> progress;  // told what is being done; may be empty
};

// What came out, of the whole data set. Cells are volume cells.
struct SeriesFill {
    std::string field;
    double level = 0.5;
    std::int64_t steps = 0;
    std::int64_t stepsWithout = 0;  // times at which the array is missing, left out
    double firstTime = 0.0;
    double lastTime = 0.0;
    double largestStep = 0.0;
    double earliest = 0.0;  // smallest and largest fill time, 0 where no cell is filled
    double latest = 0.0;

    std::int64_t cells = 0;
    std::int64_t filled = 0;
    std::int64_t never = 0;
    std::int64_t atStart = 0;   // of filled: full at the first time
    std::int64_t emptied = 0;   // of filled: below the level at a later time
    std::int64_t noNumber = 0;  // NaN or infinite at one time at least
};

}  // namespace weldline
