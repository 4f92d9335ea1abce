#pragma once

namespace weldline {

// From now on SIGINT, SIGTERM and SIGHUP remove all temporaries, say so in one line and end the
// process by the signal. A signal that was ignored at the start (nohup, background jobs) stays
// ignored. Writing into a closed pipe becomes an error of the write instead of a signal, and a file
// that grows beyond its limit likewise.
void handleInterruptions();

}  // namespace weldline
