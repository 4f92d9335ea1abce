#include "Exhaustion.h"

#include <algorithm>
#include <array>
#include <climits>
#include <exception>
#include <new>

#include "Console.h"
#include "ExitCode.h"
#include "Interruption.h"
#include "comm/LaunchedRanks.h"

namespace weldline {

namespace {

// Outside of the heap, of which nothing is left when the name is needed.
std::array<char, PATH_MAX> nameOfInput{};

std::string_view inputPrefix() {
    return nameOfInput.front() == '\0' ? "" : ": ";
}

// An exception that could not reach main: VTK throws one in a place that lets none pass.
[[noreturn]] void endForException() {
    leaveNothing();
    writeMessage({nameOfInput.data(), inputPrefix(),
                  "the run had to be given up inside a library, most likely out of memory; use a "
                  "machine with more memory or a smaller mesh"});
    endAllRanks(FailedWhileRunning);
}

}  // namespace

void endForMemory() {
    leaveNothing();
    writeMessage({nameOfInput.data(), inputPrefix(),
                  "out of memory; use a machine with more memory or a smaller mesh"});
    endAllRanks(FailedWhileRunning);
}

void handleExhaustion(std::string_view input) {
    const std::size_t length = std::min(input.size(), nameOfInput.size() - 1);
    std::copy_n(input.begin(), length, nameOfInput.begin());
    nameOfInput[length] = '\0';
    std::set_new_handler(endForMemory);
    std::set_terminate(endForException);
}

}  // namespace weldline
