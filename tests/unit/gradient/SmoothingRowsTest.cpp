#include "gradient/SmoothingRows.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "NumericsTest.h"
#include "RandomScene.h"

// Smoothing by rows, which scattered meshes take: the order of the slots, and the same bits.

namespace weldline::test {

namespace {

using core::breadthFirst;
using core::isScattered;
using core::Rows;

TEST(Rows, keep_the_order_in_which_their_values_came) {
    Rows<char> rows(3);
    rows.count(3, 2);
    rows.count(1);
    rows.makeRoom();
    rows.add(3, 'z');
    rows.add(1, 'a');
    rows.add(3, 'y');
    EXPECT_EQ(std::string(rows[1].begin(), rows[1].end()), "a");
    EXPECT_TRUE(rows[2].empty());
    EXPECT_EQ(std::string(rows[3].begin(), rows[3].end()), "zy");
}

Rows<int> neighbours(int rows, const std::vector<std::pair<int, int>>& pairs) {
    Rows<int> result(rows);
    for (const auto& [a, b] : pairs) {
        result.count(a);
        result.count(b);
    }
    result.makeRoom();
    for (const auto& [a, b] : pairs) {
        result.add(a, b);
        result.add(b, a);
    }
    return result;
}

std::vector<int> orderOf(int rows, const std::vector<std::pair<int, int>>& pairs) {
    core::ArrayOwner memory;
    const int* order = breadthFirst(neighbours(rows, pairs), rows, memory);
    return {order + 1, order + 1 + rows};
}

// From 1 its neighbours 5 and 3, then theirs.
TEST(BreadthFirst, neighbours_follow_in_the_order_of_their_rows) {
    EXPECT_EQ(orderOf(5, {{1, 5}, {1, 3}, {3, 2}, {5, 4}}), (std::vector<int>{1, 5, 3, 4, 2}));
}

TEST(BreadthFirst, goes_on_with_the_first_number_that_is_left) {
    EXPECT_EQ(orderOf(6, {{2, 6}, {3, 5}}), (std::vector<int>{1, 2, 6, 3, 5, 4}));
}

TEST(BreadthFirst, has_every_number_once_where_a_face_joins_a_number_to_itself) {
    EXPECT_EQ(orderOf(2, {{2, 2}, {1, 2}, {1, 2}}), (std::vector<int>{1, 2}));
}

TEST(BreadthFirst, of_nothing_is_nothing) {
    EXPECT_TRUE(orderOf(0, {}).empty());
}

bool scattered(std::vector<int> a, std::vector<int> b, int slots) {
    return isScattered({a.size(), a.data(), b.data(), nullptr, nullptr}, slots);
}

// Distances 1 and 3: mean 2, an eighth of 16.
TEST(IsScattered, begins_above_a_mean_distance_of_an_eighth_of_the_slots) {
    EXPECT_FALSE(scattered({4, 7}, {5, 4}, 16));
    EXPECT_TRUE(scattered({4, 7}, {5, 4}, 15));
    EXPECT_TRUE(scattered({4, 8}, {5, 4}, 16));
    EXPECT_FALSE(scattered({}, {}, 16));
}

// 90,000 faces over the whole range: their distances together are more than an int holds.
TEST(IsScattered, counts_beyond_the_largest_int) {
    EXPECT_TRUE(scattered(std::vector<int>(90000, 1), std::vector<int>(90000, 100000), 100000));
}

// wall --[1]     [2]     [3]-- inlet, faces 1-3, 3-2 and 2-1.
class RowSmoothing : public NumericsTest {
  protected:
    void SetUp() override {
        for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
        host.addInner(1, 3, {1, 0, 0}, {0, 0, 0}, 0.5);
        host.addInner(3, 2, {1, 0, 0}, {0, 0, 0}, 0.5);
        host.addInner(2, 1, {2, 0, 0}, {0, 0, 0}, 0.25);
        host.addBoundary(Group::Wall, 1, {0, 0, 1}, {0, 0, 0});
        host.addBoundary(Group::Inlet, 3, {0, 0, 2}, {0, 0, 0});
        bind();
        wall = host.boundarySlot(Group::Wall, 1);
        inlet = host.boundarySlot(Group::Inlet, 1);
        for (int c = 1; c <= host.slots(); ++c) calc.m_pVariableOrg[c] = 1.0;
    }

    core::CellVectors set() const { return {calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ}; }
    void smooth(int passes) {
        core::SmoothingRows(calc, core::SmoothingFaces(calc)).smooth(set(), passes);
    }
    // Cells 1 to 3, wall and inlet slot.
    void put(double* component, const std::vector<double>& values) const {
        for (int c = 1; c <= 3; ++c) component[c] = values[static_cast<std::size_t>(c - 1)];
        component[wall] = values[3];
        component[inlet] = values[4];
    }

    int wall = 0;
    int inlet = 0;
};

// x: face values 0.5 * 8 + 0.5 * 4 = 6, (4 + 12) / 2 = 8 and 0.75 * 12 + 0.25 * 8 = 11; the slots
// give their own, 5 and 7.
//   [1] (6 * 1 + 11 * 2 + 5 * 1) / 4   [2] (8 * 1 + 11 * 2) / 3   [3] (6 * 1 + 8 * 1 + 7 * 2) / 4
TEST_F(RowSmoothing, a_pass_gives_the_means_of_the_face_values) {
    put(calc.m_pGradX, {8, 12, 4, 5, 7});
    put(calc.m_pGradY, {0, 0, 0, 0, 0});
    put(calc.m_pGradZ, {2, 2, 2, 2, 2});
    smooth(1);
    EXPECT_EQ(calc.m_pGradX[1], 8.25);
    EXPECT_EQ(calc.m_pGradX[2], 10.0);
    EXPECT_EQ(calc.m_pGradX[3], 7.0);
    EXPECT_EQ(calc.m_pGradX[wall], 8.25);  // as its cell
    EXPECT_EQ(calc.m_pGradX[inlet], 7.0);  // its own mean
    EXPECT_EQ(calc.m_pGradY[2], 0.0);
    EXPECT_EQ(calc.m_pGradZ[3], 2.0);
    EXPECT_EQ(calc.m_pWork1Y[1], 8.0);  // sums of z: 2 times the areas 4, 3 and 4
    EXPECT_EQ(calc.m_pWork1Y[2], 6.0);
    EXPECT_EQ(calc.m_pWork1Y[wall], 2.0);
}

// The second pass starts from 8.25, 10, 7, 8.25, 7: face values 7.625, 8.5, 9.5625.
TEST_F(RowSmoothing, the_next_pass_starts_from_the_one_before) {
    put(calc.m_pGradX, {8, 12, 4, 5, 7});
    smooth(2);
    EXPECT_EQ(calc.m_pGradX[1], (7.625 + 9.5625 * 2 + 8.25) / 4);
    EXPECT_EQ(calc.m_pGradX[2], (8.5 + 9.5625 * 2) / 3);
    EXPECT_EQ(calc.m_pGradX[3], (7.625 + 8.5 + 14) / 4);
}

TEST_F(RowSmoothing, slots_without_faces_become_zero) {
    calc.m_pZeroGradFlag[2] = 1;
    put(calc.m_pGradX, {1, 5, 1, 1, 1});
    smooth(1);
    EXPECT_EQ(calc.m_pGradX[2], 0.0);
    EXPECT_EQ(calc.m_pGradX[1], 1.0);
}

// The wall slot of cell 1 is a symmetry slot of cell 2, too, whose face has no area.
TEST_F(RowSmoothing, keeps_the_symmetry_copy_where_a_wall_has_the_same_slot) {
    put(calc.m_pGradX, {8, 12, 4, 5, 7});
    std::vector<int> cells{0, 2};
    std::vector<int> slots{0, wall};
    std::vector<double> area(2, 0.0);
    calc.m_nSymmFace = 1;
    calc.m_pSymmFaceCV = cells.data();
    calc.m_pSymmFaceBnd = slots.data();
    calc.m_pSymmFaceSx = calc.m_pSymmFaceSy = calc.m_pSymmFaceSz = area.data();
    smooth(1);
    EXPECT_EQ(calc.m_pGradX[1], 8.25);
    EXPECT_EQ(calc.m_pGradX[2], 10.0);
    EXPECT_EQ(calc.m_pGradX[wall], 10.0);
}

// Cell 1 has the terms big, 0.75 * 1 * 2 = 1.5 and -big, in this order: big + 1.5 is rounded to the
// number after big, two away.
TEST_F(RowSmoothing, keeps_the_order_of_the_faces_in_each_sum) {
    put(calc.m_pGradZ, {0, 1, 2 * big, -big, 0});
    smooth(1);
    EXPECT_EQ(calc.m_pWork1Y[1], 2.0);
    EXPECT_EQ(calc.m_pGradZ[1], 0.5);
}

// On purpose an infinite value counts through the factor 0.0, too.
TEST_F(RowSmoothing, keeps_an_infinite_cell_undefined_at_its_boundary) {
    put(calc.m_pGradX, {std::numeric_limits<double>::infinity(), 1, 1, 1, 1});
    smooth(1);
    EXPECT_TRUE(std::isnan(calc.m_pGradX[1]));
    EXPECT_TRUE(std::isnan(calc.m_pGradX[wall]));
    EXPECT_EQ(calc.m_pGradX[2], std::numeric_limits<double>::infinity());
}

// Whether the three components by rows are what they are one after another.
void expectRowsAsOneByOne(int seed) {
    TestHost host;
    Dice dice(static_cast<std::uint64_t>(seed));
    addRandomScene(host, dice);
    host.finish();
    CKVR3DWeldLine each;
    CKVR3DWeldLine rows;
    for (CKVR3DWeldLine* calc : {&each, &rows}) {
        calc->setPartitionInterface(nullptr);
        calc->setKVRCom(nullptr, nullptr);
        calc->setFlowData(host.gv(), host.mesh());
    }
    for (int c = 1; c <= host.slots(); ++c) {
        each.m_pVariableOrg[c] = rows.m_pVariableOrg[c] = dice.below(4) == 0 ? 0.0 : 1.0;
        each.m_pGradX[c] = rows.m_pGradX[c] = dice.value();
        each.m_pGradY[c] = rows.m_pGradY[c] = dice.wildValue();
        each.m_pGradZ[c] = rows.m_pGradZ[c] = dice.value();
    }
    for (double* component : {each.m_pGradX, each.m_pGradY, each.m_pGradZ})
        each.Smooth_Variable(component, 3);
    core::SmoothingRows(rows, core::SmoothingFaces(rows))
        .smooth({rows.m_pGradX, rows.m_pGradY, rows.m_pGradZ}, 3);
    const std::size_t size = static_cast<std::size_t>(host.slots()) + 1;
    for (const auto& [expected, actual] :
         {std::pair{each.m_pGradX, rows.m_pGradX}, std::pair{each.m_pGradY, rows.m_pGradY},
          std::pair{each.m_pGradZ, rows.m_pGradZ}, std::pair{each.m_pWork1Y, rows.m_pWork1Y}})
        EXPECT_TRUE(sameSlots(std::vector<double>(expected, expected + size), actual));
}

TEST(RowSmoothingOfRandomScenes, gives_the_bits_of_smoothing_by_faces) {
    for (int seed = 1; seed <= 500; ++seed) {
        SCOPED_TRACE(seed);
        expectRowsAsOneByOne(seed);
        if (::testing::Test::HasFailure()) return;
    }
}

}  // namespace

}  // namespace weldline::test
