#include "Console.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "base/Errors.h"

namespace weldline {

void openMissingStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0)
            // On purpose: the direction that nobody uses, so that a write to it fails.
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

void writeStandardOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0)
            throw RunError("standard output: " + std::generic_category().message(errno) +
                           "; the output is not complete, send it to a place that takes it");
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void writeMessage(std::string_view message) {
    std::string line = "weldline: " + std::string(message);
    std::replace(line.begin(), line.end(), '\n', ' ');
    line += '\n';
    // On purpose unchecked: there is no other place where a failure could be told.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
}

bool standardOutputTakesStyle() {
    const char* noColor = std::getenv("NO_COLOR");
    const char* kind = std::getenv("TERM");
    return ::isatty(STDOUT_FILENO) == 1 && (noColor == nullptr || *noColor == '\0') &&
           kind != nullptr && std::string_view(kind) != "dumb";
}

StandardOutputAside::StandardOutputAside() {
    std::fflush(stdout);
    m_kept = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

StandardOutputAside::~StandardOutputAside() {
    std::fflush(stdout);
    ::dup2(m_kept, STDOUT_FILENO);
    ::close(m_kept);
}

}  // namespace weldline
