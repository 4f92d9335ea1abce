#pragma once

namespace weldline {

// From now on SIGINT, SIGTERM and SIGHUP remove all temporaries, say so in one line and end the
// process by the signal. A signal that was ignored at the start (nohup, background jobs) stays
// ignored. Writing into a closed pipe becomes an error of the write instead of a signal, and a file
// that grows beyond its limit likewise.
void handleInterruptions();

// Whether from now on such an end says nothing: of several ranks one may have failed, with a
// message of its own, and the launcher then ends the others.
void endInSilence(bool silent);

// Removes all temporaries before the process ends at once. Async-signal-safe.
void leaveNothing() noexcept;

// From now on a file that makes its reader crash or run without end removes all temporaries and
// ends the process with one line and the exit code of unusable input.
void handleReadFaults();

}  // namespace weldline
