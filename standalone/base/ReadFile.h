#pragma once

#include <string>

namespace weldline {

// Reads all bytes of a file. False when that is not possible: errno tells why, and `bytes` holds
// nothing of use.
[[nodiscard]] bool readWholeFile(const std::string& file, std::string& bytes);

}  // namespace weldline
