#pragma once

#include <string>
#include <vector>

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

// Options about weld lines that several commands share.
void addLineOptions(CLI::App& command, LineOptions& options);
void addCarry(CLI::App& command, std::vector<std::string>& names);

// Throw UsageError where a value makes no sense.
void checkLineOptions(const LineOptions& options);
void checkRule(const std::string& rule);

}  // namespace weldline
