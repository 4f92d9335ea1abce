#pragma once

#include "Arguments.h"

namespace weldline {

// The command `report`: a result as one page for a browser, which asks nothing of any network.
// Throws UsageError, InputError and RunError.
void writeReport(const ReportOptions& options);

}  // namespace weldline
