#pragma once

#include "Arguments.h"

namespace weldline {

// The command `compare`. Throws UsageError, InputError and RunError.
void compareResults(const CompareOptions& options);

}  // namespace weldline
