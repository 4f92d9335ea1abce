#pragma once

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

// The option of analyze that explains every node.
void addReasons(CLI::App& command, bool& reasons);

void addExplain(CLI::App& app, ExplainOptions& options);

}  // namespace weldline
