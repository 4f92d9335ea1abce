#pragma once

#include "Arguments.h"

namespace weldline {

// The command `explain`. Throws UsageError, InputError and RunError.
void explainResult(const ExplainOptions& options);

}  // namespace weldline
