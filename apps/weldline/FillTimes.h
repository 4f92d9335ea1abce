#pragma once

#include "Arguments.h"

namespace weldline {

// The command `filltime`. Throws UsageError, InputError and RunError.
void writeFillTimes(const FillTimeOptions& options);

}  // namespace weldline
