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

// False where somebody holds the temporary.
bool removeIfLeft(const fs::path& temporary) {
    const int descriptor = ::open(temporary.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return true;
    struct stat status {};
    const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    const bool isFree = !isFile || takeLock(descriptor);
    if (isFile && isFree) ::unlink(temporary.c_str());
    ::close(descriptor);
    return isFree;
}

fs::path folderOf(const fs::path& target) {
    return target.has_parent_path() ? target.parent_path() : ".";
}

// Removes those that are left; answers how many are held.
int clearTemporaries(const fs::path& target) {
    const std::string start = beginning(target);
    int held = 0;
    std::error_code error;
    for (fs::directory_iterator entry(folderOf(target), error), end; !error && entry != end;
         entry.increment(error))
        if (isTemporary(entry->path().filename().string(), start))
            held += removeIfLeft(entry->path()) ? 0 : 1;
    return held;
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
    clearTemporaries(target);
}

std::string targetOfTemporary(const std::string& name) {
    if (!name.starts_with('.') || !name.ends_with(ending)) return {};
    const std::size_t dot = name.rfind('.', name.size() - ending.size() - 1);
    if (dot == 0 || dot == std::string::npos) return {};
    return isTemporary(name, name.substr(0, dot + 1)) ? name.substr(1, dot - 1) : std::string();
}

bool isBeingWritten(const fs::path& target) {
    return clearTemporaries(target) > 0;
}

}  // namespace weldline
