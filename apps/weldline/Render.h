#pragma once

#include "Arguments.h"

namespace weldline {

// The command `render`: a result as a picture. Throws UsageError, InputError and RunError.
void renderResult(const RenderOptions& options);

}  // namespace weldline
