#pragma once

#include <chrono>
#include <string>

namespace weldline {

// One line on the terminal that says what the program is doing; silent where standard error is no
// terminal.
class Progress {
  public:
    Progress(int steps, bool mayShow);  // only one rank of a run may
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void step(const std::string& text);

    // Tells more of the step under way.
    void within(const std::string& text) const;

    // Takes the line away.
    void finish();

    double seconds() const;  // since the start

  private:
    int m_steps;
    int m_step = 0;
    bool m_visible;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

// Leaves the progress line, if one is shown, for another message. Async-signal-safe.
void endProgressLine() noexcept;

}  // namespace weldline
