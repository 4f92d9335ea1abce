#include "results/Openings.h"

#include <gtest/gtest.h>

#include <cmath>

#include "BindBoxMesh.h"
#include "comm/OneRank.h"

namespace weldline::test {

namespace {

constexpr Vec3 right{1, 0, 0};
constexpr Vec3 left{-1, 0, 0};

// A row of cubes along x.
class OpeningsOfRow : public testing::Test {
  protected:
    Openings find(const std::vector<float>& times, const std::vector<Vec3>& directions,
                  std::string_view sides = "WWWWWW") {
        mesh = boxMesh(static_cast<int>(times.size()), 1, 1);
        return findOpenings(UncutMesh().part(), mesh, boxGroups(mesh, sides), times, directions);
    }

    // The x of the middles of faces.
    std::vector<double> places(const std::vector<int>& faces) const {
        std::vector<double> x;
        for (const int b : faces) x.push_back(mesh.faceCentre[mesh.innerFaces + b].x);
        return x;
    }

    OneRank ranks;
    FvMesh mesh;
};

using Places = std::vector<double>;

TEST_F(OpeningsOfRow, lie_where_the_flow_begins_and_ends) {
    const Openings openings = find({1, 2, 3, 4, 5}, {right, right, right, right, right});
    EXPECT_EQ(places(openings.inlets), Places{0.0});
    EXPECT_EQ(places(openings.outlets), Places{5.0});
}

// The last cell lies in the middle and has walls beside the flow alone.
TEST_F(OpeningsOfRow, two_gates) {
    const Openings openings = find({1, 2, 3, 2, 1}, {right, right, right, left, left});
    EXPECT_EQ(places(openings.inlets), (Places{0.0, 5.0}));
    EXPECT_TRUE(openings.outlets.empty());
}

// A twentieth of 100 after the first.
TEST_F(OpeningsOfRow, inlets_lie_on_cells_that_fill_in_the_first_moments) {
    const auto inlets = [&](float time) {
        return find({time, 1, 50, 101}, {right, left, right, right}).inlets.size();
    };
    EXPECT_EQ(inlets(6.0F), 1U);
    EXPECT_EQ(inlets(6.1F), 0U);
}

// From the middle to both ends, slower to the left: 50 there, and to the right half of what the
// time of its end is after the first. A quarter of 100 before the last is 76.
TEST_F(OpeningsOfRow, outlets_lie_on_cells_of_the_last_quarter) {
    const auto outlets = [&](float time) {
        const float half = 1.0F + (time - 1.0F) / 2.0F;
        return places(find({101, 51, 1, half, time}, {left, left, right, right, right}).outlets);
    };
    EXPECT_EQ(outlets(76.0F), Places{5.0});
    EXPECT_EQ(outlets(75.0F), Places{});
}

// The front takes 1 per cell, and over the last three cells 3.2 or 3.4: up to a tenth more is
// taken.
TEST_F(OpeningsOfRow, outlets_lie_where_the_front_is_not_slowed_down) {
    const auto outlets = [&](float last) {
        return find({1, 2, 3, 4, 5, 6, 7, last}, std::vector<Vec3>(8, right)).outlets.size();
    };
    EXPECT_EQ(outlets(8.0F), 1U);
    EXPECT_EQ(outlets(8.2F), 1U);
    EXPECT_EQ(outlets(8.4F), 0U);
}

// The last of two by two cells is reached along the diagonal.
TEST_F(OpeningsOfRow, a_front_along_a_diagonal_runs_out_nowhere) {
    mesh = boxMesh(2, 2, 1);
    const Openings openings = findOpenings(UncutMesh().part(), mesh, boxGroups(mesh, "WWWWWW"),
                                           {1, 2, 2, 3}, std::vector<Vec3>(4));
    EXPECT_TRUE(openings.outlets.empty());
}

TEST_F(OpeningsOfRow, flow_along_a_wall_or_a_diagonal_opens_none) {
    const double half = std::sqrt(0.5);
    EXPECT_EQ(find({1, 2}, {{half, half, 0}, right}).inlets.size(), 0U);
    EXPECT_EQ(places(find({1, 2}, {{0.8, 0.6, 0}, right}).inlets), Places{0.0});
    EXPECT_EQ(places(find({1, 2}, {{0.6, 0.8, 0}, right}).inlets), Places{0.5});
}

TEST_F(OpeningsOfRow, are_looked_for_only_where_names_tell_none) {
    const std::vector<Vec3> flow{right, right, right};
    EXPECT_TRUE(find({1, 2, 3}, flow, "WIWWWW").inlets.empty());
    EXPECT_EQ(find({1, 2, 3}, flow, "WWIWWW").outlets.size(), 1U);
    EXPECT_TRUE(find({1, 2, 3}, flow, "WWOWWW").outlets.empty());
}

TEST_F(OpeningsOfRow, are_walls) {
    const Openings openings = find({1, 2, 3}, {right, right, right}, "SSSSSS");
    EXPECT_TRUE(openings.inlets.empty());
    EXPECT_TRUE(openings.outlets.empty());
}

TEST_F(OpeningsOfRow, cells_that_are_not_reached_have_none) {
    const Openings openings = find({0, 2, 3, 0}, {right, right, right, right});
    EXPECT_TRUE(openings.inlets.empty());
    EXPECT_TRUE(openings.outlets.empty());
}

// The row has 3 * 4 + 2 faces, all in one patch but the last.
TEST_F(OpeningsOfRow, become_patches_that_the_patterns_find) {
    const Openings openings = find({1, 2, 3}, {right, right, right});
    std::vector<Patch> patches{{"skin", {}}, {"rest", {}}};
    for (int b = 0; b < 14; ++b)
        patches[b < 13 ? 0 : 1].faces.append(mesh.faceNodes[mesh.innerFaces + b]);
    const bool lastIsOutlet = openings.outlets.front() == 13;
    GroupPatterns patterns{"nozzle", "hole", "symm"};
    const std::vector<MadePatch> made = makePatches(ranks, mesh, openings, patches, patterns);
    ASSERT_EQ(made.size(), 2U);
    EXPECT_EQ(made[0].kind, GroupKind::Inlet);
    EXPECT_EQ(made[0].faces, 1);
    ASSERT_EQ(made[0].from.size(), 1U);
    EXPECT_EQ(made[0].from[0].patch, "skin");
    EXPECT_EQ(made[0].low.x, 0.0);
    EXPECT_EQ(made[1].kind, GroupKind::Outlet);
    EXPECT_EQ(made[1].high.x, 3.0);

    const BoundaryGroups groups = groupBoundaryFaces(mesh, patches, patterns);
    ASSERT_EQ(groups.patches.size(), 4U);
    EXPECT_EQ(groups.patches[0].faces, lastIsOutlet ? 12 : 11);
    EXPECT_EQ(groups.patches[2].name, "filled first");
    EXPECT_EQ(groups.patches[2].kind, GroupKind::Inlet);
    EXPECT_EQ(groups.patches[3].name, "front runs out");
    EXPECT_EQ(groups.patches[3].kind, GroupKind::Outlet);
    EXPECT_EQ(groups.kinds[static_cast<std::size_t>(openings.inlets[0])], GroupKind::Inlet);
}

TEST_F(OpeningsOfRow, without_any_nothing_changes) {
    const Openings openings = find({1, 2, 1}, {left, right, right}, "SSSSSS");
    std::vector<Patch> patches;
    GroupPatterns patterns;
    EXPECT_TRUE(makePatches(ranks, mesh, openings, patches, patterns).empty());
    EXPECT_TRUE(patches.empty());
    EXPECT_EQ(patterns.inlet, GroupPatterns{}.inlet);
}

}  // namespace

}  // namespace weldline::test
