#include <gtest/gtest.h>

#include <vector>

#include "RbfMeshes.h"
#include "rbf/FaceStencils.h"
#include "rbf/FaceWeights.h"

namespace weldline::test {

namespace {

const Point kNone{NaN, NaN, NaN};

std::vector<int> chosen(TestHost& host, int face) {
    FaceStencils stencils(*host.mesh(), host.gv(), host.partition());
    const std::span<const int> slots = stencils.choose(face);
    EXPECT_LE(slots.size(), stencils.largestSize(face));
    return {slots.begin(), slots.end()};
}

// A row of four cells, faces 1 to 3 between them:
//
//   [1] 1 [2] 2 [3] 3 [4]
void addRow(TestHost& host) {
    for (int c = 0; c < 4; ++c) host.addCell({c + 0.5, 0, 0}, NaN, {});
    for (int c = 1; c < 4; ++c) host.addInner(c, c + 1, kNone, {double(c), 0, 0});
}

}  // namespace

// Face 1: its cells, cell 3 beside cell 2, then cell 4 beside cell 3, as there are few.
TEST(RbfStencils, two_cells_then_their_neighbours_then_the_neighbours_of_those) {
    TestHost host;
    addRow(host);
    host.finish();
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(chosen(host, 2), (std::vector<int>{2, 3, 1, 4}));
}

TEST(RbfStencils, truncate_cell_numbers_held_as_reals) {
    TestHost host;
    addRow(host);
    host.setInnerCells(2, 2.9, 3.1);
    host.finish();
    EXPECT_EQ(chosen(host, 2), (std::vector<int>{2, 3, 1, 4}));
}

TEST(RbfStencils, a_cell_met_twice_counts_once) {
    TestHost host;
    addRow(host);
    host.addNeighbour(2, 4);
    host.addNeighbour(2, 1);
    host.finish();
    EXPECT_EQ(chosen(host, 2), (std::vector<int>{2, 3, 1, 4}));
}

// Cell 1 has a wall; its boundary slot 5 stands among the neighbours of some hosts.
TEST(RbfStencils, leave_out_boundary_slots) {
    TestHost host;
    addRow(host);
    host.addBoundary(Group::Wall, 1, kNone, {0, 0, 0});
    host.addNeighbour(1, 5);
    host.finish();
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2, 3, 4}));
}

//   |1 [1] 1 [2] 2 [3] 3 [4] 2|      interface faces 1 and 2 with halo slots 5 and 6
TEST(RbfStencils, include_halo_slots_across_interface_faces) {
    TestHost host;
    addRow(host);
    host.addInterface(1, kNone, {0, 0, 0}, 0.5, {-0.5, 0, 0}, NaN, {});
    host.addInterface(4, kNone, {4, 0, 0}, 0.5, {4.5, 0, 0}, NaN, {});
    host.finish();
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2, 5, 3, 4}));
    EXPECT_EQ(chosen(host, 2), (std::vector<int>{2, 3, 1, 4, 5, 6}));
    EXPECT_EQ(chosen(host, 3), (std::vector<int>{3, 4, 2, 6, 1}));
}

// Cells 1 and 2 both touch the same cell across the interface, each through its own halo slot.
TEST(RbfStencils, a_halo_cell_with_two_slots_counts_once) {
    TestHost host;
    addRow(host);
    host.addInterface(1, kNone, {0, -1, 0}, 0.5, {1, -2, 0}, NaN, {});
    host.addInterface(2, kNone, {1, -1, 0}, 0.5, {1, -2, 0}, NaN, {});
    host.finish();
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2, 5, 3, 4}));
}

TEST(RbfStencils, leave_out_cells_not_reached_by_the_melt) {
    TestHost host;
    addRow(host);
    host.addInterface(1, kNone, {0, 0, 0}, 0.5, {-0.5, 0, 0}, NaN, {});
    host.finish();
    host.setValue(3, 0.0F);
    host.setValue(host.haloSlot(1), 9e-31F);
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2}));
}

TEST(RbfStencils, the_value_1e_30_counts_as_reached) {
    TestHost host;
    addRow(host);
    host.finish();
    host.setValue(3, 1e-30F);
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2, 3, 4}));
}

// In a bi-injection run the flow variable of the other shot's cells is 0, yet they hold values.
TEST(RbfStencils, take_all_cells_where_the_face_itself_is_not_reached) {
    TestHost host;
    addRow(host);
    host.finish();
    host.setValue(2, 0.0F);
    host.setValue(4, 0.0F);
    EXPECT_EQ(chosen(host, 2), (std::vector<int>{2, 3, 1, 4}));
}

// Two cells with ten neighbours each, at distances 1, 2, ... 20 from the face centre: the nearest
// 14 stay, in the order in which they were found.
TEST(RbfStencils, keep_the_nearest_of_many_cells) {
    TestHost host;
    host.addCell({-0.5, 0, 0}, NaN, {});
    host.addCell({0.5, 0, 0}, NaN, {});
    for (int i = 1; i <= 20; ++i) host.addCell({0, 0, 21.0 - i}, NaN, {});
    host.addInner(1, 2, kNone, {0, 0, 0});
    for (int i = 1; i <= 20; ++i) host.addNeighbour(i <= 10 ? 1 : 2, i + 2);
    host.finish();
    std::vector<int> expected{1, 2};
    for (int i = 7; i <= 20; ++i) expected.push_back(i + 2);
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(kMaxStencil));
    EXPECT_EQ(chosen(host, 1), expected);
}

// Cell 3 beside cell 1 is the only neighbour of the face's cells; of its ten neighbours, at
// distances 10, 9, ... 1 from the face centre, the nearest five fill up the stencil to eight.
TEST(RbfStencils, fill_up_a_small_stencil_with_the_nearest) {
    TestHost host;
    host.addCell({-0.5, 0, 0}, NaN, {});
    host.addCell({0.5, 0, 0}, NaN, {});
    host.addCell({0, 0.5, 0}, NaN, {});
    for (int i = 1; i <= 10; ++i) host.addCell({0, 0, 11.0 - i}, NaN, {});
    host.addInner(1, 2, kNone, {0, 0, 0});
    host.addNeighbour(1, 3);
    for (int i = 1; i <= 10; ++i) host.addNeighbour(3, i + 3);
    host.finish();
    EXPECT_EQ(chosen(host, 1), (std::vector<int>{1, 2, 3, 9, 10, 11, 12, 13}));
}

TEST(RbfStencils, need_neither_neighbours_nor_flow_variable_nor_partition) {
    TestHost host;
    addRow(host);
    host.finish();
    host.mesh()->m_ppCellNeighbour = nullptr;
    FaceStencils stencils(*host.mesh(), nullptr, nullptr);
    const std::span<const int> slots = stencils.choose(2);
    EXPECT_EQ(std::vector<int>(slots.begin(), slots.end()), (std::vector<int>{2, 3}));
}

// Hexahedra: 2 + 5 + 5 cells inside the block; tetrahedra: 2 + 3 + 3.
TEST(RbfStencils, sizes_on_regular_meshes) {
    TestHost hexa, tetra;
    fillHost(hexa, hexahedra(4, 4, 4, 0.0));
    fillHost(tetra, tetrahedra(3, 3, 3, 0.0));
    const auto largest = [](TestHost& host) {
        FaceStencils stencils(*host.mesh(), host.gv(), host.partition());
        std::size_t size = 0;
        for (int f = 1; f <= host.mesh()->m_nInnerFace; ++f)
            size = std::max(size, stencils.choose(f).size());
        return size;
    };
    EXPECT_EQ(largest(hexa), 12U);
    EXPECT_EQ(largest(tetra), 8U);
}

}  // namespace weldline::test
