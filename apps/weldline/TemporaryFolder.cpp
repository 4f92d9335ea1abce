#include "TemporaryFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/Errors.h"
#include "base/SignalsHeld.h"
#include "base/TemporaryName.h"

namespace weldline {

namespace {

namespace fs = std::filesystem;

using Name = std::array<char, PATH_MAX>;

// A signal handler may look at any moment, so the names are complete before `exists` says so.
Name folder{};
Name control{};
Name trace{};
std::atomic<bool> exists{false};
static_assert(std::atomic<bool>::is_always_lock_free);

// Without memory of its own: there may be none left while the folder is already there.
void setName(Name& name, std::string_view first, std::string_view second = {}) {
    const auto end = std::copy(first.begin(), first.end(), name.begin());
    *std::copy(second.begin(), second.end(), end) = '\0';
}

std::string placeForTemporaries() {
    const char* named = std::getenv("TMPDIR");
    return named != nullptr && *named != '\0' ? named : "/tmp";
}

// On purpose a name that nobody gives to a folder of his own: left ones are removed.
constexpr std::string_view beginning = ".weldline-run-";
constexpr std::string_view pattern = ".weldline-run-XXXXXX";
constexpr std::string_view controlName = "/weldline.cmp";
constexpr std::string_view traceName = "/weldline_KVRWDLineDebug.txt";  // the longer one

// A descriptor of the folder that holds its lock, -1: not ours or in use.
int lockFolder(const std::string& name) {
    const int descriptor = ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) return -1;
    struct stat status {};
    const bool ours = ::fstat(descriptor, &status) == 0 && status.st_uid == ::geteuid();
    if (ours && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
    ::close(descriptor);
    return -1;
}

// Removes what the program itself puts there; the folder stays where it holds something else.
void removeIfLeft(const std::string& left) {
    const int lock = lockFolder(left);
    if (lock < 0) return;
    const std::string leftControl = left + std::string(controlName);
    removeLeftTemporaries(leftControl);
    ::unlink(leftControl.c_str());
    ::unlink((left + std::string(traceName)).c_str());
    ::rmdir(left.c_str());
    ::close(lock);
}

void removeLeftFolders(const std::string& place) {
    std::error_code error;
    for (fs::directory_iterator entry(place, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(beginning) && name.size() == pattern.size())
            removeIfLeft(entry->path().string());
    }
}

// A new folder with its lock; empty: none can be made. Another process may take the folder for a
// left one before the lock is held, then a next one is made. On a file system without locks the
// last is taken without.
std::string makeFolder(const std::string& place, int& lock) {
    constexpr int attempts = 10;
    const std::string all = place + "/" + std::string(pattern);
    if (all.size() + traceName.size() >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return {};
    }
    for (int attempt = 1;; ++attempt) {
        std::string name = all;
        if (::mkdtemp(name.data()) == nullptr) return {};
        lock = lockFolder(name);
        const bool stands = ::access(name.c_str(), F_OK) == 0;
        if (stands && (lock >= 0 || attempt == attempts)) return name;
        if (lock >= 0) ::close(lock);
        ::rmdir(name.c_str());
    }
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    const std::string place = placeForTemporaries();
    removeLeftFolders(place);
    const SignalsHeld held;
    const std::string name = makeFolder(place, m_lock);
    if (name.empty())
        throw RunError(place + ": no temporary folder can be made there (" +
                       std::generic_category().message(errno) +
                       "); let the environment variable TMPDIR name a folder that can be written");
    setName(folder, name);
    setName(control, name, controlName);
    setName(trace, name, traceName);
    exists = true;
}

// A handler that came in the middle would take the folder for removed.
TemporaryFolder::~TemporaryFolder() {
    const SignalsHeld held;
    removeTemporaryFolder();
    if (m_lock >= 0) ::close(m_lock);
}

std::string TemporaryFolder::controlFile() const {
    return control.data();
}

std::string TemporaryFolder::traceFile() const {
    return trace.data();
}

void failOnTemporary(const std::string& file, const std::string& what) {
    throw RunError(file + ": " + what +
                   "; let the environment variable TMPDIR name a folder with free space");
}

void removeTemporaryFolder() noexcept {
    if (!exists.exchange(false)) return;
    ::unlink(control.data());
    ::unlink(trace.data());
    ::rmdir(folder.data());
}

}  // namespace weldline
