// Ranks: 3, as processes that the test starts.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "ProgramMpiTest.h"

// One rank without memory ends the run of all, with one line and nothing left.

namespace weldline::test {

namespace {

class MpiMemory : public MpiProgramTest {
  protected:
    // The address space that the second of three ranks takes.
    long kilobytesOf(const Names& command) const {
        long most = 0;
        Setting setting;
        setting.whileRunning = [&](int launcher) {
            bool hasStarted = false;
            for (std::vector<int> ranks; !hasStarted || !ranks.empty();) {
                ranks = childrenOf(launcher);
                hasStarted = hasStarted || !ranks.empty();
                for (const int rank : ranks)
                    if (isSecond(rank)) most = std::max(most, peakOf(rank));
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        };
        EXPECT_EQ(onRanks(3, command, setting).exitCode, 0);
        return most;
    }

    static bool isSecond(int process) {
        return contains(read("/proc/" + std::to_string(process) + "/environ"),
                        "OMPI_COMM_WORLD_RANK=1");
    }

    static long peakOf(int process) {
        std::ifstream status("/proc/" + std::to_string(process) + "/status");
        for (std::string line; std::getline(status, line);)
            if (line.starts_with("VmPeak:")) return std::atol(line.c_str() + 7);
        return 0;
    }
};

// More memory than MPI and a small mesh need, and less than a large one does.
TEST_F(MpiMemory, of_one_rank_ends_all) {
    write("whole.vtu", plateWithTwoFronts(6, 4, 3));
    write("large.vtu", plateWithTwoFronts(80, 50, 40));
    const long enough = kilobytesOf({"analyze", at("whole.vtu")});
    // The rank without memory gets a place of its own for its temporaries.
    const std::filesystem::path own = at("own");
    std::filesystem::create_directory(own);
    int failures = 0;
    for (const long more : {5000, 15000, 25000}) {
        const std::string program =
            "if [ $OMPI_COMM_WORLD_RANK = 1 ]; then ulimit -v " + std::to_string(enough + more) +
            "; export TMPDIR=" + own.string() + "; fi; exec " WELDLINE_PROGRAM " \"$@\"";
        const Outcome outcome =
            onRanks(3, {"-c", program, "weldline", "analyze", at("large.vtu")}, {}, "/bin/sh");
        EXPECT_EQ(outcome.signal, 0);
        if (outcome.exitCode == 0) continue;
        ++failures;
        EXPECT_TRUE(std::filesystem::is_empty(own));
        const Names lines = ownLines(outcome);
        ASSERT_EQ(lines.size(), 1U) << outcome.err;
        EXPECT_TRUE(contains(lines[0], at("large.vtu")));
        EXPECT_TRUE(contains(lines[0], "memory"));
    }
    EXPECT_GT(failures, 0);
    std::filesystem::remove(own);
    EXPECT_EQ(entries(), (Names{"large.vtu", "whole.vtu"}));
    // The launcher gives the other ranks a second, which a busy disk may take from them. What they
    // could not remove goes with the next run.
    EXPECT_EQ(onRanks(3, {"analyze", at("whole.vtu")}).exitCode, 0);
    EXPECT_EQ(temporaries(), Names{});
}

}  // namespace

}  // namespace weldline::test
