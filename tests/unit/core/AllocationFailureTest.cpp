#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "Binding.h"

namespace {

// In the child of the death test: standard output goes to standard error, where the expectation
// looks, and the status is taken before the guard against early ends sees the end.
[[noreturn]] void endWithoutWorkArrays() {
    dup2(STDERR_FILENO, STDOUT_FILENO);
    on_exit(
        [](int status, void*) {
            std::fflush(stdout);
            _exit(status);
        },
        nullptr);
    weldline::core::exitWithoutWorkArrays();
}

}  // namespace

TEST(AllocationFailure, says_so_on_standard_output_and_ends_with_status_0) {
    EXPECT_EXIT(endWithoutWorkArrays(), testing::ExitedWithCode(0),
                "^Allocate Local accuracy improvement memory error, now exit!!!\n$");
}
