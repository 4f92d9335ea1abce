#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Arguments.h"
#include "Progress.h"
#include "io/DataSet.h"
#include "mesh/BoundaryGroups.h"
#include "results/Openings.h"

namespace weldline {

// What could be inlets and outlets of a data set, and the fill time that tells it.
struct Proposal {
    std::vector<MadePatch> patches;
    std::string field;                 // the fill time, or the phase fraction that it is made from
    std::optional<SeriesFill> series;  // where it is made from one
    std::string obstacle;              // why there are no patches; empty: nothing to tell
};

// `groups` are the patches with the group that their name puts them in. Nothing where they tell
// inlets and outlets, or where the data set holds neither fill time nor phase fraction over time.
// Throws InputError where a fill time cannot be read.
Proposal proposeGroups(const InfoOptions& options, const DataSetInfo& info,
                       const std::vector<BoundaryGroups::PatchSummary>& groups, Progress& progress);

}  // namespace weldline
