#pragma once

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

void addRender(CLI::App& app, RenderOptions& options);

// Throws UsageError where a value makes no sense.
void checkRender(const RenderOptions& options);

}  // namespace weldline
