#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Arguments.h"
#include "FindLines.h"
#include "bind/FillTime.h"
#include "io/DataSet.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"
#include "results/FlowDirection.h"

namespace weldline {

// What this rank has of the filling result, with the arrays that the options name.
struct RunInput {
    DataPart data;
    bool hasBiField = false;
    std::vector<double> biField;  // per cell, as stored
    std::vector<int> cellState;   // per cell; empty: none
    std::vector<CarriedField> carried;

    const std::vector<double>& fillTime() const { return data.part.cellFields.front(); }
};

// Where the data set holds no fill time, but a phase fraction over times, the fill time comes from
// that. `tell` is told what is being read. Collective. Throws InputError on all ranks.
RunInput readRunInput(Ranks& ranks, const AnalyzeOptions& options,
                      const std::function<void(const std::string&)>& tell);

// Fill times of a run.
struct RunFillTime {
    std::vector<float> first;   // of the first injection; exactly 0 where it did not arrive
    std::vector<float> second;  // of the second; empty: none
    std::vector<float> merged;  // the second where the first did not arrive
    FillTimeCounts counts;      // of the merged times, of the whole part
};

// Collective. Throws InputError on all ranks when no cell is reached.
RunFillTime prepareRunFillTime(const RankPart& part, const AnalyzeOptions& options,
                               const RunInput& input, const FvMesh& mesh,
                               const BoundaryGroups& groups);

// The cells of other ranks across the interface faces. Collective.
CellsAcross cellsAcross(const RankPart& part, const std::vector<float>& fillTime);

}  // namespace weldline
