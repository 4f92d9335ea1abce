// truncateAngle: nodes at or above the threshold T, and nodes that stand alone, become 180.

#include <cmath>

#include "Bench.h"

namespace weldline::test {

namespace {

constexpr double kT = 135.0;

// Cells of the given nodes without faces and without a pace maker; angles per node from 1.
struct Nodes : Bench {
    Nodes(const std::vector<std::vector<int>>& cells, const std::vector<double>& angles)
        : m_count(static_cast<int>(angles.size())) {
        for (int n = 0; n < m_count; ++n) addNode({0, 0, 0});
        for (const std::vector<int>& nodes : cells) addCell({0, 0, 0}, {0, 0, 0}, nodes);
        bind(PaceMaker::No);
        line.m_TruncateAngle = kT;
        for (int n = 1; n <= m_count; ++n) line.m_pMeetingAngle[n] = angles[n - 1];
    }
    void expectAfter(const std::vector<double>& expected) {
        line.truncateAngle();
        for (int n = 1; n <= m_count; ++n)
            EXPECT_TRUE(sameBits(angle(n), expected[n - 1])) << "node " << n << ": " << angle(n);
    }

  private:
    int m_count;
};

}  // namespace

TEST(Truncation, two_neighbours_below_the_threshold_stay) {
    Nodes({{1, 2}}, {10, 20}).expectAfter({10, 20});
}

TEST(Truncation, threshold_itself_becomes_180) {
    const double under = std::nextafter(kT, 0.0);
    Nodes({{1, 2, 3, 4}}, {kT, under, 10, std::nextafter(kT, 180.0)})
        .expectAfter({180, under, 10, 180});
}

TEST(Truncation, values_above_180_become_180) {
    Nodes({{1, 2, 3}}, {200, 10, 20}).expectAfter({180, 10, 20});
}

TEST(Truncation, node_among_others_at_or_above_the_threshold_becomes_180) {
    Nodes({{1, 2, 3}}, {10, kT, 170}).expectAfter({180, 180, 180});
}

TEST(Truncation, node_without_cells_becomes_180) {
    Nodes({{2, 3}}, {10, 20, 30}).expectAfter({180, 20, 30});
}

TEST(Truncation, node_alone_in_its_cell_becomes_180) {
    Nodes({{1}, {2, 3}}, {10, 20, 30}).expectAfter({180, 20, 30});
}

// A node does not count as its own neighbour, even where a cell lists it twice.
TEST(Truncation, node_is_no_neighbour_of_itself) {
    Nodes({{1, 1}, {2, 3}}, {10, 20, 30}).expectAfter({180, 20, 30});
}

// Cells {1, 2, 3} and {1, 2, 4}: node 2 is reached through both, which is as good as once.
TEST(Truncation, neighbour_through_two_cells_counts) {
    Nodes({{1, 2, 3}, {1, 2, 4}}, {10, 20, 180, 180}).expectAfter({10, 20, 180, 180});
}

// 1 - 2 - 3 in two cells: 1 and 3 are no neighbours.
TEST(Truncation, neighbours_share_a_cell) {
    Nodes({{1, 2}, {2, 3}}, {10, 180, 30}).expectAfter({180, 180, 180});
}

TEST(Truncation, cells_without_volume_join_no_nodes) {
    for (double volume : {0.0, -0.0}) {
        Nodes nodes({{1, 2}}, {10, 20});
        nodes.line.m_pVolume[1] = volume;
        nodes.expectAfter({180, 180});
    }
}

TEST(Truncation, a_second_cell_with_volume_joins_the_nodes) {
    Nodes nodes({{1, 2}, {1, 2}}, {10, 20});
    nodes.line.m_pVolume[1] = 0.0;
    nodes.expectAfter({10, 20});
}

TEST(Truncation, keeps_negative_and_unknown_volumes_as_volumes) {
    for (double volume : {-1.0, 1e-300, NaN}) {
        Nodes nodes({{1, 2}}, {10, 20});
        nodes.line.m_pVolume[1] = volume;
        nodes.expectAfter({10, 20});
    }
}

// Rows that know node 1 in cell 1 but no cell of node 1: node 1 stands alone and is erased first,
// which leaves node 2 alone, and so on in node order: 1 erases 2, 2 erases 3.
//
//   1 - 2 - 3 - 4     cell k joins nodes k and k + 1; the rows of nodes 2 and 3 name only the cell
//                     to their left
TEST(Truncation, keeps_erasing_one_after_another) {
    Nodes nodes({{1, 2}, {2, 3}, {3, 4}}, {10, 20, 30, 180});
    nodes.line.m_ppNodeCell[1][0] = 0;
    nodes.line.m_ppNodeCell[2][0] = 1;
    nodes.line.m_ppNodeCell[3][0] = 1;
    nodes.expectAfter({180, 180, 180, 180});
}

// The mirrored chain, with rows that name only the cell to the right: node 2 still sees node 3, and
// node 3 node 4, when their turn comes. In the other order all would be erased.
TEST(Truncation, keeps_node_order) {
    Nodes nodes({{1, 2}, {2, 3}, {3, 4}}, {180, 20, 30, 40});
    for (int n : {2, 3}) {
        nodes.line.m_ppNodeCell[n][0] = 1;
        nodes.line.m_ppNodeCell[n][1] = n;
    }
    nodes.line.m_ppNodeCell[4][0] = 0;
    nodes.expectAfter({180, 20, 30, 180});
}

// The first pass is over before the second begins: node 2 falls to the threshold before node 1 is
// asked for its neighbours.
TEST(Truncation, threshold_comes_before_neighbours) {
    Nodes({{1, 2}}, {10, kT}).expectAfter({180, 180});
}

TEST(Truncation, keeps_an_angle_that_is_not_a_number_beside_a_neighbour) {
    Nodes({{1, 2, 3}}, {NaN, 10, 20}).expectAfter({NaN, 10, 20});
}

TEST(Truncation, angle_that_is_not_a_number_is_no_neighbour) {
    Nodes({{1, 2}}, {NaN, 10}).expectAfter({NaN, 180});
    Nodes({{1, 2}}, {10, NaN}).expectAfter({180, 180});
}

TEST(Truncation, angle_that_is_not_a_number_may_stand_alone) {
    Nodes({{1, 2}}, {NaN, 180}).expectAfter({180, 180});
}

// Below zero by the eight digits of pi.
TEST(Truncation, head_on_stays) {
    Nodes({{1, 2}}, {kHeadOn, kHeadOn}).expectAfter({kHeadOn, kHeadOn});
}

TEST(Truncation, threshold_180_spares_all_but_180) {
    Nodes nodes({{1, 2, 3}}, {179.5, 180, 10});
    nodes.line.m_TruncateAngle = 180.0;
    nodes.expectAfter({179.5, 180, 10});
}

TEST(Truncation, threshold_180_has_no_neighbours_at_180) {
    Nodes nodes({{1, 2}}, {10, 180});
    nodes.line.m_TruncateAngle = 180.0;
    nodes.expectAfter({180, 180});
}

// Above 180 nothing but lone nodes is touched; a value of 180 is then a neighbour.
TEST(Truncation, threshold_above_180_makes_180_a_neighbour) {
    Nodes nodes({{1, 2}, {3}}, {10, 180, 20});
    nodes.line.m_TruncateAngle = 200.0;
    nodes.expectAfter({10, 180, 180});
}

// Nothing is at or above, nothing is below: all nodes stand alone.
TEST(Truncation, threshold_that_is_not_a_number_erases_all) {
    Nodes nodes({{1, 2}}, {10, 20});
    nodes.line.m_TruncateAngle = NaN;
    nodes.expectAfter({180, 180});
}

TEST(Truncation, slot_0_is_left_alone) {
    Nodes nodes({{1, 2}}, {170, 10});
    nodes.line.m_pMeetingAngle[0] = 170.0;
    nodes.line.truncateAngle();
    EXPECT_EQ(nodes.line.m_pMeetingAngle[0], 170.0);
}

}  // namespace weldline::test
