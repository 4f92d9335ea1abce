// The library against the reference on random cases, bit by bit.
#include <gtest/gtest.h>

#include <cstdio>

#include "RunCase.h"
#include "Workspace.h"

namespace weldline::reference {
namespace {

constexpr int casesPerBlock = 1000;

// The sanitizers look at memory, for which fewer will do; they take ten times as long.
#ifdef __SANITIZE_ADDRESS__
constexpr int blocks = 5;
#else
constexpr int blocks = 20;
#endif

class RandomCases : public testing::TestWithParam<int> {};

// Seeds 1000 * block + 1 and following. What a block meets is printed, and a block of this size
// must meet everything that is counted: a generator gone lame must not pass.
TEST_P(RandomCases, library_equals_reference) {
    const Workspace workspace;
    Tally tally;
    for (int i = 1; i <= casesPerBlock; ++i) {
        const CaseParameters parameters =
            drawCase(static_cast<std::uint64_t>(GetParam()) * casesPerBlock + i);
        const auto difference = runCase(parameters, tally);
        ASSERT_FALSE(difference.has_value()) << report(parameters, *difference);
    }
    std::printf("%s", tally.inWords().c_str());
    EXPECT_GE(tally.casesWithMeetingAngles(), casesPerBlock / 10);
    // ProcessesTest.cpp plays partitions as processes.
    EXPECT_EQ(tally.missing(), std::vector<std::string>{"partitions as processes, too"});
}

INSTANTIATE_TEST_SUITE_P(Blocks, RandomCases, testing::Range(0, blocks));

}  // namespace
}  // namespace weldline::reference
