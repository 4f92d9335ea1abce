// Where the front came from, by hand and against a plain calculation.
#include "results/FrontApproach.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <tuple>
#include <utility>

#include "BindBoxMesh.h"
#include "GridMesh.h"
#include "JoinedPart.h"
#include "bind/FillTime.h"
#include "comm/OneRank.h"
#include "comm/ThreadRanks.h"

namespace weldline::test {

namespace {

using Times = std::vector<float>;

FrontApproach alongRow(const Times& times) {
    const FvMesh mesh = boxMesh(static_cast<int>(times.size()), 1, 1);
    return frontApproach(UncutMesh().part(), mesh, times);
}

std::vector<double> alongX(const FrontApproach& approach) {
    std::vector<double> x;
    for (const Vec3& direction : approach.direction) x.push_back(direction.x);
    return x;
}

// The reached cells up to three steps through reached cells away, each visited anew.
int earliestNear(const FvMesh& mesh, const Times& times, int cell) {
    std::set<int> near{cell};
    for (int step = 0; step < 3; ++step) {
        std::set<int> more = near;
        for (int f = 0; f < mesh.innerFaces; ++f)
            for (const auto& [a, b] : {std::pair{mesh.owner[f], mesh.neighbour[f]},
                                       std::pair{mesh.neighbour[f], mesh.owner[f]}})
                if (near.contains(a) && isReached(times[b])) more.insert(b);
        near = more;
    }
    const auto key = [&](int c) {
        const Vec3 x = mesh.cellCentre[c];
        return std::tuple(times[c], x.x, x.y, x.z);
    };
    int earliest = cell;
    for (const int c : near) earliest = key(c) < key(earliest) ? c : earliest;
    return times[earliest] < times[cell] ? earliest : cell;
}

float quartileOf(const Times& values) {
    OneRank ranks;
    return lowerQuartile(ranks, values);
}

}  // namespace

// The last cell from three cells before: (16 - 4) / 3.
TEST(FrontApproach, leads_over_three_cells) {
    const FrontApproach approach = alongRow({1, 2, 4, 7, 11, 16});
    EXPECT_EQ(approach.slowness, (Times{0, 1, 1.5, 2, 3, 4}));
    EXPECT_EQ(alongX(approach), (std::vector<double>{0, 1, 1, 1, 1, 1}));
}

TEST(FrontApproach, does_not_lead_through_cells_without_melt) {
    const FrontApproach approach = alongRow({1, 0, 3, 4});
    EXPECT_EQ(approach.slowness, (Times{0, 0, 0, 1}));
    EXPECT_EQ(alongRow({0, 0}).slowness, (Times{0, 0}));
}

// A tie goes to the smaller x; cells of one time have no way between them.
TEST(FrontApproach, of_equal_times) {
    EXPECT_EQ(alongX(alongRow({1, 2, 1})), (std::vector<double>{0, 1, 0}));
    EXPECT_EQ(alongRow({2, 2, 2}).slowness, (Times{0, 0, 0}));
}

// Three rows; melt comes to the outer ones 10 later, so their neighbours show across the row.
TEST(FrontApproach, looks_past_the_lag_at_walls) {
    const FvMesh mesh = boxMesh(5, 3, 1);
    Times times;
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x) times.push_back(static_cast<float>(1 + x + (y == 1 ? 0 : 10)));
    const FrontApproach approach = frontApproach(UncutMesh().part(), mesh, times);
    EXPECT_EQ(approach.slowness[9], 1.0F);
    EXPECT_EQ(approach.direction[9].x, 1.0);
    // From the middle row two cells before, sqrt(5) away.
    EXPECT_NEAR(approach.direction[4].x, 2.0 / std::sqrt(5.0), 1e-15);
    EXPECT_NEAR(approach.slowness[4], 12.0 / std::sqrt(5.0), 1e-6);
}

TEST(FrontApproach, is_the_same_on_any_number_of_ranks) {
    const MeshPart whole = wholePart(gridMesh(7, 6, 5, 0.2, 5));
    const FvMesh mesh = buildFvMesh(whole.mesh);
    Times times = meetingStreams(whole.mesh);
    // Full steps of time, so that many cells have the same one.
    for (unsigned c = 0; c < times.size(); ++c)
        times[c] = hashed(c, 1, 2, 3) < 0.2 ? 0.0F : std::ceil(times[c]);
    const FrontApproach alone = frontApproach(UncutMesh().part(), mesh, times);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const int from = isReached(times[c]) ? earliestNear(mesh, times, c) : c;
        const Vec3 way = mesh.cellCentre[c] - mesh.cellCentre[from];
        const double slowness = from == c ? 0.0 : (double{times[c]} - times[from]) / norm(way);
        EXPECT_EQ(alone.slowness[c], static_cast<float>(slowness)) << c;
    }
    const float quartile = quartileOf(alone.slowness);
    for (const int ranks : {2, 5}) {
        const std::vector<MeshPart> parts = cutAtRandom(whole, ranks);
        runAsThreads(ranks, [&](Ranks& comm) {
            const JoinedPart own(comm, parts[static_cast<std::size_t>(comm.rank())]);
            const auto& numbers = own.part.cellNumber;
            Times mine;
            for (const std::int64_t c : numbers) mine.push_back(times[c]);
            const FrontApproach approach =
                frontApproach({comm, own.interface, own.part.nodeNumber}, own.mesh, mine);
            for (std::size_t c = 0; c < mine.size(); ++c) {
                EXPECT_EQ(approach.slowness[c], alone.slowness[numbers[c]]);
                const Vec3 direction = alone.direction[numbers[c]];
                EXPECT_EQ(approach.direction[c].x, direction.x);
                EXPECT_EQ(approach.direction[c].y, direction.y);
                EXPECT_EQ(approach.direction[c].z, direction.z);
            }
            EXPECT_EQ(lowerQuartile(comm, approach.slowness), quartile);
        });
    }
}

TEST(LowerQuartile, has_a_quarter_of_the_values_below) {
    EXPECT_EQ(quartileOf({4, 1, 3, 2}), 2.0F);
    EXPECT_EQ(quartileOf({8, 7, 6, 5, 4, 3, 2, 1}), 3.0F);
    EXPECT_EQ(quartileOf({1, 2, 3, 4, 5}), 2.0F);
    EXPECT_EQ(quartileOf({7, 7, 7, 7}), 7.0F);
    EXPECT_EQ(quartileOf({0.125F}), 0.125F);
}

TEST(LowerQuartile, counts_values_above_zero) {
    EXPECT_EQ(quartileOf({0, 0, 4, 0, 1, 3, 0, 2}), 2.0F);
    EXPECT_EQ(quartileOf({0, 0}), 0.0F);
    EXPECT_EQ(quartileOf({}), 0.0F);
}

}  // namespace weldline::test
