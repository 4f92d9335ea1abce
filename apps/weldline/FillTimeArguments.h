#pragma once

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

void addFillTime(CLI::App& app, FillTimeOptions& options);

// Throws UsageError where a value makes no sense.
void checkFillTime(const FillTimeOptions& options);

}  // namespace weldline
