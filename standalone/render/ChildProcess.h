#pragma once

#include <functional>
#include <string>

namespace weldline {

// Runs some work in a child process, which sees all that this process has, and returns its bytes.
// Whatever becomes of the child, this process stays as it is; what the child prints is not seen.
// Throws RunError, one line: that of an exception of the work, or how the child ended.
std::string bytesFromChild(const std::function<std::string()>& work);

}  // namespace weldline
