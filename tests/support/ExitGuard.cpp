#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

// The library may end the process with status 0, which a test runner would take for success. Linked
// into a test executable, this guard turns every end before the last test into a failure.

namespace weldline::test {

namespace {

bool g_testsRunning = false;

void failWhenTestsAreStillRunning() {
    if (!g_testsRunning) return;
    std::fputs("the process ended in the middle of a test\n", stderr);
    std::_Exit(1);
}

class ExitGuard : public ::testing::Environment {
  public:
    void SetUp() override {
        g_testsRunning = true;
        std::atexit(failWhenTestsAreStillRunning);
    }
    void TearDown() override { g_testsRunning = false; }
};

[[maybe_unused]] const auto* const g_guard =
    ::testing::AddGlobalTestEnvironment(new ExitGuard);  // owned by the test framework

}  // namespace

}  // namespace weldline::test
