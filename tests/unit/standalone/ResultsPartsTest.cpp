// Fill time, flow and weld lines of a mesh that lies on several ranks.

#include <gtest/gtest.h>

#include "BindBoxMesh.h"
#include "GridMesh.h"
#include "JoinedPart.h"
#include "MeshParts.h"
#include "bind/FillTime.h"
#include "comm/ThreadRanks.h"
#include "partition/SplitMesh.h"
#include "results/FlowDirection.h"
#include "results/WeldLines.h"

namespace weldline::test {

namespace {

// A row of boxes of length 1, box by box on a rank of its own: | 0 | 1 | 2 | 3 |. Node 4i + k
// stands at wall i; the gate is the left end.
MeshPart row() {
    MeshPart whole = wholePart(boxRow({0, 1, 2, 3, 4}));
    Patch gate{"gate", {}};
    gate.faces.append(std::vector<int>{0, 2, 3, 1});
    whole.patches = {gate};
    return whole;
}

struct Joined : JoinedPart {
    RankPart rankPart;

    Joined(Ranks& ranks, MeshPart own)
        : JoinedPart(ranks, std::move(own)), rankPart{ranks, interface, part.nodeNumber} {}
};

void onRow(const std::function<void(Ranks&, const Joined&)>& check) {
    const MeshPart whole = row();
    const std::vector<int> partOfCell{0, 1, 2, 3};
    MeshSplitter splitter(whole, partOfCell, 4);
    std::vector<MeshPart> parts;
    for (int p = 0; p < 4; ++p) parts.push_back(splitter.part(p));
    runAsThreads(4, [&](Ranks& ranks) {
        check(ranks, Joined(ranks, parts[static_cast<std::size_t>(ranks.rank())]));
    });
}

}  // namespace

// 0 0 2 0: the first two are filled at the start, the last is behind the front.
TEST(FillTimeOfParts, zeros_are_followed_across_ranks) {
    onRow([](Ranks& ranks, const Joined& own) {
        const std::vector<double> raw{ranks.rank() == 2 ? 2.0 : 0.0};
        const FillTime fill =
            prepareFillTime(own.rankPart, raw, own.mesh, own.groups, ZeroFillTime::Automatic);
        EXPECT_EQ(fill.values[0], (std::array{2e-6F, 2e-6F, 2.0F, 0.0F}[ranks.rank()]));
        EXPECT_EQ(fill.counts.reached, 3);
        EXPECT_EQ(fill.counts.zeroFilled, 2);
        EXPECT_EQ(fill.counts.zeroNotReached, 1);
        EXPECT_EQ(fill.counts.notReached, 1);
        EXPECT_EQ(fill.counts.earliest, 2.0);
        EXPECT_EQ(fill.counts.latest, 2.0);
    });
}

// A mark on one rank says what a zero means on all.
TEST(FillTimeOfParts, marks_count_for_all) {
    onRow([](Ranks& ranks, const Joined& own) {
        const std::vector<double> raw{std::array{4.0, 0.0, 0.0, -1.0}[ranks.rank()]};
        const FillTime fill =
            prepareFillTime(own.rankPart, raw, own.mesh, own.groups, ZeroFillTime::Automatic);
        EXPECT_EQ(fill.values[0], (std::array{4.0F, 4e-6F, 4e-6F, 0.0F}[ranks.rank()]));
        EXPECT_EQ(fill.counts.marked, 1);
        EXPECT_EQ(fill.counts.zeroFilled, 2);
    });
}

// Times 1 2 4 and one that is not reached: the face values are 1.5 and 3, so the gradients are
// 0.5, 1.5 and 1.
TEST(FlowOfParts, sees_the_cells_across) {
    onRow([](Ranks& ranks, const Joined& own) {
        const std::vector<float> time{std::array{1.0F, 2.0F, 4.0F, 0.0F}[ranks.rank()]};
        const std::vector<float> halo = haloValues(ranks, own.interface, time);
        CellsAcross across;
        across.lambda = own.interface.lambda;
        for (const int cell : own.interface.haloOfFace)
            across.fillTime.push_back(halo[static_cast<std::size_t>(cell)]);
        const std::vector<Vec3> gradient = fillTimeGradients(own.mesh, time, across);
        EXPECT_DOUBLE_EQ(gradient[0].x, (std::array{0.5, 1.5, 1.0, 0.0}[ranks.rank()]));
        EXPECT_EQ(gradient[0].y, 0.0);
    });
}

//   wall   0   1   2   3   4       walls 0 and 1 are one line of 8 nodes through ranks 0 and 1;
//          #---#       #---        nodes 12 and 13 of wall 3 another one, its first node shared
TEST(WeldLinesOfParts, are_those_of_the_whole) {
    onRow([](Ranks& ranks, const Joined& own) {
        std::vector<double> angles(8, 180.0);
        for (std::size_t n = 0; n < 8; ++n) {
            const std::int64_t number = own.part.nodeNumber[n];
            if (number < 8) angles[n] = 10.0 * static_cast<double>(number + 1);
            if (number == 12 || number == 13) angles[n] = 5.0;
        }
        const std::vector<float> time{static_cast<float>(ranks.rank() + 1)};
        const WeldLines lines = findWeldLines(own.rankPart, own.mesh, angles, time, 180.0);
        EXPECT_EQ(lines.weldNodes, 10);
        ASSERT_EQ(lines.lines.size(), 2U);
        const WeldLine& first = lines.lines[0];
        EXPECT_EQ(first.id, 1);
        EXPECT_EQ(first.nodeCount, 8);
        EXPECT_EQ(first.nodes.size(), (std::array<std::size_t, 4>{8, 4, 0, 0}[ranks.rank()]));
        EXPECT_EQ(first.smallestAngle, 10.0);
        EXPECT_EQ(first.meanAngle, 45.0);  // (10 + ... + 80) / 8
        EXPECT_EQ(first.low.x, 0.0);
        EXPECT_EQ(first.high.x, 1.0);
        EXPECT_EQ(first.centroid.x, 0.5);
        EXPECT_EQ(first.firstTime, 1.0);  // wall 0: cell 0
        EXPECT_EQ(first.lastTime, 2.0);   // wall 1: cells 0 and 1
        EXPECT_EQ(lines.lines[1].nodeCount, 2);
        EXPECT_EQ(lines.lines[1].firstTime, 4.0);  // wall 3: cells 2 and 3
        const int at3 = ranks.rank() < 2 ? 0 : 2;
        EXPECT_EQ(lines.nodeLine[ranks.rank() == 3 ? 0 : 4], ranks.rank() == 0 ? 1 : at3);
    });
}

// Of two lines with four nodes each that with the smaller node is the first, wherever it lies.
TEST(WeldLinesOfParts, of_equal_size_go_by_their_smallest_node) {
    onRow([](Ranks&, const Joined& own) {
        std::vector<double> angles(8, 180.0);
        for (std::size_t n = 0; n < 8; ++n) {
            const std::int64_t wall = own.part.nodeNumber[n] / 4;
            if (wall == 2 || wall == 4) angles[n] = wall == 2 ? 90.0 : 20.0;
        }
        const WeldLines lines = findWeldLines(own.rankPart, own.mesh, angles, {1.0F}, 180.0);
        ASSERT_EQ(lines.lines.size(), 2U);
        EXPECT_EQ(lines.lines[0].smallestAngle, 90.0);
        EXPECT_EQ(lines.lines[1].smallestAngle, 20.0);
    });
}

// A line that winds through all ranks becomes one, however long the way of its smallest number is.
TEST(WeldLinesOfParts, join_through_all_ranks) {
    onRow([](Ranks&, const Joined& own) {
        const std::vector<double> angles(8, 100.0);
        const WeldLines lines = findWeldLines(own.rankPart, own.mesh, angles, {1.0F}, 180.0);
        ASSERT_EQ(lines.lines.size(), 1U);
        EXPECT_EQ(lines.lines[0].nodeCount, 20);
        EXPECT_EQ(lines.weldNodes, 20);
    });
}

}  // namespace weldline::test
