#pragma once

#include "Arguments.h"

namespace weldline {

// The command `info`. Throws UsageError, InputError and RunError.
void showInfo(const InfoOptions& options);

}  // namespace weldline
