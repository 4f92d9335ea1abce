#pragma once

#include <string_view>

namespace weldline::test {

// Which call of a program fails. The environment of the process says it:
//   FAULT_CALL    name of the call, or several separated by ":"; "open" stands for all functions
//                 that open a file
//   FAULT_AT      which call of that name, counted from 1; 0: none, the calls are only counted
//   FAULT_ERROR   number of the error, or "short": the call does half of what it was asked
//   FAULT_ALWAYS  set: all calls of that name after this one fail, too
//   FAULT_UNDER   folders, separated by ":"; files elsewhere are left alone
//   FAULT_REPORT  file that receives the name of the file concerned, or the number of calls
//
// Calls are counted from the start of main to its end only, because the start of the runtime
// libraries is not the program's own.

// Whether this call on a file is the chosen one; then errno is set.
bool failsOn(std::string_view call, const char* path);

// The same for a descriptor; standard output counts as one of the program's files.
bool failsOn(std::string_view call, int descriptor);

// The same for memory.
bool failsOnMemory(std::string_view call);

// Whether the chosen call is to do half of its work instead of failing.
bool isShortInstead();

// Starts and ends the counting.
void startFaults();
void endFaults();

}  // namespace weldline::test
