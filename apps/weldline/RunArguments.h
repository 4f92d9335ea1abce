#pragma once

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

// Settings of the calculation, and what else a run can be told.
void addSettings(CLI::App& command, AnalyzeOptions& options);
void addRunOptions(CLI::App& command, AnalyzeOptions& options);

}  // namespace weldline
