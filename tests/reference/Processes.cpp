#include "Processes.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace weldline::reference {

namespace {

struct Process {
    pid_t id = -1;
    int pipe = -1;
    bool open = true;
};

bool writeAll(int file, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(file, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        done += static_cast<std::size_t>(written);
    }
    return true;
}

// On purpose: the process ends without the destructors of what it has inherited.
[[noreturn]] void beChild(int file, int number, const std::function<std::string(int)>& work) {
    int status = 1;
    try {
        status = writeAll(file, work(number)) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    std::fflush(nullptr);
    _exit(status);
}

Process start(int number, const std::function<std::string(int)>& work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe for a process");
    std::fflush(nullptr);
    Process process;
    process.id = fork();
    if (process.id < 0) throw std::runtime_error("no process could be started");
    if (process.id == 0) {
        close(ends[0]);
        beChild(ends[1], number, work);
    }
    close(ends[1]);
    process.pipe = ends[0];
    return process;
}

void readSome(Process& process, std::string& bytes) {
    char buffer[65536];
    const ssize_t count = read(process.pipe, buffer, sizeof buffer);
    if (count > 0) {
        bytes.append(buffer, static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        process.open = false;
    }
}

// Reads from all of them until they have closed their pipes or time is up.
bool readAll(std::vector<Process>& processes, std::vector<Ending>& endings, double seconds) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (true) {
        std::vector<pollfd> watched;
        std::vector<std::size_t> numbers;
        for (std::size_t i = 0; i < processes.size(); ++i) {
            if (!processes[i].open) continue;
            watched.push_back({processes[i].pipe, POLLIN, 0});
            numbers.push_back(i);
        }
        if (watched.empty()) return true;
        const std::chrono::duration<double, std::milli> left = end - Clock::now();
        if (left.count() <= 0.0) return false;
        poll(watched.data(), watched.size(), static_cast<int>(left.count()) + 1);
        for (std::size_t i = 0; i < watched.size(); ++i) {
            if (watched[i].revents == 0) continue;
            readSome(processes[numbers[i]], endings[numbers[i]].bytes);
        }
    }
}

void finish(const Process& process, Ending& ending, bool inTime) {
    if (process.open) kill(process.id, SIGKILL);
    close(process.pipe);
    int status = 0;
    while (waitpid(process.id, &status, 0) < 0 && errno == EINTR) {
    }
    ending.orderly = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (ending.orderly) return;
    ending.bytes = "a process ended with status " + std::to_string(WEXITSTATUS(status));
    if (WIFSIGNALED(status)) {
        ending.bytes = "a process died of signal " + std::to_string(WTERMSIG(status));
    }
    if (process.open && !inTime) ending.bytes = "a process was not ready in time";
}

}  // namespace

std::vector<Ending> inProcesses(int count, double seconds,
                                const std::function<std::string(int)>& work) {
    std::vector<Ending> endings(static_cast<std::size_t>(count));
    std::vector<Process> processes;
    for (int i = 0; i < count; ++i) processes.push_back(start(i, work));
    const bool inTime = readAll(processes, endings, seconds);
    for (std::size_t i = 0; i < processes.size(); ++i) finish(processes[i], endings[i], inTime);
    return endings;
}

}  // namespace weldline::reference
