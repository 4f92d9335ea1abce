#pragma once

#include "Arguments.h"

namespace weldline {

// The command `check`. Throws UsageError, InputError and RunError.
void checkInput(const CheckOptions& options);

}  // namespace weldline
