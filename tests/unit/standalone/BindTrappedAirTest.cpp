// Times of cells that the melt did not reach, by hand and against a plain calculation.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "BindBoxMesh.h"
#include "GridMesh.h"
#include "JoinedPart.h"
#include "bind/TrappedAir.h"
#include "comm/ThreadRanks.h"

namespace weldline::test {

namespace {

using Times = std::vector<float>;

// Cells in a row, their centres 1 apart.
Times closedRow(Times times, std::int64_t closed) {
    const FvMesh mesh = boxMesh(static_cast<int>(times.size()), 1, 1);
    EXPECT_EQ(closeTrappedAir(UncutMesh().part(), mesh, times), closed);
    return times;
}

// Sweeps over all inner faces until nothing changes.
Times closedBySweeps(const FvMesh& mesh, const Times& times) {
    constexpr double far = std::numeric_limits<double>::infinity();
    Vec3 low{far, far, far};
    Vec3 high{-far, -far, -far};
    for (const Vec3& c : mesh.cellCentre) {
        low = {std::min(low.x, c.x), std::min(low.y, c.y), std::min(low.z, c.z)};
        high = {std::max(high.x, c.x), std::max(high.y, c.y), std::max(high.z, c.z)};
    }
    const double latest = *std::max_element(times.begin(), times.end());
    const double slowness = latest / norm(high - low);
    std::vector<double> result(times.begin(), times.end());
    std::replace(result.begin(), result.end(), 0.0, far);
    for (bool changes = true; changes;) {
        changes = false;
        for (int f = 0; f < mesh.innerFaces; ++f)
            for (const auto& [from, to] : {std::pair{mesh.owner[f], mesh.neighbour[f]},
                                           std::pair{mesh.neighbour[f], mesh.owner[f]}}) {
                const double way = norm(mesh.cellCentre[to] - mesh.cellCentre[from]);
                const double arrival = result[from] + slowness * way;
                if (times[to] > 0.0F || !(arrival < result[to])) continue;
                result[to] = arrival;
                changes = true;
            }
    }
    return {result.begin(), result.end()};
}

}  // namespace

// Slowness 5 / 4: from the left 2 + 1.25 and 2 + 2.5, from the right 5 + 1.25.
TEST(TrappedAir, is_closed_from_the_side_that_comes_first) {
    EXPECT_EQ(closedRow({1, 2, 0, 0, 5}, 2), (Times{1, 2, 3.25, 4.5, 5}));
}

// Slowness 6 / 6: from the left 2, 3, 4, from the right 4, 5, 6; they meet at the third.
TEST(TrappedAir, is_closed_from_both_sides) {
    EXPECT_EQ(closedRow({1, 0, 0, 0, 2, 5, 6}, 3), (Times{1, 2, 3, 3, 2, 5, 6}));
}

// Slowness 9 / 6: the cell at 9 would be reached at 4 through the gap.
TEST(TrappedAir, keeps_the_times_of_reached_cells) {
    EXPECT_EQ(closedRow({1, 0, 9, 9, 9, 9, 9}, 1), (Times{1, 2.5, 9, 9, 9, 9, 9}));
}

TEST(TrappedAir, is_not_closed_where_no_melt_is) {
    EXPECT_EQ(closedRow({0, 0, 0}, 0), (Times{0, 0, 0}));
    EXPECT_EQ(closedRow({}, 0), Times{});
}

TEST(TrappedAir, stays_where_its_time_has_no_number) {
    constexpr float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(closedRow({largest, 0, 0}, 0), (Times{largest, 0, 0}));
}

// A corner goes by way of two cells, not straight: (0, 0) to (1, 1) is 2 long.
TEST(TrappedAir, is_closed_through_faces) {
    const FvMesh mesh = boxMesh(2, 2, 1);
    Times times{4, 0, 0, 0};
    EXPECT_EQ(closeTrappedAir(UncutMesh().part(), mesh, times), 3);
    const double slowness = 4.0 / std::sqrt(2.0);
    const auto side = static_cast<float>(4.0 + slowness);
    EXPECT_EQ(times, (Times{4, side, side, static_cast<float>((4.0 + slowness) + slowness)}));
}

// Cut at random, so that gaps lie on several ranks and are entered from several.
TEST(TrappedAir, gets_the_same_times_on_any_number_of_ranks) {
    const MeshPart whole = wholePart(gridMesh(9, 7, 6, 0.2, 5));
    const FvMesh mesh = buildFvMesh(whole.mesh);
    Times times = meetingStreams(whole.mesh);
    for (unsigned c = 0; c < times.size(); ++c)
        if (hashed(c, 1, 2, 3) < 0.6) times[c] = 0.0F;
    const Times expected = closedBySweeps(mesh, times);
    Times alone = times;
    EXPECT_EQ(closeTrappedAir(UncutMesh().part(), mesh, alone),
              std::count(times.begin(), times.end(), 0.0F));
    EXPECT_EQ(alone, expected);
    for (const int ranks : {2, 5}) {
        const std::vector<MeshPart> parts = cutAtRandom(whole, ranks);
        runAsThreads(ranks, [&](Ranks& comm) {
            const JoinedPart own(comm, parts[static_cast<std::size_t>(comm.rank())]);
            const RankPart part{comm, own.interface, own.part.nodeNumber};
            const auto& numbers = own.part.cellNumber;
            Times mine;
            for (const std::int64_t c : numbers) mine.push_back(times[c]);
            closeTrappedAir(part, own.mesh, mine);
            for (std::size_t c = 0; c < mine.size(); ++c)
                EXPECT_EQ(mine[c], expected[numbers[c]]) << "cell " << numbers[c];
        });
    }
}

}  // namespace weldline::test
