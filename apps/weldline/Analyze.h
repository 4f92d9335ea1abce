#pragma once

#include "Arguments.h"
#include "ExitCode.h"
#include "comm/Ranks.h"

namespace weldline {

// The command `analyze`. Throws UsageError, InputError, RunError and std::bad_alloc; then none of
// its files is left behind. Answers LinesRefused where a weld line fulfils the rule of the options;
// the files are there then. Collective; all ranks throw or answer the same.
ExitCode analyze(Ranks& ranks, const AnalyzeOptions& options);

}  // namespace weldline
