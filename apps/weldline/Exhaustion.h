#pragma once

#include <string_view>

namespace weldline {

// From now on the end of memory removes all temporaries and ends the run with one line, which
// names the input, and the exit code of a failed run. On purpose at once and not by an exception:
// VTK does not stand one; its destructors and its objects half made end the process in other ways.
// Only what reads files keeps the exception (ReadGuard.h), because there the file may be the cause.
void handleExhaustion(std::string_view input);

// The same end, for an exception that came nevertheless.
[[noreturn]] void endForMemory();

}  // namespace weldline
