#pragma once

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

void addCheck(CLI::App& app, CheckOptions& options);

}  // namespace weldline
