#pragma once

#include "Arguments.h"
#include "comm/Ranks.h"

namespace weldline {

// The command `analyze`. Throws UsageError, InputError, RunError and std::bad_alloc; then none of
// its files is left behind. Collective; all ranks throw the same.
void analyze(Ranks& ranks, const AnalyzeOptions& options);

}  // namespace weldline
