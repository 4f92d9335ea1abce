#pragma once

#include "Arguments.h"

namespace weldline {

// The command `analyze`. Throws UsageError, InputError, RunError and std::bad_alloc; then none of
// its files is left behind.
void analyze(const AnalyzeOptions& options);

}  // namespace weldline
