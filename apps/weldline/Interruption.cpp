#include "Interruption.h"

#include <unistd.h>

#include <csignal>
#include <string_view>

#include "Progress.h"
#include "TemporaryFolder.h"
#include "base/AtomicFile.h"

namespace weldline {

namespace {

constexpr std::string_view messageOf(int signal) {
    switch (signal) {
        case SIGINT:
            return "weldline: interrupted by Ctrl-C; temporary files are removed, start again to "
                   "get a result\n";
        case SIGHUP:
            return "weldline: ended because the terminal was closed; temporary files are "
                   "removed, start again to get a result\n";
        default:
            return "weldline: ended by another process; temporary files are removed, start again "
                   "to get a result\n";
    }
}

// Nothing but async-signal-safe calls.
extern "C" void endBySignal(int signal) {
    removePendingFiles();
    removeTemporaryFolder();
    endProgressLine();
    const std::string_view message = messageOf(signal);
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, message.data(), message.size());
    // The caller sees the signal itself (130 in a shell after Ctrl-C): it stays pending until this
    // handler is left and then has its default action again.
    ::signal(signal, SIG_DFL);
    ::raise(signal);
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

void handleInterruptions() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) install(signal);
    for (const int signal : {SIGPIPE, SIGXFSZ}) ::signal(signal, SIG_IGN);
}

}  // namespace weldline
