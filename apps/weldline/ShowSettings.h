#pragma once

#include "Arguments.h"

namespace weldline {

// The command `settings`. Throws InputError and RunError.
void showSettings(const SettingsOptions& options);

}  // namespace weldline
