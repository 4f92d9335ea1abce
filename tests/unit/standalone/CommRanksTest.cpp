#include <gtest/gtest.h>

#include <mutex>
#include <string>

#include "CCommunication.h"
#include "RanksContract.h"
#include "base/Errors.h"
#include "comm/CollectiveMaximum.h"
#include "comm/OneRank.h"
#include "comm/ThreadRanks.h"

namespace weldline {
namespace {

TEST(OneRank, keeps_the_contract) {
    OneRank ranks;
    EXPECT_EQ(ranks.size(), 1);
    test::checkRanks(ranks);
}

TEST(ThreadRanks, keep_the_contract) {
    for (const int size : {1, 2, 3, 4, 8}) {
        SCOPED_TRACE(size);
        runAsThreads(size, [&](Ranks& ranks) {
            EXPECT_EQ(ranks.size(), size);
            test::checkRanks(ranks);
        });
    }
}

// What a rank throws that waits for others.
std::string failureOfWaiting(const std::function<void()>& call) {
    try {
        call();
    } catch (const RunError& error) {
        return error.what();
    }
    return "none";
}

TEST(ThreadRanks, that_wait_for_a_failed_rank_fail_and_the_first_failure_is_told) {
    std::mutex mutex;
    std::vector<std::string> failures;
    const auto run = [&] {
        runAsThreads(3, [&](Ranks& ranks) {
            if (ranks.rank() == 1) throw InputError("torn paper");
            const std::string failure = failureOfWaiting([&] { ranks.sum(1); });
            const std::lock_guard lock(mutex);
            failures.push_back(failure);
        });
    };
    EXPECT_THROW(run(), InputError);
    EXPECT_EQ(failures, std::vector<std::string>(2, "another rank has left the run"));
}

TEST(ThreadRanks, that_wait_in_a_halo_exchange_for_a_rank_that_has_returned_fail) {
    const auto run = [] {
        runAsThreads(2, [](Ranks& ranks) {
            const HaloLinks links{{{1 - ranks.rank(), {1}, {2}}}};
            const auto exchange = ranks.haloExchange(links);
            std::vector<double> values{0.0, 1.0 + ranks.rank(), 0.0};
            exchange->DDM_Exch(values.data());
            EXPECT_EQ(values[2], 2.0 - ranks.rank());
            if (ranks.rank() == 0) exchange->DDM_Exch(values.data());
        });
    };
    EXPECT_THROW(run(), RunError);
}

TEST(CollectiveMaximum, is_the_maximum_of_all_ranks) {
    runAsThreads(3, [](Ranks& ranks) {
        CollectiveMaximum collective(ranks);
        int value = ranks.rank() == 1 ? 1 : 0;
        EXPECT_EQ(collective.AllMax(value), 1);
        EXPECT_EQ(value, ranks.rank() == 1 ? 1 : 0);
        value = -ranks.rank();
        EXPECT_EQ(collective.AllMax(value), 0);
    });
}

}  // namespace
}  // namespace weldline
