#include "fill/FillQuality.h"

#include <gtest/gtest.h>

#include "BindBoxMesh.h"

namespace weldline::test {

namespace {

using Cells = std::vector<int>;

// A row of cubes along x. `sides` as for boxGroups: of the row, x- and x+ come first.
FillQuality qualityOfRow(const std::vector<float>& times, std::string_view sides = "WWWWWW") {
    const FvMesh mesh = boxMesh(static_cast<int>(times.size()), 1, 1);
    return qualityOf(mesh, boxGroups(mesh, sides), times, std::vector<Vec3>(times.size()));
}

// | 1 | 2 | 0 | 4 | 0 | of equal volume
TEST(FillQuality, share_of_the_volume_that_is_filled) {
    const FillQuality quality = qualityOfRow({1, 2, 0, 4, 0});
    EXPECT_EQ(quality.reached, 3);
    EXPECT_DOUBLE_EQ(quality.filledVolume, 0.6);
}

TEST(FillQuality, late_cells_are_later_than_their_neighbours) {
    EXPECT_EQ(qualityOfRow({1, 2, 3, 2, 1}).lateCells, Cells{2});
    EXPECT_EQ(qualityOfRow({1, 2, 3, 3, 1}).lateCells, Cells{});
    EXPECT_EQ(qualityOfRow({1, 2, 3, 4, 5}).lateCells, Cells{4});
}

TEST(FillQuality, a_late_cell_has_no_later_cell_two_steps_away) {
    EXPECT_EQ(qualityOfRow({1, 3, 2, 4, 3, 2, 1}).lateCells, Cells{3});
    EXPECT_EQ(qualityOfRow({1, 3, 2, 2, 4, 2, 1}).lateCells, (Cells{1, 4}));
}

TEST(FillQuality, cells_beside_unfilled_ones_are_not_late) {
    EXPECT_EQ(qualityOfRow({1, 2, 0, 2, 1}).lateCells, Cells{});
}

// The outlet lies on the last cell; the one before is next to it.
TEST(FillQuality, cells_at_a_vent_and_next_to_it_are_not_late) {
    EXPECT_EQ(qualityOfRow({1, 2, 3, 4, 3}, "WOWWWW").lateCells, Cells{});
    EXPECT_EQ(qualityOfRow({1, 2, 4, 3, 2}, "WOWWWW").lateCells, Cells{2});
}

TEST(FillQuality, early_cells_are_earlier_than_their_neighbours_and_those_around) {
    EXPECT_EQ(qualityOfRow({3, 2, 1, 2, 3}).earlyCells, Cells{2});
    EXPECT_EQ(qualityOfRow({4, 2, 3, 1, 2, 3, 4}).earlyCells, Cells{3});
    EXPECT_EQ(qualityOfRow({0, 0, 1, 0, 0}).earlyCells, Cells{2});
}

TEST(FillQuality, cells_at_an_inlet_and_next_to_it_are_not_early) {
    EXPECT_EQ(qualityOfRow({2, 1, 2, 3, 4}, "IWWWWW").earlyCells, Cells{});
    EXPECT_EQ(qualityOfRow({3, 2, 1, 2, 3}, "IWWWWW").earlyCells, Cells{2});
}

TEST(FillQuality, a_cell_alone_is_neither_late_nor_early) {
    EXPECT_TRUE(qualityOfRow({1}).lateCells.empty());
    EXPECT_TRUE(qualityOfRow({1}).earlyCells.empty());
}

TEST(FillQuality, pockets_hang_together_and_the_largest_comes_first) {
    const FillQuality quality = qualityOfRow({1, 0, 2, 0, 0});
    ASSERT_EQ(quality.pockets.size(), 2U);
    EXPECT_EQ(quality.pockets[0].cell, 3);
    EXPECT_EQ(quality.pockets[0].cells, 2);
    EXPECT_EQ(quality.pockets[1].cell, 1);
    EXPECT_EQ(quality.pockets[1].cells, 1);
}

TEST(FillQuality, unfilled_cells_that_hang_together_with_a_vent_are_no_pocket) {
    const FillQuality quality = qualityOfRow({1, 0, 2, 0, 0}, "WOWWWW");
    ASSERT_EQ(quality.pockets.size(), 1U);
    EXPECT_EQ(quality.pockets[0].cell, 1);
}

// Differences 1, 2 and 3; of the cells the largest are 1, 2, 3, 3.
TEST(FillQuality, time_in_which_the_front_passes_a_cell) {
    EXPECT_DOUBLE_EQ(qualityOfRow({1, 2, 4, 7, 0}).cellTime, 2.0);
    EXPECT_DOUBLE_EQ(qualityOfRow({1}).cellTime, 0.0);
}

// Turns of 0, 90, 90 degrees, and none against the cell without a direction.
TEST(FillQuality, turn_of_the_flow_from_cell_to_cell) {
    const FvMesh mesh = boxMesh(5, 1, 1);
    const std::vector<Vec3> directions{{1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
    const FillQuality quality =
        qualityOf(mesh, boxGroups(mesh, "WWWWWW"), {1, 2, 3, 4, 5}, directions);
    EXPECT_DOUBLE_EQ(quality.medianTurn, 90.0);
}

TEST(Quantile, counts_values_in_ascending_order) {
    EXPECT_EQ(quantile({5, 1, 4, 2, 3}, 0.5), 3.0);
    EXPECT_EQ(quantile({5, 1, 4, 2, 3}, 0.0), 1.0);
    EXPECT_EQ(quantile({5, 1, 4, 2, 3}, 1.0), 5.0);
    EXPECT_EQ(quantile({5, 1, 4, 2}, 0.5), 2.0);
    EXPECT_EQ(quantile({}, 0.5), 0.0);
}

}  // namespace

}  // namespace weldline::test
