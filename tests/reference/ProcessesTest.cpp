// Partitions as processes against partitions as threads.
#include <gtest/gtest.h>

#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "Processes.h"
#include "RunCase.h"
#include "Workspace.h"

namespace weldline::reference {
namespace {

// The first 100 cases with several partitions from seed 1,000,001 on, cut at random: the library
// gives the same log, bit by bit, whether the partitions run in threads or in processes, and the
// same as the reference.
TEST(Processes, give_the_same_bits_as_threads) {
    constexpr long cases = 100;
    const Workspace workspace;
    Tally tally;
    for (std::uint64_t seed = 1000001; tally.cases() < cases; ++seed) {
        CaseParameters parameters = drawCase(seed);
        if (parameters.partitions == 1) continue;
        parameters.processes = 1;
        const auto difference = runCase(parameters, tally);
        ASSERT_FALSE(difference.has_value()) << report(parameters, *difference);
    }
    std::printf("%s", tally.inWords().c_str());
    EXPECT_GE(tally.casesWithMeetingAngles(), cases / 10);
}

// Bytes come back whole, also more than a pipe holds at once.
TEST(Processes, return_what_their_work_returns) {
    const auto endings =
        inProcesses(3, 60.0, [](int i) { return std::string(200000, static_cast<char>('a' + i)); });
    ASSERT_EQ(endings.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(endings[i].orderly);
        EXPECT_EQ(endings[i].bytes, std::string(200000, static_cast<char>('a' + i)));
    }
}

// A process that is killed and one that does not come back are reported; nothing waits for them.
TEST(Processes, that_die_or_hang_are_reported) {
    const auto endings = inProcesses(2, 0.5, [](int i) -> std::string {
        if (i == 0) raise(SIGKILL);
        while (true) pause();
    });
    EXPECT_FALSE(endings[0].orderly);
    EXPECT_EQ(endings[0].bytes, "a process died of signal 9");
    EXPECT_FALSE(endings[1].orderly);
    EXPECT_EQ(endings[1].bytes, "a process was not ready in time");
}

}  // namespace
}  // namespace weldline::reference
