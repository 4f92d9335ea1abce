#pragma once

#include <string>

namespace weldline {

// The shortest text that reads back as the same number: for messages.
std::string shortNumber(double value);

}  // namespace weldline
