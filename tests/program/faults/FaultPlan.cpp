#include "FaultPlan.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

// Everything here goes to the kernel past the C library, whose functions are replaced, and takes no
// memory.

namespace weldline::test {

namespace {

std::atomic<bool> counting{false};
std::atomic<long> calls{0};
std::string_view chosenCalls;
std::string_view folders;
const char* reportFile = nullptr;
long chosenNumber = 0;
int chosenError = EIO;
bool isShort = false;
bool isLasting = false;

const char* setting(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

void report(std::string_view text) {
    if (reportFile == nullptr) return;
    const long file = ::syscall(SYS_openat, AT_FDCWD, reportFile, O_WRONLY | O_CREAT, 0600);
    ::syscall(SYS_write, file, text.data(), text.size());
    ::syscall(SYS_close, file);
}

// Whether the condition holds for one of the items of a list.
template <class Condition>
bool hasItem(std::string_view list, Condition condition) {
    while (!list.empty()) {
        const std::string_view item = list.substr(0, list.find(':'));
        if (condition(item)) return true;
        list.remove_prefix(std::min(list.size(), item.size() + 1));
    }
    return false;
}

bool isInFolders(std::string_view path) {
    return hasItem(folders, [&](std::string_view folder) { return path.starts_with(folder); });
}

bool isWatched(std::string_view call) {
    return counting && hasItem(chosenCalls, [&](std::string_view item) { return call == item; });
}

bool count(std::string_view concerned) {
    const long number = ++calls;
    const bool fails =
        number == chosenNumber || (isLasting && chosenNumber > 0 && number > chosenNumber);
    if (!fails) return false;
    if (number == chosenNumber) report(concerned);
    errno = chosenError;
    return true;
}

}  // namespace

bool failsOn(std::string_view call, const char* path) {
    return isWatched(call) && path != nullptr && isInFolders(path) && count(path);
}

bool failsOn(std::string_view call, int descriptor) {
    if (!isWatched(call)) return false;
    if (descriptor == STDOUT_FILENO) return count("standard output");
    std::array<char, 64> link{};
    std::array<char, PATH_MAX> path{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    return ::syscall(SYS_readlink, link.data(), path.data(), path.size() - 1) > 0 &&
           isInFolders(path.data()) && count(path.data());
}

bool failsOnMemory(std::string_view call) {
    return isWatched(call) && count("memory");
}

bool isShortInstead() {
    return isShort;
}

void startFaults() {
    chosenCalls = setting("FAULT_CALL");
    folders = setting("FAULT_UNDER");
    reportFile = std::getenv("FAULT_REPORT");
    chosenNumber = std::atol(setting("FAULT_AT"));
    isShort = std::string_view(setting("FAULT_ERROR")) == "short";
    if (!isShort) chosenError = std::atoi(setting("FAULT_ERROR"));
    isLasting = std::getenv("FAULT_ALWAYS") != nullptr;
    counting = !chosenCalls.empty();
}

void endFaults() {
    counting = false;
    if (chosenNumber > 0) return;
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%ld", calls.load());
    report({text.data(), static_cast<std::size_t>(length)});
}

}  // namespace weldline::test
