#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace weldline::test {

// How a program ended and what it said.
struct Outcome {
    int exitCode = -1;  // -1: ended by a signal
    int signal = 0;     // 0: left by itself
    std::string out;
    std::string err;
};

// Circumstances of a child process.
struct Setting {
    std::map<std::string, std::string> environment;  // beside the caller's own
    std::string standardOutput;                      // file instead of a pipe; empty: pipe
    bool closeStandardOutput = false;
    bool brokenStandardOutput = false;  // a pipe that nobody reads
    bool terminal = false;              // both streams on one terminal; all text arrives in `out`
    long fileSizeLimit = -1;            // bytes; -1: none
    long memoryLimit = -1;              // bytes of address space; -1: none
    std::function<void(int)> whileRunning;  // called with the child's process number
};

// Runs a program to its end. Gives up (exit code -1) after two minutes.
Outcome runProgram(const std::string& program, const std::vector<std::string>& arguments,
                   const Setting& setting = {});

}  // namespace weldline::test
