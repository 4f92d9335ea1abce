#include "Interruption.h"

#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <string_view>

#include "ExitCode.h"
#include "Progress.h"
#include "TemporaryFolder.h"
#include "base/AtomicFile.h"
#include "io/ReadGuard.h"

namespace weldline {

namespace {

constexpr std::string_view messageOf(int signal) {
    switch (signal) {
        case SIGINT:
            return "weldline: interrupted by Ctrl-C; temporary files are removed, start again to "
                   "get a result\n";
        case SIGQUIT:
            return "weldline: interrupted by Ctrl-\\; temporary files are removed, start again to "
                   "get a result\n";
        case SIGXCPU:
            return "weldline: ended because the limit of processor time is reached; temporary "
                   "files are removed, raise the limit to get a result\n";
        case SIGHUP:
            return "weldline: ended because the terminal was closed; temporary files are "
                   "removed, start again to get a result\n";
        default:
            return "weldline: ended by another process; temporary files are removed, start again "
                   "to get a result\n";
    }
}

// The functions below make nothing but async-signal-safe calls.

void say(std::string_view text) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

volatile std::sig_atomic_t isSilent = 0;

// The thread that makes the files, and holds signals back where none may come.
pthread_t mainThread;

extern "C" void endBySignal(int signal) {
    // Libraries have threads that a signal of the process may reach instead.
    if (::pthread_equal(::pthread_self(), mainThread) == 0) {
        ::pthread_kill(mainThread, signal);
        return;
    }
    leaveNothing();
    if (isSilent == 0) say(messageOf(signal));
    // The caller sees the signal itself (130 in a shell after Ctrl-C): it stays pending until this
    // handler is left and then has its default action again.
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

void endForInput(const char* line) {
    leaveNothing();
    say("weldline: ");
    say(line);
    say("\n");
    ::_exit(UnusableInput);
}

void install(int signal) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_handler = endBySignal;
    ::sigfillset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

void leaveNothing() noexcept {
    ReadGuard::giveBackErrors();
    removePendingFiles();
    removeTemporaryFolder();
    endProgressLine();
}

void endInSilence(bool silent) {
    isSilent = silent ? 1 : 0;
}

void handleInterruptions() {
    mainThread = ::pthread_self();
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGXCPU}) install(signal);
    for (const int signal : {SIGPIPE, SIGXFSZ}) ::signal(signal, SIG_IGN);
}

void handleReadFaults() {
    // A sanitizer tells more about a fault than one line.
    ReadGuard::endBy(WELDLINE_SANITIZED ? nullptr : endForInput);
}

}  // namespace weldline
