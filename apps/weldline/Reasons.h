#pragma once

#include <vector>

#include "Arguments.h"
#include "RunControl.h"
#include "bind/Analysis.h"
#include "mesh/FvMesh.h"

namespace weldline {

// Throws UsageError where the option --reasons cannot be fulfilled.
void checkReasons(const AnalyzeOptions& options, const Settings& settings, int ranks);

// Per node why it has no smaller angle; empty where nobody asks. `fillTime` is that of both
// injections, `run` was recorded.
std::vector<int> reasonsOf(const AnalyzeOptions& options, const RunControl& control,
                           const FvMesh& mesh, const std::vector<float>& fillTime,
                           const std::vector<int>& cellState, const RecordedRun& run);

}  // namespace weldline
