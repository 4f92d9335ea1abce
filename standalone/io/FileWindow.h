#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

// Internal to the reader.
namespace weldline {

// A file, of which a window of bytes is in memory at a time. The file stays open, so that one that
// takes its name later does not matter. Throws InputError where bytes cannot be read.
class FileWindow {
  public:
    // The window grows by so many bytes at a time.
    FileWindow(const std::string& file, std::size_t growth);
    ~FileWindow();
    FileWindow(const FileWindow&) = delete;
    FileWindow& operator=(const FileWindow&) = delete;

    const std::string& file() const { return file_; }
    std::uint64_t size() const { return size_; }  // when the file was opened
    std::uint64_t at() const { return start_ + passed_; }

    // The bytes in memory from here on. The view ends with the next call of extend or goTo.
    std::string_view ahead() const { return std::string_view(bytes_).substr(passed_); }

    // Takes more bytes into memory, behind those ahead; false at the end of the file.
    bool extend();

    void pass(std::size_t bytes) { passed_ += bytes; }  // of those ahead
    void goTo(std::uint64_t at);

    // Whether somebody has written to the file since it was opened, as far as its size and the time
    // of the last change tell.
    bool isChanged() const;

  private:
    std::string file_;
    int descriptor_;
    std::uint64_t size_ = 0;
    std::timespec changed_{};
    std::size_t growth_;
    std::string bytes_;
    std::uint64_t start_ = 0;  // of the bytes in memory
    std::size_t passed_ = 0;   // of the bytes in memory
};

}  // namespace weldline
