#pragma once

#include <functional>
#include <string>
#include <vector>

namespace weldline::reference {

// What became of a process.
struct Ending {
    bool orderly = false;
    std::string bytes;  // what its work returned; in words why not, if it did not end orderly
};

// Does work 0, 1, ... in processes of their own, side by side, and waits for all of them. Those
// that are not ready in time are ended. Call it from a process with one thread only.
std::vector<Ending> inProcesses(int count, double seconds,
                                const std::function<std::string(int)>& work);

}  // namespace weldline::reference
