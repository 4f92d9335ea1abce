#pragma once

#include <string>

namespace weldline {

// A private folder for the files that the library reads and writes by name during a run: its
// control file and its trace. Removed with these files at the end of its life. One at a time.
class TemporaryFolder {
  public:
    TemporaryFolder();  // throws RunError
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string controlFile() const;
    std::string traceFile() const;  // where the library puts the trace of that control file
};

// Removes the folder that exists at this moment, if there is one. Async-signal-safe.
void removeTemporaryFolder() noexcept;

}  // namespace weldline
