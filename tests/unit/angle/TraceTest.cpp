// Trace lines of the methods and of truncateAngle, and what method 4 does to standard output.

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "Bench.h"

namespace weldline::test {

namespace {

const std::string kTruncation = "calWeldLine: truncateAngle\n";

std::string lineOf(int method) {
    const char* names[] = {"03Loop", "FaceLoop", "Hybrid", "RBF_Holvex01"};
    return std::string("calWeldLine: CalNodeVectorAngle_Modified_") + names[method - 1] + "\n";
}

// Two cells whose trace goes to the debug file of the test host; the calculator closes it.
struct Traced : TwoCells {
    Traced() {
        line.m_pDebugFile = std::fopen(host.tracePath().c_str(), "wb");
        line.m_FlagDebugOutput = true;
    }
    std::string trace() {
        std::fflush(line.m_pDebugFile);
        return TestHost::readFile(host.tracePath());
    }
    off_t writtenToDisk() const {
        struct stat status {};
        stat(host.tracePath().c_str(), &status);
        return status.st_size;
    }
};

// What arrives at standard output's file of "pending", which stands in its buffer, when `action`
// has run.
off_t flushedBy(const std::function<void()>& action) {
    std::FILE* file = std::tmpfile();
    std::fflush(stdout);
    const int saved = dup(1);
    dup2(fileno(file), 1);
    std::fputs("pending", stdout);
    action();
    struct stat status {};
    fstat(fileno(file), &status);
    std::fflush(stdout);
    dup2(saved, 1);
    close(saved);
    std::fclose(file);
    return status.st_size;
}

class Trace : public testing::TestWithParam<int> {};

}  // namespace

TEST_P(Trace, names_the_method_and_the_truncation) {
    Traced bench;
    bench.run(GetParam());
    EXPECT_EQ(bench.trace(), lineOf(GetParam()) + kTruncation);
}

TEST_P(Trace, each_run_writes_its_lines) {
    Traced bench;
    bench.run(GetParam());
    bench.run(GetParam());
    const std::string once = lineOf(GetParam()) + kTruncation;
    EXPECT_EQ(bench.trace(), once + once);
}

TEST_P(Trace, needs_the_flag) {
    Traced bench;
    bench.line.m_FlagDebugOutput = false;
    bench.run(GetParam());
    EXPECT_EQ(bench.trace(), "");
}

TEST_P(Trace, needs_the_master_process) {
    for (int process : {1, -1, 7}) {
        Traced bench;
        bench.host.processNumber = process;
        bench.run(GetParam());
        EXPECT_EQ(bench.trace(), "");
    }
}

TEST_P(Trace, needs_an_open_file) {
    TwoCells bench;
    bench.line.m_FlagDebugOutput = true;
    EXPECT_EQ(standardOutputOf([&] { bench.run(GetParam()); }), "");
    EXPECT_EQ(bench.angle(1), kHeadOn);
}

TEST_P(Trace, standard_output_stays_empty) {
    Traced bench;
    EXPECT_EQ(standardOutputOf([&] { bench.run(GetParam()); }), "");
}

TEST_P(Trace, only_method_4_flushes_standard_output) {
    Traced bench;
    EXPECT_EQ(flushedBy([&] { bench.run(GetParam()); }), GetParam() == 4 ? 7 : 0);
}

TEST_P(Trace, debug_file_is_not_flushed) {
    Traced bench;
    bench.run(GetParam());
    EXPECT_EQ(bench.writtenToDisk(), 0);
    EXPECT_NE(bench.trace(), "");
}

INSTANTIATE_TEST_SUITE_P(All, Trace, testing::Values(1, 2, 3, 4), methodName);

TEST(TraceOfMethod4, flush_needs_the_flag_the_file_and_the_master_process) {
    Traced flagOff;
    flagOff.line.m_FlagDebugOutput = false;
    EXPECT_EQ(flushedBy([&] { flagOff.run(4); }), 0);

    Traced otherProcess;
    otherProcess.host.processNumber = 1;
    EXPECT_EQ(flushedBy([&] { otherProcess.run(4); }), 0);

    TwoCells noFile;
    noFile.line.m_FlagDebugOutput = true;
    EXPECT_EQ(flushedBy([&] { noFile.run(4); }), 0);
}

TEST(TraceOfTruncation, is_one_line) {
    Traced bench;
    bench.line.truncateAngle();
    EXPECT_EQ(bench.trace(), kTruncation);
}

TEST(TraceOfTruncation, needs_flag_file_and_master_process) {
    Traced flagOff;
    flagOff.line.m_FlagDebugOutput = false;
    flagOff.line.truncateAngle();
    EXPECT_EQ(flagOff.trace(), "");

    Traced otherProcess;
    otherProcess.host.processNumber = 2;
    otherProcess.line.truncateAngle();
    EXPECT_EQ(otherProcess.trace(), "");

    TwoCells noFile;
    noFile.line.m_FlagDebugOutput = true;
    noFile.line.truncateAngle();
    EXPECT_EQ(noFile.angle(1), 0.0);
}

}  // namespace weldline::test
