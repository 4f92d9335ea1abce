#pragma once

#include <string>

namespace weldline {

// A private folder for the files that the library reads and writes by name during a run: its
// control file and its trace. Removed with these files at the end of its life. One at a time.
//
// The process holds a lock on it, which ends with the process, however that ends. So folders of the
// same user without a lock were left by processes that were killed; they are removed at the start,
// unless they hold anything but these files.
class TemporaryFolder {
  public:
    TemporaryFolder();  // throws RunError
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string controlFile() const;
    std::string traceFile() const;  // where the library puts the trace of that control file

  private:
    int m_lock = -1;
};

// Throws RunError about a file in such a folder.
[[noreturn]] void failOnTemporary(const std::string& file, const std::string& what);

// Removes the folder that exists at this moment, if there is one. Async-signal-safe.
void removeTemporaryFolder() noexcept;

}  // namespace weldline
