#pragma once

#include <new>
#include <string>

namespace weldline {

// While it lives, VTK is reading a file and may be led astray by it: VTK believes much of what a
// file says, so that damaged bytes can make it leave its arrays, run out of stack, call exit() or
// never come to an end. The guard turns the signals of such a fault, an exit, and a CPU time out of
// all proportion to the file's size, into one line about the file and the end of the process; the
// state of the process is lost by then, so that there is no way back to the caller. An allocation
// out of all proportion to the file's size fails (std::bad_alloc), and libraries' own words are not
// seen on standard error. See docs/decisions/read-guard.md.
//
// One at a time, on the thread that reads.
class ReadGuard {
  public:
    // Ends the process after a fault: gets the line, without an end of line, and never returns.
    // Called in a signal handler: nothing but async-signal-safe calls.
    using End = void (*)(const char* line);

    // Without an end, which is the initial state, guards do nothing: a process that is not ours to
    // end keeps its own ways.
    static void endBy(End end);

    // For a handler of other signals that has something to say while a guard lives; a guard's own
    // end finds standard error given back. Async-signal-safe.
    static void giveBackErrors() noexcept;

    // For readers whose libraries complain at the end of the process of what a damaged file has
    // left open: from the first of the handlers that run at its end on, nothing is seen on standard
    // error. Called when the library is in use, so that its handler is registered already.
    static void silenceExit();

    // `bytes` is what there is to read: of a data set in several files the size of all.
    ReadGuard(const std::string& file, double bytes);
    explicit ReadGuard(const std::string& file);  // a data set that is one file
    ~ReadGuard();
    ReadGuard(const ReadGuard&) = delete;
    ReadGuard& operator=(const ReadGuard&) = delete;

  private:
    // The end of memory is an exception here: the file may claim more than there can be.
    std::new_handler newHandlerBefore_;
};

}  // namespace weldline
