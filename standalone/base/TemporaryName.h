#pragma once

#include <filesystem>
#include <string>

namespace weldline {

// Names of the temporaries that stand in for a file until it is complete:
// ".NAME.PROCESS-ATTEMPT.tmp" in its folder; a long NAME is cut. Whoever writes a temporary holds a
// lock on it, which ends with the process, however that ends. So one without a lock was left by a
// process that was killed.

std::string temporaryName(const std::filesystem::path& target, int attempt);

// Takes the lock on a temporary that was just made. False when somebody took it for a left one and
// removed it. A file system without locks is no failure: there nothing is ever removed.
bool lockTemporary(int descriptor);

// Removes what killed processes left for this target; never fails.
void removeLeftTemporaries(const std::filesystem::path& target);

// The target of a temporary of this name, empty where it is none.
std::string targetOfTemporary(const std::string& name);

// Whether a process holds a temporary for this target.
bool isBeingWritten(const std::filesystem::path& target);

}  // namespace weldline
