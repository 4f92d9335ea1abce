#pragma once

#include <string>
#include <vector>

#include "Arguments.h"
#include "FindLines.h"
#include "results/CompareLines.h"

namespace weldline {

// What is kept of a result that is compared.
struct ResultToCompare {
    std::string file;
    FoundLines found;
    double cellSize = 0.0;
    Vec3 low, high;  // box of the part
};

struct Comparison {
    ResultToCompare a, b;
    LineOptions lineOptions;
    double tolerance = 0.0;
    bool toleranceGiven = false;
    std::vector<ComparedLine> lines;  // points into `a` and `b`
};

// A text for people, see Tables.h.
std::string comparisonTable(const Comparison& comparison, bool style);

std::string comparisonJson(const Comparison& comparison);  // docs/schema/comparison-1.json

}  // namespace weldline
