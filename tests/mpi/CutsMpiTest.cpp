// Ranks: 2 3 4 8

#include <gtest/gtest.h>

#include "CutRun.h"
#include "MpiTest.h"
#include "PrivateFile.h"
#include "RandomCut.h"
#include "comm/Messages.h"
#include "partition/PackMeshPart.h"
#include "partition/SplitMesh.h"

namespace weldline::test {

namespace {

// Rank 0 splits the mesh and sends every rank its part.
MeshPart sentPart(Ranks& ranks, const RandomCut& cut) {
    std::vector<Bytes> toRanks(static_cast<std::size_t>(ranks.size()));
    if (ranks.rank() == 0) {
        MeshSplitter splitter(cut.whole, cut.partOfCell, ranks.size());
        for (int r = 0; r < ranks.size(); ++r)
            toRanks[static_cast<std::size_t>(r)] = packMeshPart(splitter.part(r));
    }
    return unpackMeshPart(ranks.exchange(std::move(toRanks)).front());
}

bool sameBits(const std::vector<double>& a, const std::vector<double>& b) {
    return toBytes(a) == toBytes(b);
}

}  // namespace

// The same cut gives the same bits, whether the ranks are threads or processes.
TEST(MpiCuts, agree_with_threads_to_the_last_bit) {
    const auto ranks = mpiSession().world();
    for (int number = 1000; number < 1024; ++number) {
        SCOPED_TRACE(number);
        const RandomCut cut(number, ranks->size());
        const PrivateFile control(cut.settings);
        const RankOutcome own = runPart(*ranks, sentPart(*ranks, cut), control.path());
        const RankOutcome thread = runCut(cut.whole, cut.partOfCell, ranks->size(),
                                          control.path())[static_cast<std::size_t>(ranks->rank())];
        EXPECT_EQ(own.cellNumber, thread.cellNumber);
        EXPECT_EQ(own.nodeNumber, thread.nodeNumber);
        EXPECT_TRUE(sameBits(own.angles, thread.angles));
        EXPECT_EQ(toBytes(own.cells), toBytes(thread.cells));
        EXPECT_EQ(own.cellSlots, thread.cellSlots);
    }
}

}  // namespace weldline::test
