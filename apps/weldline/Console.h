#pragma once

#include <string>
#include <string_view>

namespace weldline {

// Standard output carries data, standard error everything else.

// Makes sure that the three standard streams exist, so that no file of the program takes the number
// of one that the caller closed. Writing to such a stream fails.
void openMissingStreams();

// Throws RunError when not everything could be written.
void writeStandardOutput(std::string_view text);

// One line on standard error, after "weldline: ".
void writeMessage(std::string_view message);

// Whether words on standard output may be emphasised: it is a terminal and NO_COLOR is not set.
bool standardOutputTakesStyle();

// While it lives, whatever code prints to standard output goes to standard error.
class StandardOutputAside {
  public:
    StandardOutputAside();
    ~StandardOutputAside();
    StandardOutputAside(const StandardOutputAside&) = delete;
    StandardOutputAside& operator=(const StandardOutputAside&) = delete;

  private:
    int m_kept;
};

}  // namespace weldline
