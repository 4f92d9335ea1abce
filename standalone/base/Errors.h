#pragma once

#include <stdexcept>
#include <string>

namespace weldline {

// Errors that end the program; the message is one line that names the file (or option), what is
// wrong and what would be right. The program adds "weldline: " and the exit code.

class RunError : public std::runtime_error {  // failed while running: exit code 1
    using std::runtime_error::runtime_error;
};
class UsageError : public std::runtime_error {  // wrong usage: exit code 2
    using std::runtime_error::runtime_error;
};
class InputError : public std::runtime_error {  // unusable input: exit code 3
    using std::runtime_error::runtime_error;
};

}  // namespace weldline
