#pragma once

#include <filesystem>
#include <string>

namespace weldline::reference {

// A fresh folder as the working folder; both sides of a case write their files below it, under
// relative names. Leaving restores the former working folder.
class Workspace {
  public:
    Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    ~Workspace();

  private:
    std::filesystem::path former_;
    std::filesystem::path folder_;
};

// Standard output of the process, sent to a file in memory while this object lives.
class CapturedOutput {
  public:
    CapturedOutput();
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;
    ~CapturedOutput();

    // What has left the stream's buffer so far.
    static double visibleBytes();

    // Everything, flushed.
    std::string text();

  private:
    int former_;
    int file_;
};

std::string fileBytes(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);

}  // namespace weldline::reference
