#pragma once

#include <string>

#include "ReadResult.h"

namespace weldline {

// The document that the report page shows, as JSON (docs/schema/report-1.json): skin, weld lines,
// histogram of the meeting angles, settings and mesh. Every "<" is written as \u003c, so that no
// text of a user can end the element of the page that holds it.
std::string reportData(const ResultModel& model, const LineOptions& options,
                       const std::string& title);

}  // namespace weldline
