#include "Child.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace weldline::test {

namespace {

constexpr auto patience = std::chrono::minutes(2);

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

Pipe makeTerminal() {
    Pipe pair;
    if (::openpty(&pair.readEnd, &pair.writeEnd, nullptr, nullptr, nullptr) != 0)
        throw std::runtime_error("no terminal");
    ::fcntl(pair.readEnd, F_SETFD, FD_CLOEXEC);
    ::fcntl(pair.writeEnd, F_SETFD, FD_CLOEXEC);
    return pair;
}

void limit(decltype(RLIMIT_FSIZE) resource, long bytes) {
    if (bytes < 0) return;
    const rlimit both{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
    ::setrlimit(resource, &both);
}

// In the child: never returns.
[[noreturn]] void become(const std::string& program, const std::vector<std::string>& arguments,
                         const Setting& setting, const Pipe& out, const Pipe& err) {
    int target = out.writeEnd;
    if (!setting.standardOutput.empty())
        target = ::open(setting.standardOutput.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    ::dup2(target, STDOUT_FILENO);
    ::dup2(setting.terminal ? out.writeEnd : err.writeEnd, STDERR_FILENO);
    if (setting.closeStandardOutput) ::close(STDOUT_FILENO);
    for (const auto& [name, value] : setting.environment) ::setenv(name.c_str(), value.c_str(), 1);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) ::signal(number, SIG_DFL);
    limit(RLIMIT_FSIZE, setting.fileSizeLimit);
    limit(RLIMIT_AS, setting.memoryLimit);
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    ::execv(program.c_str(), words.data());
    ::_exit(127);
}

// Reads what is there; false at the end of the stream. A terminal ends with an error.
bool readSome(int descriptor, std::string& text) {
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count <= 0) return false;
    text.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

// Reads both streams to their ends; false when that takes too long.
bool readStreams(int out, int err, Outcome& outcome) {
    const auto end = std::chrono::steady_clock::now() + patience;
    std::array<pollfd, 2> streams{{{out, POLLIN, 0}, {err, POLLIN, 0}}};
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
        if (std::chrono::steady_clock::now() > end) return false;
        ::poll(streams.data(), streams.size(), 100);
        if (streams[0].revents != 0 && !readSome(out, outcome.out)) streams[0].fd = -1;
        if (streams[1].revents != 0 && !readSome(err, outcome.err)) streams[1].fd = -1;
    }
    return true;
}

}  // namespace

Outcome runProgram(const std::string& program, const std::vector<std::string>& arguments,
                   const Setting& setting) {
    const Pipe out = setting.terminal ? makeTerminal() : makePipe();
    const Pipe err = makePipe();
    if (setting.brokenStandardOutput) ::close(out.readEnd);
    const pid_t child = ::fork();
    if (child == 0) become(program, arguments, setting, out, err);
    ::close(out.writeEnd);
    ::close(err.writeEnd);
    if (setting.whileRunning) setting.whileRunning(child);

    Outcome outcome;
    if (!readStreams(setting.brokenStandardOutput ? -1 : out.readEnd, err.readEnd, outcome))
        ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status)) outcome.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) outcome.signal = WTERMSIG(status);
    if (!setting.brokenStandardOutput) ::close(out.readEnd);
    ::close(err.readEnd);
    return outcome;
}

}  // namespace weldline::test
