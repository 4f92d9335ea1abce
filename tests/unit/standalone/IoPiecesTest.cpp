// Sharing the pieces of a data set among ranks.
#include "IoFiles.h"
#include "io/PieceList.h"

namespace weldline::test {
namespace {

using Pieces = FileTest;

std::vector<Piece> ofBytes(const std::vector<double>& bytes) {
    std::vector<Piece> pieces;
    for (const double size : bytes) {
        pieces.push_back({Piece::Kind::Grids, "", "", size});
    }
    return pieces;
}

TEST_F(Pieces, areDealtInStretchesOfEqualBytes) {
    EXPECT_EQ(dealPieces(ofBytes({1, 1, 1, 1}), 2), (std::vector<int>{0, 0, 1, 1}));
    // Middles at 3, 6.5 and 7.5 of 8 bytes; the border lies at 4.
    EXPECT_EQ(dealPieces(ofBytes({6, 1, 1}), 2), (std::vector<int>{0, 1, 1}));
    EXPECT_EQ(dealPieces(ofBytes({5}), 1), std::vector<int>{0});
}

TEST_F(Pieces, leaveNoRankIdleWhileTheyLast) {
    // By bytes alone all but the first would go to the last rank.
    EXPECT_EQ(dealPieces(ofBytes({100, 1, 1, 1}), 3), (std::vector<int>{0, 1, 2, 2}));
    EXPECT_EQ(dealPieces(ofBytes({1, 1, 1, 100}), 3), (std::vector<int>{0, 0, 1, 2}));
}

TEST_F(Pieces, haveAReaderEach) {
    EXPECT_EQ(dealPieces(ofBytes({1}), 4), std::vector<int>{2});
    EXPECT_EQ(dealPieces(ofBytes({1, 1}), 4), (std::vector<int>{1, 3}));
    // The first fills three quarters of four ranks, its middle lies in the second; the others
    // follow.
    EXPECT_EQ(dealPieces(ofBytes({6, 1, 1}), 4), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(dealPieces(ofBytes({0, 0, 0}), 3), (std::vector<int>{0, 1, 2}));
}

TEST_F(Pieces, ofACaseAreItsProcessesByNumber) {
    for (const char* name : {"processor10", "processor2", "processor0", "processors", "other"}) {
        put("case/" + std::string(name) + "/constant/polyMesh/owner", "x");
    }
    put("case/system/controlDict", "");
    const std::string file = put("case/case.foam", "");
    EXPECT_THROW(listPieces(file), std::runtime_error);  // 1 and 3 to 9 are missing
    for (int i : {1, 3, 4, 5, 6, 7, 8, 9}) {
        put("case/processor" + std::to_string(i) + "/constant/polyMesh/owner", "x");
    }
    const PieceList list = listPieces(file);
    EXPECT_EQ(list.format, "decomposed OpenFOAM case");
    ASSERT_EQ(list.pieces.size(), 11U);
    EXPECT_EQ(list.pieces[2].name, "processor2");
    EXPECT_EQ(list.pieces[10].name, "processor10");
}

// A case that was put together again is read as a whole, until its processes are ahead of it.
TEST_F(Pieces, ofACaseAreReadWhereTheyAreAhead) {
    put("case/system/controlDict", "");
    put("case/constant/polyMesh/owner", "x");
    put("case/processor0/constant/polyMesh/owner", "x");
    put("case/2/fillTime", "x");
    put("case/processor0/2/fillTime", "x");
    const std::string file = put("case/case.foam", "");
    EXPECT_EQ(listPieces(file).pieces[0].name, "");
    put("case/processor0/2.5/fillTime", "x");
    EXPECT_EQ(listPieces(file).pieces[0].name, "processor0");
}

}  // namespace
}  // namespace weldline::test
