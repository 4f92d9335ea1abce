#pragma once

#include <string>
#include <vector>

#include "results/ExplainNode.h"
#include "settings/Settings.h"

namespace weldline {

struct Explanation {
    std::string file;
    int nodes = 0;  // of the result
    NodeExplanation node;
    double storedAngle = 180.0;    // in the result; degrees
    int line = 0;                  // in the result; 0: none
    long long differingNodes = 0;  // whose angle in the result is not that of the calculation
    Settings settings;
    std::vector<std::string> remarks;
};

// A text for people, see Tables.h.
std::string explanationTable(const Explanation& explanation, bool style);

std::string explanationJson(const Explanation& explanation);  // docs/schema/explanation-1.json

}  // namespace weldline
