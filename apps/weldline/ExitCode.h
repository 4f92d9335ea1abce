#pragma once

namespace weldline {

// What the program tells its caller; --help says the same.
enum ExitCode {
    Done = 0,
    FailedWhileRunning = 1,
    WrongUsage = 2,
    UnusableInput = 3,
    LinesRefused = 10
};

}  // namespace weldline
