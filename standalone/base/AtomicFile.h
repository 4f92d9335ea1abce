#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace weldline {

// A file that appears whole or not at all: it is written under a temporary name in the folder of
// its target and takes the target's place by commit(). Without commit() the temporary is removed
// and an older file of that name stays as it was. A new file gets the permissions that the umask
// leaves, a replaced one keeps its permissions and, where that is allowed, its owner and group;
// other hard links to it keep the old content. A symbolic link is followed, also one whose file
// does not exist yet. A target that exists and is no regular file (a device, a pipe) is written
// directly. What a killed process left of the same target is removed.
//
// Every operation throws RunError, one line with the target and the system's reason.
class AtomicFile {
  public:
    explicit AtomicFile(const std::string& target);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Where the bytes go until commit(): for code that can only write to a named file. Such code
    // overwrites the file and never replaces it.
    const std::string& path() const { return path_; }

    void write(std::string_view bytes);

    // Brings the bytes to the disk; nothing can be written after it.
    void finish();

    // finish(), if that was not done, and gives the file its name.
    void commit();

  private:
    [[noreturn]] void fail(int systemError) const;
    std::string behindLinks() const;
    void createTemporary();
    void keepOwnerAndMode(const struct stat& old) const;

    std::string target_;       // as named by the caller, for messages
    std::string destination_;  // the target behind symbolic links
    std::string path_;
    int descriptor_ = -1;
    int slot_ = -1;  // in the registry of pending temporaries, -1: none
    bool direct_ = false;
    bool finished_ = false;
};

// The whole of a file in one call.
void writeWholeFile(const std::string& target, std::string_view bytes);

// Removes the temporaries of all files that are not committed yet. Async-signal-safe: meant for a
// handler that ends the process.
void removePendingFiles() noexcept;

}  // namespace weldline
