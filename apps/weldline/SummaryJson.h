#pragma once

#include <string>

#include "Proposal.h"
#include "Summary.h"
#include "io/DataSet.h"

namespace weldline {

// What a result tells of the run that it comes from: program, field, mesh, and the settings that
// decide the angles. Nothing in it depends on where files are, or on how the settings were given.
std::string runJson(const Summary& summary);

// JSON texts for other programs. Each names its layout in "schema"; a change that could break a
// reader gets another number. All numbers are finite; what is not known is null.

std::string summaryJson(const Summary& summary);  // "weldline-summary/1"

// `groups` are the patches with the group that their name puts them in.
std::string infoJson(const DataSetInfo& info,
                     const std::vector<BoundaryGroups::PatchSummary>& groups,
                     const Proposal& proposal);  // "weldline-info/1"

}  // namespace weldline
