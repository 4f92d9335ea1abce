#pragma once

#include <string>
#include <vector>

#include "Proposal.h"
#include "Summary.h"
#include "io/DataSet.h"
#include "settings/ControlSection.h"

namespace weldline {

// Texts for people, at most 80 columns wide where names allow it. `style` emphasises headings by
// terminal control sequences.

std::string summaryTable(const Summary& summary, bool style);

// `groups` are the patches with the group that their name puts them in.
std::string infoTable(const DataSetInfo& info,
                      const std::vector<BoundaryGroups::PatchSummary>& groups,
                      const Proposal& proposal, bool style);

// What each line of a control file does and the settings in force after it.
std::string controlTable(const std::string& file, const ControlReading& reading, bool style);

}  // namespace weldline
