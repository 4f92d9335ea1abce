#include "ReadGuard.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>

namespace weldline {
namespace {

// The last one is that of the timer.
constexpr std::array guardedSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGPROF};

// Reading takes milliseconds a megabyte, where it is packed or text some hundred at most. The part
// that does not depend on the size is for slow machines and for runs under a memory checker.
constexpr double secondsPerFile = 10.0;
constexpr double bytesPerSecond = 1e5;

// No compression in use shortens more than a thousandfold.
constexpr double memoryPerFile = 1024.0 * 1024.0 * 1024.0;
constexpr double memoryPerByte = 1100.0;

// On purpose: all that a handler needs lies outside the heap, which a fault may have damaged, and
// is complete before a handler is installed.
struct Guarding {
    ReadGuard::End end = nullptr;
    std::array<char, PATH_MAX> file{};
    std::array<char, PATH_MAX + 256> line{};
    std::array<std::byte, 65536> stack{};  // of the handlers: the other one may have run out
    stack_t stackBefore{};
    std::array<struct sigaction, guardedSignals.size()> before{};
    std::terminate_handler terminateBefore = nullptr;
    timer_t timer{};
    bool hasTimer = false;
    rlimit memoryBefore{};
    std::atomic<int> errors{-1};  // standard error as it was; -1: it is where it was
    std::atomic<bool> isReading{false};
};
Guarding guarding;

extern "C" void endAfterFault(int signal) {
    const char* reason = signal == SIGPROF ? "reading it does not come to an end"
                                           : "what it says leads the reader astray";
    char* to = guarding.line.data();
    for (const char* text :
         {"'", static_cast<const char*>(guarding.file.data()),
          "': the file is damaged or incomplete (", reason, "); write it again from its source"}) {
        const std::size_t length = std::strlen(text);
        std::memcpy(to, text, length);
        to += length;
    }
    *to = '\0';
    // Who leaves by a jump may call exit() later.
    guarding.isReading = false;
    ReadGuard::giveBackErrors();
    guarding.end(guarding.line.data());
}

// A reader may take the process with it by exit().
void endAfterExit() {
    if (guarding.isReading) {
        endAfterFault(SIGABRT);
    }
}

void keepName(const std::string& file) {
    const std::size_t length = std::min(file.size(), guarding.file.size() - 1);
    // A name with a line break shall not break the one line.
    std::replace_copy(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length),
                      guarding.file.begin(), '\n', ' ');
    guarding.file[length] = '\0';
}

void installHandlers() {
    stack_t stack{};
    stack.ss_sp = guarding.stack.data();
    stack.ss_size = guarding.stack.size();
    ::sigaltstack(&stack, &guarding.stackBefore);
    struct sigaction action {};
    action.sa_handler = endAfterFault;
    // A fault while the process is being ended has its default action.
    action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND);
    ::sigfillset(&action.sa_mask);
    for (std::size_t i = 0; i < guardedSignals.size(); ++i) {
        ::sigaction(guardedSignals[i], &action, &guarding.before[i]);
    }
    // An exception that cannot leave a reader ends the process without the words of the default.
    guarding.terminateBefore = std::set_terminate([] { std::abort(); });
}

void removeHandlers() {
    std::set_terminate(guarding.terminateBefore);
    for (std::size_t i = 0; i < guardedSignals.size(); ++i) {
        ::sigaction(guardedSignals[i], &guarding.before[i], nullptr);
    }
    ::sigaltstack(&guarding.stackBefore, nullptr);
}

// A guard that was left by a jump has its timer still.
void stopTimer() {
    if (guarding.hasTimer) {
        ::timer_delete(guarding.timer);
    }
    guarding.hasTimer = false;
}

// Counts the CPU time of the process: a machine that is busy with other things is no fault.
void startTimer(double bytes) {
    stopTimer();
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGPROF;
    guarding.hasTimer = ::timer_create(CLOCK_PROCESS_CPUTIME_ID, &event, &guarding.timer) == 0;
    itimerspec budget{};
    budget.it_value.tv_sec = static_cast<time_t>(secondsPerFile + bytes / bytesPerSecond);
    if (guarding.hasTimer) {
        ::timer_settime(guarding.timer, 0, &budget, nullptr);
    }
}

// Of the process as it is, in bytes of address space; 0 where the system does not tell.
double memoryInUse() {
    double pages = 0.0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

// An absurd count in a file then becomes an allocation that fails instead of a machine that comes
// to a halt.
void limitMemory(double bytes) {
    ::getrlimit(RLIMIT_AS, &guarding.memoryBefore);
    const double inUse = memoryInUse();
    const double limit = inUse + memoryPerFile + memoryPerByte * bytes;
    if (inUse > 0.0 && limit < static_cast<double>(guarding.memoryBefore.rlim_cur)) {
        const rlimit lower{static_cast<rlim_t>(limit), guarding.memoryBefore.rlim_max};
        ::setrlimit(RLIMIT_AS, &lower);
    }
}

void silenceErrors() {
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) {
        ::dup2(nowhere, STDERR_FILENO);
        ::close(nowhere);
    }
}

// The C library and others have words of their own about a damaged heap.
void setErrorsAside() {
    guarding.errors = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (guarding.errors >= 0) {
        silenceErrors();
    }
}

double sizeOf(const std::string& file) {
    std::error_code none;
    const std::uintmax_t size = std::filesystem::file_size(file, none);
    return none ? 0.0 : static_cast<double>(size);
}

}  // namespace

void ReadGuard::endBy(End end) {
    guarding.end = end;
    if (end != nullptr) {
        static const int registered = std::atexit(endAfterExit);
        static_cast<void>(registered);
    }
}

void ReadGuard::silenceExit() {
    if (guarding.end != nullptr) {
        static const int registered = std::atexit(silenceErrors);
        static_cast<void>(registered);
    }
}

void ReadGuard::giveBackErrors() noexcept {
    if (guarding.errors >= 0) {
        ::dup2(guarding.errors, STDERR_FILENO);
    }
}

ReadGuard::ReadGuard(const std::string& file, double bytes)
    : newHandlerBefore_(std::set_new_handler(nullptr)) {
    if (guarding.end != nullptr) {
        keepName(file);
        setErrorsAside();
        installHandlers();
        startTimer(bytes);
        limitMemory(bytes);
        guarding.isReading = true;
    }
}

ReadGuard::ReadGuard(const std::string& file) : ReadGuard(file, sizeOf(file)) {}

ReadGuard::~ReadGuard() {
    std::set_new_handler(newHandlerBefore_);
    if (guarding.end != nullptr) {
        guarding.isReading = false;
        ::setrlimit(RLIMIT_AS, &guarding.memoryBefore);
        stopTimer();
        removeHandlers();
        giveBackErrors();
        const int kept = guarding.errors.exchange(-1);
        if (kept >= 0) {
            ::close(kept);
        }
    }
}

}  // namespace weldline
