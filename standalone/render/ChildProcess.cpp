#include "ChildProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>

#include "base/Errors.h"
#include "base/SignalsHeld.h"

namespace weldline {

namespace {

// The first byte of what a child sends.
constexpr char success = '+';
constexpr char failure = '-';

void sendAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) ::_exit(1);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

// What this process would do on signals and exhausted memory is not for its child: that has no
// files to remove and ends with its parent, without a core file.
void leaveParentsWays() {
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGXCPU, SIGPIPE})
        ::signal(signal, SIG_DFL);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    std::set_new_handler(nullptr);
    std::set_terminate(std::abort);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere, stream);
}

[[noreturn]] void workInChild(const std::function<std::string()>& work, int descriptor) {
    try {
        const std::string bytes = work();
        sendAll(descriptor, {&success, 1});
        sendAll(descriptor, bytes);
    } catch (const std::bad_alloc&) {
        sendAll(descriptor, "-out of memory; use a machine with more memory or a smaller picture");
    } catch (const std::exception& error) {
        sendAll(descriptor, {&failure, 1});
        sendAll(descriptor, error.what());
    }
    // On purpose without any cleaning up: drivers are known to fail in it, and all is done.
    ::_exit(0);
}

std::string receiveAll(int descriptor) {
    std::string bytes;
    std::array<char, 65536> part{};
    while (true) {
        const ssize_t count = ::read(descriptor, part.data(), part.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return bytes;
        bytes.append(part.data(), static_cast<std::size_t>(count));
    }
}

int waitFor(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    return status;
}

[[noreturn]] void failToStart() {
    throw RunError("no process can be started to draw in (" +
                   std::generic_category().message(errno) +
                   "); allow more processes or more open files");
}

}  // namespace

std::string bytesFromChild(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) failToStart();
    // On purpose held back until the child has ways of its own with signals.
    std::optional<SignalsHeld> held(std::in_place);
    const pid_t child = ::fork();
    if (child == 0) {
        leaveParentsWays();
        held.reset();
        workInChild(work, ends[1]);
    }
    held.reset();
    ::close(ends[1]);
    if (child < 0) {
        ::close(ends[0]);
        failToStart();
    }
    std::string bytes = receiveAll(ends[0]);
    ::close(ends[0]);
    const int status = waitFor(child);
    const bool isWhole = WIFEXITED(status) && WEXITSTATUS(status) == 0 && !bytes.empty();
    if (!isWhole)
        throw RunError(
            std::string("the graphics driver ended the process that drew") +
            (WIFSIGNALED(status) ? std::string(" (") + ::strsignal(WTERMSIG(status)) + ")" : "") +
            "; no picture can be drawn on this machine until its OpenGL works: install "
            "libegl1, libegl-mesa0 and libgl1-mesa-dri, or let DISPLAY name an X server");
    const bool isDone = bytes.front() == success;
    bytes.erase(0, 1);
    if (!isDone) throw RunError(bytes);
    return bytes;
}

}  // namespace weldline
