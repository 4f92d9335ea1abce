#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace weldline {

// Goes through the bytes of a gmsh .msh file, whose numbers are text or binary. Never leaves the
// file: what ends too early or is no number throws InputError.
class GmshCursor {
  public:
    GmshCursor(std::string file, std::string bytes)
        : file_(std::move(file)), bytes_(std::move(bytes)) {}

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

    [[noreturn]] void fail(const std::string& reason) const;

  private:
    std::string_view word();
    template <class Number>
    Number binary();
    template <class Number>
    Number text();

    std::string file_;
    std::string bytes_;
    std::size_t at_ = 0;
    bool isBinary_ = false;
};

}  // namespace weldline
