#include "Progress.h"

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace weldline {

namespace {

std::atomic<bool> lineShown{false};

void writeRaw(std::string_view text) noexcept {
    // A terminal that went away is no reason to stop the run.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

bool terminalMovesCursor() {
    const char* kind = std::getenv("TERM");
    return ::isatty(STDERR_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

constexpr std::size_t lineWidth = 79;

}  // namespace

Progress::Progress(int steps, bool mayShow)
    : m_steps(steps), m_visible(mayShow && terminalMovesCursor()) {}

Progress::~Progress() {
    finish();
}

void Progress::step(const std::string& text) {
    ++m_step;
    within(text);
}

void Progress::within(const std::string& text) const {
    if (!m_visible) return;
    std::string line = "[" + std::to_string(m_step) + "/" + std::to_string(m_steps) + "] " + text;
    line.resize(lineWidth, ' ');
    writeRaw("\r" + line + "\r");
    lineShown = true;
}

void Progress::finish() {
    if (!lineShown.exchange(false)) return;
    writeRaw("\r" + std::string(lineWidth, ' ') + "\r");
}

double Progress::seconds() const {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_start;
    return passed.count();
}

void endProgressLine() noexcept {
    if (lineShown.exchange(false)) writeRaw("\n");
}

}  // namespace weldline
