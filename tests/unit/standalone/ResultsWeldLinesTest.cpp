#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "BindBoxMesh.h"
#include "results/WeldLines.h"

// A row of cubes along x; the four points of column i stand at x = i:
//
//   column  0   1   2   3   4
//           +---+---+---+---+      points: i + (nx + 1) (j + 2 k)
//           | 0 | 1 | 2 | 3 |
//           +---+---+---+---+

namespace weldline::test {

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

struct Row {
    FvMesh fv = boxMesh(4, 1, 1);
    std::vector<double> angles = std::vector<double>(20, 180.0);
    std::vector<float> fillTime{1.0F, 2.0F, 4.0F, 3.0F};

    static int point(int i, int j, int k) { return i + 5 * (j + 2 * k); }
    void column(int i, double angle) {
        for (const int n : {point(i, 0, 0), point(i, 1, 0), point(i, 0, 1), point(i, 1, 1)})
            angles[n] = angle;
    }
    WeldLines find(double limit = 180.0) const {
        return findWeldLines(fv, angles, fillTime, limit);
    }
};

}  // namespace

TEST(WeldLines, nothing_below_180_is_no_weld_line) {
    const WeldLines w = Row().find();
    EXPECT_TRUE(w.lines.empty());
    EXPECT_EQ(w.weldNodes, 0);
    EXPECT_EQ(w.nodeLine, std::vector<int>(20, 0));
}

TEST(WeldLines, measures_of_a_column) {
    Row row;
    row.column(1, 30.0);
    row.angles[Row::point(1, 1, 1)] = 10.0;
    const WeldLines w = row.find();
    ASSERT_EQ(w.lines.size(), 1U);
    const WeldLine& line = w.lines[0];
    EXPECT_EQ(line.id, 1);
    EXPECT_EQ(line.nodes, (std::vector<int>{1, 6, 11, 16}));
    EXPECT_EQ(line.smallestAngle, 10.0);
    EXPECT_EQ(line.meanAngle, 25.0);  // (30 + 30 + 30 + 10) / 4
    EXPECT_EQ(line.low.x, 1.0);
    EXPECT_EQ(line.low.z, 0.0);
    EXPECT_EQ(line.high.x, 1.0);
    EXPECT_EQ(line.high.y, 1.0);
    EXPECT_EQ(line.centroid.x, 1.0);
    EXPECT_EQ(line.centroid.y, 0.5);
    EXPECT_EQ(line.centroid.z, 0.5);
    EXPECT_EQ(w.weldNodes, 4);
}

// Columns 0, 2 and 4 are apart.
TEST(WeldLines, order_by_size_then_by_smallest_node) {
    Row row;
    row.column(0, 90.0);
    row.angles[Row::point(0, 0, 0)] = 180.0;  // three nodes, smallest number 5
    row.column(4, 90.0);
    row.angles[Row::point(4, 0, 0)] = 180.0;  // three nodes, smallest number 9
    row.column(2, 90.0);                      // four nodes
    const WeldLines w = row.find();
    ASSERT_EQ(w.lines.size(), 3U);
    EXPECT_EQ(w.lines[0].nodes, (std::vector<int>{2, 7, 12, 17}));
    EXPECT_EQ(w.lines[1].nodes, (std::vector<int>{5, 10, 15}));
    EXPECT_EQ(w.lines[2].nodes, (std::vector<int>{9, 14, 19}));
    EXPECT_EQ(w.nodeLine[17], 1);
    EXPECT_EQ(w.nodeLine[10], 2);
    EXPECT_EQ(w.nodeLine[19], 3);
    EXPECT_EQ(w.nodeLine[0], 0);
}

// (2,0,0) and (2,1,1) are corners of one face; (1,0,0) and (2,1,1) are corners of one cell only.
TEST(WeldLines, corners_of_a_face_join_and_those_of_a_cell_do_not) {
    Row row;
    row.angles[Row::point(2, 0, 0)] = 90.0;
    row.angles[Row::point(2, 1, 1)] = 90.0;
    EXPECT_EQ(row.find().lines.size(), 1U);
    row.angles[Row::point(2, 0, 0)] = 180.0;
    row.angles[Row::point(1, 0, 0)] = 90.0;
    EXPECT_EQ(row.find().lines.size(), 2U);
}

// One triangle alone: its last edge runs from node 2 back to node 0.
TEST(WeldLines, last_edge_of_a_polygon_joins) {
    FvMesh fv;
    fv.points = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}};
    fv.faceNodes.append(std::vector<int>{0, 1, 2});
    fv.owner = {0};
    const WeldLines w = findWeldLines(fv, {90.0, 180.0, 90.0}, {});
    ASSERT_EQ(w.lines.size(), 1U);
    EXPECT_EQ(w.lines[0].nodes, (std::vector<int>{0, 2}));
}

TEST(WeldLines, limit_takes_angles_below_it) {
    Row row;
    row.column(1, 120.0);
    row.column(2, 119.0);
    const WeldLines w = row.find(120.0);
    ASSERT_EQ(w.lines.size(), 1U);
    EXPECT_EQ(w.lines[0].nodes, (std::vector<int>{2, 7, 12, 17}));
    EXPECT_TRUE(row.find(119.0).lines.empty());
    EXPECT_EQ(row.find(500.0).weldNodes, 8);
}

TEST(WeldLines, angle_of_a_head_on_meeting_is_reported_as_zero) {
    Row row;
    row.column(3, -2.06e-7);
    const WeldLines w = row.find();
    ASSERT_EQ(w.lines.size(), 1U);
    EXPECT_EQ(w.lines[0].smallestAngle, 0.0);
    EXPECT_FALSE(std::signbit(w.lines[0].smallestAngle));
    EXPECT_EQ(w.lines[0].meanAngle, 0.0);
    EXPECT_EQ(reportedAngle(-2.06e-7), 0.0);
    EXPECT_EQ(reportedAngle(12.5), 12.5);
}

// Column 1 touches the cells of times 1 and 2, column 2 those of 2 and 4.
TEST(WeldLines, formation_is_when_the_last_cell_around_a_node_was_reached) {
    Row row;
    row.column(1, 20.0);
    row.column(2, 20.0);
    const WeldLines w = row.find();
    EXPECT_EQ(w.formationTime[1], 2.0);
    EXPECT_EQ(w.formationTime[2], 4.0);
    EXPECT_TRUE(std::isnan(w.formationTime[0]));
    EXPECT_EQ(w.lines[0].firstTime, 2.0);
    EXPECT_EQ(w.lines[0].lastTime, 4.0);
}

TEST(WeldLines, unreached_cells_do_not_count_for_the_formation) {
    Row row;
    row.column(2, 20.0);
    row.fillTime = {1.0F, 2.0F, 0.0F, 3.0F};
    EXPECT_EQ(row.find().lines[0].lastTime, 2.0);
    row.fillTime = {1.0F, 0.0F, 0.0F, 3.0F};
    EXPECT_TRUE(std::isnan(row.find().lines[0].firstTime));
    EXPECT_TRUE(std::isnan(row.find().lines[0].lastTime));
}

TEST(WeldLines, undefined_angles_are_counted_and_in_no_line) {
    Row row;
    row.column(2, nan);
    const WeldLines w = row.find();
    EXPECT_TRUE(w.lines.empty());
    EXPECT_EQ(w.undefinedNodes, 4);
    EXPECT_EQ(w.weldNodes, 0);
}

// Scattered weld nodes on a larger block against flooding over sides and diagonals of squares.
TEST(WeldLines, agrees_with_flooding_over_all_faces) {
    const FvMesh fv = boxMesh(7, 6, 5);
    std::vector<double> angles(fv.points.size());
    unsigned state = 7;
    for (double& a : angles) {
        state = state * 1664525U + 1013904223U;
        a = (state >> 16) % 9 == 0 ? 45.0 : 180.0;
    }
    const auto isOnFace = [&](int a, int b) { return norm(fv.points[a] - fv.points[b]) < 1.5; };
    std::vector<int> set(angles.size(), -1);
    int sets = 0;
    for (std::size_t start = 0; start < angles.size(); ++start) {
        if (angles[start] == 180.0 || set[start] >= 0) continue;
        std::vector<int> open{static_cast<int>(start)};
        set[start] = sets;
        while (!open.empty()) {
            const int node = open.back();
            open.pop_back();
            for (int n = 0; n < static_cast<int>(angles.size()); ++n)
                if (angles[n] != 180.0 && set[n] < 0 && isOnFace(node, n)) {
                    set[n] = sets;
                    open.push_back(n);
                }
        }
        ++sets;
    }
    const WeldLines w = findWeldLines(fv, angles, std::vector<float>(fv.cellCount(), 1.0F));
    ASSERT_EQ(static_cast<int>(w.lines.size()), sets);
    EXPECT_GT(sets, 5);
    for (const WeldLine& line : w.lines) {
        std::vector<int> expected;
        for (int n = 0; n < static_cast<int>(angles.size()); ++n)
            if (set[n] == set[line.nodes.front()]) expected.push_back(n);
        EXPECT_EQ(line.nodes, expected);
    }
}

}  // namespace weldline::test
