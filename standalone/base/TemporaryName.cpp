#include "TemporaryName.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string_view>
#include <system_error>

namespace weldline {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".tmp";
constexpr std::size_t longestNumbers = 20;  // "PROCESS-ATTEMPT"

std::string beginning(const fs::path& target) {
    const std::size_t room = NAME_MAX - 2 - longestNumbers - ending.size();
    return "." + target.filename().string().substr(0, room) + ".";
}

bool isNumbers(std::string_view text) {
    const std::size_t dash = text.find('-');
    const auto isNumber = [](std::string_view part) {
        return !part.empty() &&
               std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    };
    return dash != std::string_view::npos && isNumber(text.substr(0, dash)) &&
           isNumber(text.substr(dash + 1));
}

bool isTemporary(std::string_view name, std::string_view start) {
    return name.size() > start.size() + ending.size() && name.starts_with(start) &&
           name.ends_with(ending) &&
           isNumbers(name.substr(start.size(), name.size() - start.size() - ending.size()));
}

// A lock of the open file, not of the process.
bool takeLock(int descriptor) {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return ::fcntl(descriptor, F_OFD_SETLK, &whole) == 0;
}

void removeIfLeft(const fs::path& temporary) {
    const int descriptor = ::open(temporary.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return;
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && takeLock(descriptor))
        ::unlink(temporary.c_str());
    ::close(descriptor);
}

}  // namespace

std::string temporaryName(const fs::path& target, int attempt) {
    const std::string name = beginning(target) + std::to_string(::getpid()) + "-" +
                             std::to_string(attempt) + std::string(ending);
    return (target.parent_path() / name).string();
}

bool lockTemporary(int descriptor) {
    const bool taken = !takeLock(descriptor) && (errno == EAGAIN || errno == EACCES);
    struct stat status {};
    const bool removed = ::fstat(descriptor, &status) == 0 && status.st_nlink == 0;
    return !taken && !removed;
}

void removeLeftTemporaries(const fs::path& target) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : ".";
    const std::string start = beginning(target);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (isTemporary(entry->path().filename().string(), start)) removeIfLeft(entry->path());
}

}  // namespace weldline
