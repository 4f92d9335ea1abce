#include "RanksContract.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

#include "CCommunication.h"
#include "base/Errors.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"

namespace weldline::test {

namespace {

void checkReductions(Ranks& ranks) {
    const std::int64_t size = ranks.size();
    // Each rank is the largest once.
    for (int largest = 0; largest < ranks.size(); ++largest) {
        const bool own = ranks.rank() == largest;
        EXPECT_EQ(ranks.maximum(std::int64_t{own ? -3 : -4}), -3);
        EXPECT_EQ(ranks.maximum(own ? 1.5 : -2.5), 1.5);
    }
    EXPECT_EQ(ranks.sum(ranks.rank() + 1), size * (size + 1) / 2);
    // Beyond 32 bits.
    const std::int64_t large = std::int64_t{1} << 40U;
    EXPECT_EQ(ranks.sum(large), size * large);
    EXPECT_EQ(ranks.maximum(large + ranks.rank()), large + size - 1);
}

// Message of `from` to `to` in a round: length and content tell all three.
std::vector<int> message(int from, int to, int round) {
    std::vector<int> values(static_cast<std::size_t>((3 * from + to + round) % 5));
    std::iota(values.begin(), values.end(), 10000 * round + 100 * from + to);
    return values;
}

void checkMessages(Ranks& ranks) {
    for (int round = 0; round < 6; ++round) {
        std::vector<std::vector<int>> toRanks;
        for (int to = 0; to < ranks.size(); ++to)
            toRanks.push_back(message(ranks.rank(), to, round));
        const std::vector<std::vector<int>> received = exchangeValues(ranks, toRanks);
        ASSERT_EQ(received.size(), toRanks.size());
        for (int from = 0; from < ranks.size(); ++from)
            EXPECT_EQ(received[static_cast<std::size_t>(from)], message(from, ranks.rank(), round));
    }
}

void checkHelpers(Ranks& ranks) {
    const auto text = [](int rank) {
        return std::vector<char>(static_cast<std::size_t>(rank), static_cast<char>('a' + rank));
    };
    const std::vector<Bytes> gathered = gatherToFirst(ranks, toBytes(text(ranks.rank())));
    ASSERT_EQ(gathered.size(), ranks.rank() == 0 ? static_cast<std::size_t>(ranks.size()) : 0U);
    for (std::size_t r = 0; r < gathered.size(); ++r)
        EXPECT_EQ(fromBytes<char>(gathered[r]), text(static_cast<int>(r)));

    for (int from = 0; from < ranks.size(); ++from)
        EXPECT_EQ(fromBytes<char>(broadcast(ranks, toBytes(text(ranks.rank())), from)), text(from));

    // 1, 2, 3, ... before rank r: r (r + 1) / 2.
    EXPECT_EQ(sumBefore(ranks, ranks.rank() + 1), ranks.rank() * (ranks.rank() + 1) / 2);
}

// A ring in which each rank sends the slots 2 and 1 to its neighbours, that are none in a run of
// one and one in a run of two, and receives into two slots per link.
HaloLinks ring(const Ranks& ranks) {
    HaloLinks links;
    for (int other = 0; other < ranks.size(); ++other) {
        const int apart = (other - ranks.rank() + ranks.size()) % ranks.size();
        if (other == ranks.rank() || (apart != 1 && apart != ranks.size() - 1)) continue;
        const int slot = 3 + 2 * static_cast<int>(links.links.size());
        links.links.push_back({other, {2, 1}, {slot, slot + 1}});
    }
    return links;
}

void checkHaloExchange(Ranks& ranks) {
    const HaloLinks links = ring(ranks);
    const auto first = ranks.haloExchange(links);
    const auto second = ranks.haloExchange(links);
    for (int round = 0; round < 20; ++round) {
        CCommunication& exchange = round % 3 == 0 ? *second : *first;
        const double own = 100.0 * round + ranks.rank();
        std::vector<double> values{-1.0, own, own + 0.5, -1.0, -1.0, -1.0, -1.0, -7.0};
        std::vector<double> expected = values;
        for (const HaloLinks::Link& link : links.links) {
            const double other = 100.0 * round + link.rank;
            expected[static_cast<std::size_t>(link.receiveSlots[0])] = other + 0.5;
            expected[static_cast<std::size_t>(link.receiveSlots[1])] = other;
        }
        exchange.DDM_Exch(values.data());
        EXPECT_EQ(values, expected) << "round " << round;
    }
}

// What all ranks are told when the ranks from `first` on fail, each with a text of its own.
template <class Error>
std::string toldError(Ranks& ranks, int first) {
    try {
        together(ranks, [&] {
            if (ranks.rank() >= first) throw Error("rank " + std::to_string(ranks.rank()));
        });
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing";
}

void checkAgreement(Ranks& ranks) {
    EXPECT_EQ(together(ranks, [&] { return ranks.rank(); }), ranks.rank());
    for (int first = 0; first < ranks.size(); ++first) {
        const std::string expected = "rank " + std::to_string(first);
        EXPECT_EQ(toldError<InputError>(ranks, first), expected);
        EXPECT_EQ(toldError<UsageError>(ranks, first), expected);
        EXPECT_EQ(toldError<RunError>(ranks, first), expected);
    }
    const auto failing = [&](auto error) {
        return [&ranks, error] {
            if (ranks.rank() == ranks.size() - 1) throw error;
        };
    };
    EXPECT_THROW(together(ranks, failing(std::bad_alloc())), std::bad_alloc);
    EXPECT_THROW(together(ranks, failing(std::logic_error("other"))), RunError);
}

}  // namespace

void checkRanks(Ranks& ranks) {
    ASSERT_GE(ranks.rank(), 0);
    ASSERT_LT(ranks.rank(), ranks.size());
    EXPECT_EQ(ranks.sum(std::int64_t{1} << static_cast<unsigned>(ranks.rank())),
              (std::int64_t{1} << static_cast<unsigned>(ranks.size())) - 1);  // each rank once
    checkReductions(ranks);
    checkMessages(ranks);
    checkHelpers(ranks);
    checkHaloExchange(ranks);
    checkAgreement(ranks);
}

}  // namespace weldline::test
