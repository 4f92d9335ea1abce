#pragma once

#include <string>
#include <vector>

#include "Arguments.h"
#include "bind/FillTime.h"
#include "io/DataSet.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline {

// The filling result with the arrays that the options name. Throws InputError.
struct RunInput {
    DataSet data;
    std::vector<double> biField;  // per cell, as stored; empty: none
    std::vector<int> cellState;   // per cell; empty: none
};
RunInput readRunInput(const AnalyzeOptions& options);

// Fill times of a run.
struct RunFillTime {
    std::vector<float> first;   // of the first injection; exactly 0 where it did not arrive
    std::vector<float> second;  // of the second; empty: none
    std::vector<float> merged;  // the second where the first did not arrive
    FillTimeCounts counts;      // of the merged times
};

// Throws InputError when no cell is reached.
RunFillTime prepareRunFillTime(const RunInput& input, const FvMesh& mesh,
                               const BoundaryGroups& groups, ZeroFillTime zero);

}  // namespace weldline
