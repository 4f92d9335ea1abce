#pragma once

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

void addCompare(CLI::App& app, CompareOptions& options);

// Throws UsageError where a value makes no sense.
void checkCompare(const CompareOptions& options);

}  // namespace weldline
