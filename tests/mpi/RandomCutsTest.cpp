// Two hundred random cuts, METIS and hostile ones; the ranks are threads.

#include <gtest/gtest.h>

#include <bit>
#include <map>
#include <set>

#include "Comparison.h"
#include "PrivateFile.h"
#include "RandomCut.h"

namespace weldline::test {

namespace {

// Ranks that have a node hold the same bits there.
void expectOneAnglePerNode(const std::vector<RankOutcome>& outcomes) {
    std::map<std::int64_t, std::uint64_t> angles;
    for (const RankOutcome& own : outcomes)
        for (std::size_t n = 0; n < own.angles.size(); ++n) {
            const auto bits = std::bit_cast<std::uint64_t>(own.angles[n]);
            EXPECT_EQ(angles.emplace(own.nodeNumber[n], bits).first->second, bits);
        }
}

// No rank holds more than its part: the cells and nodes that the cut gives it, one slot for each
// boundary face, and each cell across its interface once.
void expectNoMoreThanItsPart(const RandomCut& cut, const FvMesh& mesh,
                             const std::vector<RankOutcome>& outcomes) {
    const auto rankOf = [&](int cell) { return cut.partOfCell[static_cast<std::size_t>(cell)]; };
    const std::size_t ranks = outcomes.size();
    std::vector<std::set<std::int64_t>> cells(ranks), nodes(ranks), halo(ranks);
    std::vector<std::size_t> boundary(ranks, 0);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const auto r = static_cast<std::size_t>(rankOf(c));
        cells[r].insert(c);
        nodes[r].insert(mesh.cellNodes[c].begin(), mesh.cellNodes[c].end());
    }
    for (int f = 0; f < mesh.faceCount(); ++f) {
        const int a = mesh.owner[static_cast<std::size_t>(f)];
        if (f >= mesh.innerFaces) {
            ++boundary[static_cast<std::size_t>(rankOf(a))];
            continue;
        }
        const int b = mesh.neighbour[static_cast<std::size_t>(f)];
        if (rankOf(a) == rankOf(b)) continue;
        halo[static_cast<std::size_t>(rankOf(a))].insert(b);
        halo[static_cast<std::size_t>(rankOf(b))].insert(a);
    }
    for (std::size_t r = 0; r < ranks; ++r) {
        const RankOutcome& own = outcomes[r];
        EXPECT_EQ(own.cellNumber, std::vector<std::int64_t>(cells[r].begin(), cells[r].end()));
        EXPECT_EQ(own.nodeNumber, std::vector<std::int64_t>(nodes[r].begin(), nodes[r].end()));
        EXPECT_EQ(own.haloCells, halo[r].size());
        EXPECT_EQ(own.cellSlots, cells[r].size() + boundary[r] + halo[r].size());
    }
}

// Methods 2 and 4 judge every pair on some rank, so that a cut can only take weld nodes away: the
// truncation of a rank does not see the nodes of others.
void expectNothingGained(const RandomCut& cut, const FvMesh& mesh, const WholeOutcome& one,
                         const WholeOutcome& parts) {
    const std::vector<bool> reached =
        CutMap(mesh, cut.partOfCell).reachedByFlags(one.cells, /*passes=*/3);
    EXPECT_LT(gradientDifference(one, parts, reached), 1e-11);
    const AngleDifference angles =
        angleDifference(one, parts, CutMap(mesh, cut.partOfCell).nodesAround(reached));
    EXPECT_EQ(angles.gained, 0);
    EXPECT_EQ(angles.smaller, 0);
}

}  // namespace

class RandomCuts : public testing::TestWithParam<int> {};

TEST_P(RandomCuts, pass) {
    const int ranks = 2 + GetParam() % 11;
    const RandomCut cut(GetParam(), ranks);
    const PrivateFile control(cut.settings);
    const FvMesh mesh = buildFvMesh(cut.whole.mesh);
    const auto outcomes = runCut(cut.whole, cut.partOfCell, ranks, control.path());
    expectOneAnglePerNode(outcomes);
    expectNoMoreThanItsPart(cut, mesh, outcomes);
    EXPECT_EQ(outcomes, runCut(cut.whole, cut.partOfCell, ranks, control.path()));

    const std::vector<int> uncut(cut.partOfCell.size(), 0);
    const WholeOutcome one = assemble(runCut(cut.whole, uncut, 1, control.path()));
    const WholeOutcome parts = assemble(outcomes);
    const bool rbf = cut.method == 4 && cut.gradient == 2;
    if (!rbf && cut.method % 2 == 0) expectNothingGained(cut, mesh, one, parts);
}

INSTANTIATE_TEST_SUITE_P(All, RandomCuts, testing::Range(0, 200));

}  // namespace weldline::test
