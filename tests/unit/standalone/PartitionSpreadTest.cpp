// Ranks without cells take over, and patch faces find their cells.

#include <gtest/gtest.h>

#include "GridMesh.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "comm/ThreadRanks.h"
#include "partition/DeliverPatches.h"
#include "partition/SplitMesh.h"
#include "partition/SpreadMesh.h"

namespace weldline::test {

namespace {

using Helped = std::vector<int>;

// Two boxes on two ranks with the face of nodes 4 to 7 between them:
//
//     |  0  |  1  |      walls at x = 0, 1, 2; nodes 4i to 4i + 3 stand at wall i
MeshPart halfOfTwoBoxes(int rank) {
    static const MeshPart whole = [] {
        MeshPart part = wholePart(boxRow({0, 1, 2}));
        part.patches = {{"gate", {}}, {"vent", {}}};
        return part;
    }();
    static const std::vector<int> partOfCell{0, 1};
    return MeshSplitter(whole, partOfCell, 2).part(rank);
}

PatchFaces onlyFirstRank(const Ranks& ranks, const PatchFaces& faces) {
    return ranks.rank() == 0 ? faces : PatchFaces{};
}

}  // namespace

TEST(Helpers, go_where_most_cells_are_per_part) {
    EXPECT_EQ(chooseHelpers({8, 0, 0, 0}), (Helped{-1, 0, 0, 0}));
    // 10 : 7; then 5 : 7; then 5 : 3.5
    EXPECT_EQ(chooseHelpers({0, 10, 0, 7, 0}), (Helped{1, -1, 3, -1, 1}));
    EXPECT_EQ(chooseHelpers({5, 5}), (Helped{-1, -1}));
}

TEST(Helpers, stay_idle_where_every_part_has_one_cell) {
    EXPECT_EQ(chooseHelpers({2, 0, 0}), (Helped{-1, 0, -1}));
    EXPECT_EQ(chooseHelpers({0, 0}), (Helped{-1, -1}));
}

TEST(SpreadMesh, gives_every_rank_a_share) {
    const MeshPart whole = [] {
        MeshPart part = wholePart(hexahedraMesh(6, 4, 2));
        part.cellFields = {std::vector<double>(48, 3.0)};
        return part;
    }();
    runAsThreads(4, [&](Ranks& ranks) {
        MeshPart part;
        if (ranks.rank() == 2) part = whole;
        spreadMesh(ranks, part);
        EXPECT_GT(part.mesh.cellCount(), 6);
        EXPECT_LT(part.mesh.cellCount(), 18);
        EXPECT_EQ(ranks.sum(part.mesh.cellCount()), 48);
        EXPECT_EQ(part.cellFields.at(0).size(), part.cellNumber.size());
        EXPECT_EQ(part.patches.size(), whole.patches.size());
    });
}

TEST(PatchFaceDelivery, brings_faces_to_their_cells) {
    runAsThreads(2, [](Ranks& ranks) {
        MeshPart part = halfOfTwoBoxes(ranks.rank());
        PatchFaces faces;
        faces.append(0, 0, std::vector<std::int64_t>{0, 2, 3, 1});
        faces.append(1, 0, std::vector<std::int64_t>{8, 10, 11, 9});
        deliverPatchFaces(ranks, onlyFirstRank(ranks, faces), part);
        EXPECT_EQ(part.patches[0].faces.count(), ranks.rank() == 0 ? 1 : 0);
        EXPECT_EQ(part.patches[1].faces.count(), ranks.rank() == 0 ? 0 : 1);
        if (ranks.rank() == 0) return;
        // Nodes 4 to 11 are the points 0 to 7 of this rank.
        EXPECT_EQ(part.patches[1].faces.entries, (std::vector<int>{4, 6, 7, 5}));
    });
}

TEST(PatchFaceDelivery, refuses_faces_of_no_cell_on_all_ranks) {
    runAsThreads(2, [](Ranks& ranks) {
        MeshPart part = halfOfTwoBoxes(ranks.rank());
        PatchFaces faces;
        faces.append(1, 6, std::vector<std::int64_t>{0, 4, 8});
        try {
            deliverPatchFaces(ranks, onlyFirstRank(ranks, faces), part);
            ADD_FAILURE() << "delivered";
        } catch (const InputError& error) {
            EXPECT_EQ(std::string(error.what()).rfind("face 6 of patch 'vent' is no boundary", 0),
                      0U)
                << error.what();
        }
    });
}

}  // namespace weldline::test
