#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace weldline {

// Standard output carries data, standard error everything else.

// Makes sure that the three standard streams exist, so that no file of the program takes the number
// of one that the caller closed. Writing to such a stream fails. Throws RunError.
void openMissingStreams();

// Throws RunError when not everything could be written.
void writeStandardOutput(std::string_view text);

// One line on standard error, after "weldline: "; takes no memory, so that its end can be told,
// too.
void writeMessage(std::initializer_list<std::string_view> parts);

// Whether words on standard output may be emphasised: it is a terminal and NO_COLOR is not set.
bool standardOutputTakesStyle();

// From now on they may not: a launcher gives its processes a terminal and sends on what it gets.
void doWithoutStyle();

// While it lives, whatever code prints to standard output is kept aside. In the end it goes to
// standard error where `isTold`, but not when an exception ends its life: that has a message of its
// own.
class StandardOutputAside {
  public:
    explicit StandardOutputAside(bool isTold = true);  // throws RunError
    ~StandardOutputAside();
    StandardOutputAside(const StandardOutputAside&) = delete;
    StandardOutputAside& operator=(const StandardOutputAside&) = delete;

    // What was printed up to now. Throws RunError.
    std::string text() const;

  private:
    void close() noexcept;

    bool m_isTold;
    int m_output = -1;  // the real standard output
    int m_aside = -1;
    int m_exceptions;  // under way at the start
};

}  // namespace weldline
