#include "Console.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <system_error>

#include "base/Errors.h"

namespace weldline {

namespace {

bool mayStyle = true;

[[noreturn]] void failAside(int systemError) {
    throw RunError("standard output: what the library prints cannot be kept apart from it (" +
                   std::generic_category().message(systemError) +
                   "); allow more open files or more memory");
}

// A file that is being opened under the same number, and a signal, pass by.
void putUnder(int descriptor, int number) {
    while (::dup2(descriptor, number) < 0 && (errno == EINTR || errno == EBUSY)) continue;
}

}  // namespace

void openMissingStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0) continue;
        // On purpose: the direction that nobody uses, so that a write to it fails.
        if (::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0)
            throw RunError("a standard stream is closed and /dev/null cannot take its place (" +
                           std::generic_category().message(errno) +
                           "); start the program with its three streams open");
    }
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

// On purpose one write for the line: the lines of several programs on one stream stay whole.
void writeMessage(std::initializer_list<std::string_view> parts) {
    std::array<char, 4 * PATH_MAX> line{};
    std::size_t size = 0;
    const auto add = [&](std::string_view text) {
        const std::size_t fits = std::min(text.size(), line.size() - 1 - size);
        std::replace_copy(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(fits),
                          line.data() + size, '\n', ' ');
        size += fits;
    };
    add("weldline: ");
    for (const std::string_view part : parts) add(part);
    line[size] = '\n';
    // On purpose unchecked: there is no other place where a failure could be told.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), size + 1);
}

void doWithoutStyle() {
    mayStyle = false;
}

bool standardOutputTakesStyle() {
    const char* noColor = std::getenv("NO_COLOR");
    const char* kind = std::getenv("TERM");
    return mayStyle && ::isatty(STDOUT_FILENO) == 1 && (noColor == nullptr || *noColor == '\0') &&
           kind != nullptr && std::string_view(kind) != "dumb";
}

StandardOutputAside::StandardOutputAside(bool isTold)
    : m_isTold(isTold), m_exceptions(std::uncaught_exceptions()) {
    std::fflush(stdout);
    m_output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    m_aside = m_output < 0 ? -1 : ::memfd_create("standard output", MFD_CLOEXEC);
    if (m_aside < 0 || ::dup2(m_aside, STDOUT_FILENO) < 0) {
        const int error = errno;
        close();
        failAside(error);
    }
}

StandardOutputAside::~StandardOutputAside() {
    std::fflush(stdout);
    putUnder(m_output, STDOUT_FILENO);
    const bool isSilent = !m_isTold || std::uncaught_exceptions() > m_exceptions;
    std::array<char, 4096> part{};
    ::lseek(m_aside, 0, SEEK_SET);
    for (ssize_t count = 0; !isSilent && (count = ::read(m_aside, part.data(), part.size())) > 0;)
        [[maybe_unused]] const auto written =
            ::write(STDERR_FILENO, part.data(), static_cast<std::size_t>(count));
    close();
}

void StandardOutputAside::close() noexcept {
    for (const int descriptor : {m_output, m_aside})
        if (descriptor >= 0) ::close(descriptor);
}

std::string StandardOutputAside::text() const {
    std::fflush(stdout);
    const off_t size = ::lseek(m_aside, 0, SEEK_END);
    std::string all(static_cast<std::size_t>(std::max<off_t>(size, 0)), '\0');
    if (size < 0 || ::pread(m_aside, all.data(), all.size(), 0) != size) failAside(errno);
    return all;
}

}  // namespace weldline
