#include "TemporaryFolder.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "base/Errors.h"
#include "base/SignalsHeld.h"

namespace weldline {

namespace {

using Name = std::array<char, PATH_MAX>;

// A signal handler may look at any moment, so the names are complete before `exists` says so.
Name folder{};
Name control{};
Name trace{};
std::atomic<bool> exists{false};
static_assert(std::atomic<bool>::is_always_lock_free);

void setName(Name& name, const std::string& value) {
    name.fill('\0');
    std::copy(value.begin(), value.end(), name.begin());
}

std::string placeForTemporaries() {
    const char* named = std::getenv("TMPDIR");
    return named != nullptr && *named != '\0' ? named : "/tmp";
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    constexpr std::string_view longestFile = "/weldline_KVRWDLineDebug.txt";
    const std::string place = placeForTemporaries();
    std::string name = place + "/weldline-XXXXXX";
    const bool fits = name.size() + longestFile.size() < PATH_MAX;
    const SignalsHeld held;
    if (!fits || ::mkdtemp(name.data()) == nullptr)
        throw RunError(place + ": no temporary folder can be made there (" +
                       std::generic_category().message(fits ? errno : ENAMETOOLONG) +
                       "); let the environment variable TMPDIR name a folder that can be written");
    setName(folder, name);
    setName(control, name + "/weldline.cmp");
    setName(trace, name + std::string(longestFile));
    exists = true;
}

TemporaryFolder::~TemporaryFolder() {
    removeTemporaryFolder();
}

std::string TemporaryFolder::controlFile() const {
    return control.data();
}

std::string TemporaryFolder::traceFile() const {
    return trace.data();
}

void removeTemporaryFolder() noexcept {
    if (!exists.exchange(false)) return;
    ::unlink(control.data());
    ::unlink(trace.data());
    ::rmdir(folder.data());
}

}  // namespace weldline
