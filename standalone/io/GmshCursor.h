#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FileWindow.h"

namespace weldline {

// Goes through a gmsh .msh file, whose numbers are text or binary. A window of the file is in
// memory at a time. Never leaves the file: what ends too early or is no number throws InputError.
class GmshCursor {
  public:
    explicit GmshCursor(const std::string& file, std::size_t windowGrowth = 65536)
        : window_(file, windowGrowth) {}

    const std::string& file() const { return window_.file(); }

    // Numbers are binary from here on; lines stay text.
    void startBinary() { isBinary_ = true; }
    bool isBinary() const { return isBinary_; }

    // Goes to the line after the next one that starts a section; its name without the "$", empty at
    // the end of the file.
    std::string nextSection();

    // Goes behind the end of this section, wherever it is.
    void leaveSection(const std::string& name);

    std::string line();         // up to the end of the line, which is passed
    std::int64_t lineNumber();  // the same, a whole number

    std::int64_t integer();  // of 4 bytes, in text, too
    std::int64_t size();     // binary: 8 bytes
    double real();

    // A number of items of which each takes at least so many numbers of 4 bytes; refused where the
    // file cannot hold them.
    std::size_t count(std::int64_t items, std::size_t numbersEach) const;

    void passBytes(std::size_t items, std::size_t bytesEach);

    std::uint64_t place() const { return window_.at(); }

    // To a place where the cursor has been. Refused where the file has been changed since.
    void goBack(std::uint64_t place);

    [[noreturn]] void fail(const std::string& reason) const;

  private:
    std::string_view word();
    template <class Number>
    Number binary();
    template <class Number>
    Number text();

    FileWindow window_;
    bool isBinary_ = false;
};

}  // namespace weldline
