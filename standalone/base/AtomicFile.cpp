#include "AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "Errors.h"
#include "SignalsHeld.h"
#include "TemporaryName.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

// A temporary in the registry. A signal handler may look at any moment, so the name is complete
// before the slot says so.
struct PendingFile {
    enum State { Free, Claimed, Complete };
    std::atomic<int> state{Free};
    std::array<char, PATH_MAX> name{};
};

// On purpose: a fixed number of slots, because a signal handler must not meet a growing container.
// A file beyond them is still removed by its own destructor.
std::array<PendingFile, 32> pendingFiles;
static_assert(std::atomic<int>::is_always_lock_free);

int registerPending(const std::string& name) {
    if (name.size() >= PATH_MAX) {
        return -1;
    }
    for (std::size_t i = 0; i < pendingFiles.size(); ++i) {
        int expected = PendingFile::Free;
        if (pendingFiles[i].state.compare_exchange_strong(expected, PendingFile::Claimed)) {
            std::memcpy(pendingFiles[i].name.data(), name.c_str(), name.size() + 1);
            pendingFiles[i].state.store(PendingFile::Complete);
            return static_cast<int>(i);
        }
    }
    return -1;
}

void unregisterPending(int slot) {
    if (slot >= 0) {
        pendingFiles[static_cast<std::size_t>(slot)].state.store(PendingFile::Free);
    }
}

// The folder is named when it is the reason, because then another file name would not help.
std::string reasonFor(const std::string& destination, int systemError) {
    const fs::path folder = fs::path(destination).parent_path();
    std::error_code none;
    if (systemError == ENOENT && !folder.empty() && !fs::exists(folder, none)) {
        return "the folder '" + folder.string() + "' does not exist; create it first";
    }
    if (systemError == EISDIR) {
        return "it is a folder; name a file";
    }
    return std::generic_category().message(systemError);
}

}  // namespace

AtomicFile::AtomicFile(const std::string& target) : target_(target), destination_(target) {
    struct stat status {};
    const bool exists = ::stat(target_.c_str(), &status) == 0;
    // On purpose: what cannot be looked at is not taken for a file that is not there.
    if (!exists && errno != ENOENT) {
        fail(errno);
    }
    if (exists && S_ISDIR(status.st_mode)) {
        fail(EISDIR);
    }
    direct_ = exists && !S_ISREG(status.st_mode);
    if (direct_) {
        path_ = target_;
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0) {
            fail(errno);
        }
        return;
    }
    destination_ = behindLinks();
    // A file that its owner protected against writing is not replaced behind his back.
    if (exists && ::access(destination_.c_str(), W_OK) != 0) {
        fail(errno);
    }
    removeLeftTemporaries(destination_);
    createTemporary();
    if (exists) {
        keepOwnerAndMode(status);
    }
}

// A link without a file is followed by hand, as far as the system itself would.
std::string AtomicFile::behindLinks() const {
    constexpr int mostLinks = 40;
    std::error_code error;
    const fs::path real = fs::canonical(target_, error);
    if (!error) {
        return real.string();
    }
    if (error.value() != ENOENT) {
        fail(error.value());
    }
    fs::path place = target_;
    for (int links = 0; links < mostLinks; ++links) {
        const fs::path next = fs::read_symlink(place, error);
        if (error) {
            break;
        }
        place = place.parent_path() / next;
    }
    return place.string();
}

void AtomicFile::createTemporary() {
    for (int attempt = 0; attempt < 1000; ++attempt) {
        path_ = temporaryName(destination_, attempt);
        const SignalsHeld held;
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ >= 0 && lockTemporary(descriptor_)) {
            slot_ = registerPending(path_);
            return;
        }
        const int error = descriptor_ >= 0 ? EEXIST : errno;
        if (descriptor_ >= 0) {
            ::close(descriptor_);
            descriptor_ = -1;
        }
        if (error != EEXIST) {
            fail(error);
        }
    }
    fail(EEXIST);
}

// Best effort: a file system without permissions is no reason to refuse the result.
void AtomicFile::keepOwnerAndMode(const struct stat& old) const {
    struct stat made {};
    const bool other = ::fstat(descriptor_, &made) == 0 &&
                       (made.st_uid != old.st_uid || made.st_gid != old.st_gid);
    if (other && ::fchown(descriptor_, old.st_uid, old.st_gid) != 0) {
        constexpr auto unchanged = static_cast<uid_t>(-1);
        [[maybe_unused]] const int group = ::fchown(descriptor_, unchanged, old.st_gid);
    }
    [[maybe_unused]] const int mode = ::fchmod(descriptor_, old.st_mode & 07777);
}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
    if (!direct_ && !path_.empty()) {
        ::unlink(path_.c_str());
    }
    unregisterPending(slot_);
}

void AtomicFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            fail(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

// Some file systems report a full disk no earlier than here, some when a descriptor is closed. On
// purpose only a copy is closed: the descriptor itself holds the lock on the temporary.
void AtomicFile::finish() {
    if (finished_) {
        return;
    }
    if (!direct_ && ::fsync(descriptor_) != 0 && errno != EINVAL) {
        fail(errno);
    }
    const int copy = ::fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
    if (copy < 0 || ::close(copy) != 0) {
        fail(errno);
    }
    finished_ = true;
}

void AtomicFile::commit() {
    finish();
    if (direct_) {
        return;
    }
    if (::rename(path_.c_str(), destination_.c_str()) != 0) {
        fail(errno);
    }
    unregisterPending(slot_);
    slot_ = -1;
    path_.clear();
}

void AtomicFile::fail(int systemError) const {
    throw RunError("cannot write '" + target_ + "': " + reasonFor(destination_, systemError));
}

void writeWholeFile(const std::string& target, std::string_view bytes) {
    AtomicFile file(target);
    file.write(bytes);
    file.commit();
}

void removePendingFiles() noexcept {
    for (PendingFile& pending : pendingFiles) {
        if (pending.state.load() == PendingFile::Complete) {
            ::unlink(pending.name.data());
        }
    }
}

}  // namespace weldline
