#include "io/PointDirectory.h"

#include <gtest/gtest.h>

#include <random>

#include "comm/ThreadRanks.h"

namespace weldline::test {
namespace {

// Two ranks with the place b in common:   a b | b c
TEST(PointDirectory, numbersInOrderOfFirstAppearance) {
    runAsThreads(2, [](Ranks& ranks) {
        const bool isFirst = ranks.rank() == 0;
        const std::vector<Vec3> points = isFirst ? std::vector<Vec3>{{0, 0, 0}, {1, 0, 0}}
                                                 : std::vector<Vec3>{{1, 0, 0}, {2, 0, 0}};
        const PointDirectory directory(ranks, points, {true, true});
        EXPECT_EQ(directory.numbers(),
                  isFirst ? (std::vector<std::int64_t>{0, 1}) : (std::vector<std::int64_t>{1, 2}));
        EXPECT_EQ(directory.total(), 3);
        EXPECT_EQ(directory.belongs(), (std::vector<bool>{true, true}));
        EXPECT_EQ(directory.find({{2, 0, 0}, {3, 0, 0}, {-0.0, 0, 0}}),
                  (std::vector<std::int64_t>{2, -1, 0}));
    });
}

// A gap in the second rank stays: of its two points at the place the first is joined.
TEST(PointDirectory, keepsGaps) {
    runAsThreads(2, [](Ranks& ranks) {
        const std::vector<Vec3> points(ranks.rank() == 0 ? 1 : 2, Vec3{5, 5, 5});
        const PointDirectory directory(ranks, points, std::vector<bool>(points.size(), true));
        EXPECT_EQ(directory.numbers(), ranks.rank() == 0 ? std::vector<std::int64_t>{0}
                                                         : (std::vector<std::int64_t>{0, 1}));
    });
}

// The first rank has a point that only a cell of the second uses, and one that nobody uses.
TEST(PointDirectory, pointsBelongToTheirUsersOrToTheFirst) {
    runAsThreads(3, [](Ranks& ranks) {
        const std::vector<Vec3> points{{1, 1, 1}, {2, 2, 2}};
        const PointDirectory directory(ranks, points, {ranks.rank() == 1, false});
        EXPECT_EQ(directory.belongs(), (std::vector<bool>{ranks.rank() == 1, ranks.rank() == 0}));
        EXPECT_EQ(directory.total(), 2);
    });
}

// Against joining all in one process, with places drawn from few.
TEST(PointDirectory, agreesWithJoiningInOneProcess) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> place(0, 9);
    for (int round = 0; round < 20; ++round) {
        constexpr int size = 4;
        std::vector<std::vector<Vec3>> pieces(size);
        std::vector<Vec3> all;
        std::vector<int> starts{0};
        for (std::vector<Vec3>& piece : pieces) {
            for (int p = place(random) * 3; p > 0; --p) {
                piece.push_back({1.0 * place(random), 1.0 * (place(random) / 5), 0.0});
            }
            all.insert(all.end(), piece.begin(), piece.end());
            starts.push_back(static_cast<int>(all.size()));
        }
        const std::vector<int> expected = joinPieces(all, starts);
        runAsThreads(size, [&](Ranks& ranks) {
            const auto rank = static_cast<std::size_t>(ranks.rank());
            const std::vector<bool> used(pieces[rank].size(), true);
            const PointDirectory directory(ranks, pieces[rank], used);
            EXPECT_EQ(directory.numbers(),
                      std::vector<std::int64_t>(expected.begin() + starts[rank],
                                                expected.begin() + starts[rank + 1]));
            EXPECT_EQ(directory.total(), static_cast<std::int64_t>(all.size()));
        });
    }
}

}  // namespace
}  // namespace weldline::test
