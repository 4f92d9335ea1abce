#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "Solver.h"

// What the library writes to standard output, through the public class.

namespace weldline::test {

namespace {

constexpr const char* kMissingFile = "Fail to open *.cmp file in WeldLine Calculation! \n";

// How many of the characters that wait in the stream of standard output reach the file behind it
// while `action` runs.
template <class Action>
long flushedBy(const std::string& waiting, const Action& action) {
    long flushed = -1;
    standardOutputOf([&] {
        std::fputs(waiting.c_str(), stdout);
        action();
        struct stat status = {};
        if (fstat(1, &status) == 0) flushed = static_cast<long>(status.st_size);
    });
    return flushed;
}

const std::string kTraced = section({"FlagDebugOutput = 1", ""});

}  // namespace

TEST(StandardOutput, a_run_with_control_file_writes_nothing) {
    for (const char* method : {"1", "2", "3", "4", "40", "5"}) {
        Solver solver;
        const std::string output = standardOutputOf([&] {
            solver.start();
            solver.run(
                section({std::string("WeldlingAngleMethod = ") + method, "FlagDebugOutput = 1"}));
            solver.handle->getMeetingAngle();
            solver.stop();
        });
        EXPECT_EQ(output, "") << method;
    }
}

TEST(StandardOutput, missing_control_file_is_told_once_a_run) {
    Solver solver;
    solver.start();
    const std::string output = standardOutputOf([&] {
        EXPECT_EQ(solver.handle->calWeldLine(), 0);
        EXPECT_EQ(solver.handle->calWeldLine(), 0);
    });
    EXPECT_EQ(output, std::string(kMissingFile) + kMissingFile);
}

TEST(StandardOutput, missing_control_path_is_told_like_a_missing_file) {
    Solver solver;
    solver.host.gv()->m_pControlFilePath = nullptr;
    solver.start();
    const std::string output =
        standardOutputOf([&] { EXPECT_EQ(solver.handle->calWeldLine(), 0); });
    EXPECT_EQ(output, kMissingFile);
}

TEST(StandardOutput, every_process_tells_of_a_missing_file) {
    Solver solver;
    solver.host.processNumber = 2;
    solver.start();
    EXPECT_EQ(standardOutputOf([&] { solver.handle->calWeldLine(); }), kMissingFile);
}

// Method 4 flushes standard output after its trace line, and only then.
TEST(StandardOutput, keeps_the_flush_of_a_traced_method_4) {
    Solver solver;
    solver.start();
    EXPECT_EQ(flushedBy("waiting", [&] { solver.run(kTraced); }), 7);
}

TEST(StandardOutput, no_flush_without_trace) {
    Solver solver;
    solver.start();
    EXPECT_EQ(flushedBy("waiting", [&] { solver.run(section({"", ""})); }), 0);
}

TEST(StandardOutput, no_flush_off_the_master_process) {
    Solver solver;
    solver.host.processNumber = 1;
    solver.start();
    EXPECT_EQ(flushedBy("waiting", [&] { solver.run(kTraced); }), 0);
}

TEST(StandardOutput, no_flush_while_the_trace_file_cannot_be_opened) {
    Solver solver;
    std::filesystem::create_directory(solver.host.tracePath());
    solver.start();
    EXPECT_EQ(flushedBy("waiting", [&] { solver.run(kTraced); }), 0);
}

TEST(StandardOutput, no_flush_in_methods_1_to_3) {
    for (const char* method : {"1", "2", "3"}) {
        Solver solver;
        solver.start();
        const std::string control =
            section({std::string("WeldlingAngleMethod = ") + method, "FlagDebugOutput = 1"});
        EXPECT_EQ(flushedBy("waiting", [&] { solver.run(control); }), 0) << method;
    }
}

}  // namespace weldline::test
