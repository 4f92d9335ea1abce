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

std::string behindLinks(const std::string& target) {
    std::error_code none;
    const fs::path real = fs::canonical(target, none);
    return none ? target : real.string();
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

AtomicFile::AtomicFile(const std::string& target)
    : target_(target), destination_(behindLinks(target)) {
    struct stat status {};
    const bool exists = ::stat(destination_.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        fail(EISDIR);
    }
    direct_ = exists && !S_ISREG(status.st_mode);
    if (direct_) {
        path_ = destination_;
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0) {
            fail(errno);
        }
        return;
    }
    // A file that its owner protected against writing is not replaced behind his back.
    if (exists && ::access(destination_.c_str(), W_OK) != 0) {
        fail(errno);
    }
    createTemporary();
    if (exists) {
        // Best effort: a file system without permissions is no reason to refuse the result.
        [[maybe_unused]] const int ignored = ::fchmod(descriptor_, status.st_mode & 07777);
    }
}

void AtomicFile::createTemporary() {
    const fs::path place(destination_);
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const std::string name = "." + place.filename().string() + "." +
                                 std::to_string(::getpid()) + "-" + std::to_string(attempt) +
                                 ".tmp";
        path_ = (place.parent_path() / name).string();
        const SignalsHeld held;
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ >= 0) {
            slot_ = registerPending(path_);
            return;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    fail(errno);
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

// Some file systems report a full disk no earlier than here.
void AtomicFile::closeAndCheck() {
    const bool synchronised = direct_ || ::fsync(descriptor_) == 0 || errno == EINVAL;
    const int syncError = synchronised ? 0 : errno;
    const bool closed = ::close(descriptor_) == 0;
    const int closeError = closed ? 0 : errno;
    descriptor_ = -1;
    if (!synchronised) {
        fail(syncError);
    }
    if (!closed) {
        fail(closeError);
    }
}

void AtomicFile::commit() {
    closeAndCheck();
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
