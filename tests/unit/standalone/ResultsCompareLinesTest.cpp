#include <gtest/gtest.h>

#include <cmath>

#include "BindBoxMesh.h"
#include "results/CompareLines.h"

// Lines along x, drawn from above; distances are read off.

namespace weldline::test {

namespace {

LineCurve curve(const std::vector<Vec3>& points, bool isClosed = false) {
    LineCurve c;
    c.points = points;
    c.isClosed = isClosed;
    return c;
}

LineShape shape(const std::vector<LineCurve>& curves) {
    LineShape s;
    s.path = curves;
    return s;
}

// A result of straight lines parallel to x.
class Result {
  public:
    WeldLine& add(double x0, double x1, double y, double angle = 30.0) {
        WeldLine line;
        line.id = static_cast<int>(m_lines.lines.size()) + 1;
        line.low = {x0, y, 0.0};
        line.high = {x1, y, 0.0};
        line.length = x1 - x0;
        line.smallestAngle = angle;
        m_lines.lines.push_back(line);
        m_shapes.push_back(shape({curve({{x0, y, 0.0}, {x1, y, 0.0}})}));
        m_shapes.back().id = line.id;
        return m_lines.lines.back();
    }

    // Takes a line out, as noise is: its shape stays.
    void drop(std::size_t position) {
        m_lines.lines.erase(m_lines.lines.begin() + static_cast<std::ptrdiff_t>(position));
    }

    LinesOfResult view() const { return {m_lines, m_shapes}; }

  private:
    WeldLines m_lines;
    std::vector<LineShape> m_shapes;
};

// "1-2 moved", "3- gone", "-1 new".
std::vector<std::string> told(const std::vector<ComparedLine>& lines) {
    const auto id = [](const WeldLine* line) { return line ? std::to_string(line->id) : ""; };
    std::vector<std::string> texts;
    for (const ComparedLine& line : lines)
        texts.push_back(id(line.before) + "-" + id(line.after) + " " + nameOf(line.fate));
    return texts;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(DistanceBetween, parallel_lines_are_apart_all_along) {
    const LineShape a = shape({curve({{0, 0, 0}, {10, 0, 0}})});
    const LineShape b = shape({curve({{0, 3, 0}, {5, 3, 0}, {10, 3, 0}})});
    EXPECT_EQ(distanceBetween(a, b), 3.0);
    EXPECT_EQ(distanceBetween(b, a), 3.0);
}

// The short line lies on the long one: 0 from there, and 0 and 6 for the ends of the long one.
TEST(DistanceBetween, is_the_mean_of_both_directions) {
    const LineShape a = shape({curve({{0, 0, 0}, {4, 0, 0}})});
    const LineShape b = shape({curve({{0, 0, 0}, {10, 0, 0}})});
    EXPECT_EQ(distanceBetween(a, b), 1.5);
}

// From the corners of the square to the point (0, 2): 2, sqrt(4 + 4) / 2 ... the closing side runs
// from (0, 4) to (0, 0) and holds the point.
TEST(DistanceBetween, knows_the_last_side_of_a_closed_curve) {
    const LineCurve square = curve({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, true);
    const LineShape point = shape({curve({{0, 2, 0}})});
    const double corners = (2.0 + std::sqrt(20.0) + std::sqrt(20.0) + 2.0) / 4.0;
    EXPECT_DOUBLE_EQ(distanceBetween(point, shape({square})), 0.5 * (0.0 + corners));
    LineCurve open = square;
    open.isClosed = false;
    EXPECT_DOUBLE_EQ(distanceBetween(point, shape({open})), 0.5 * (2.0 + corners));
}

// The branch of b is 1 away from a, its points count like those of the longest curve.
TEST(DistanceBetween, branches_count) {
    const LineShape a = shape({curve({{0, 0, 0}, {10, 0, 0}})});
    const LineShape b = shape({curve({{0, 0, 0}, {10, 0, 0}}), curve({{5, 1, 0}, {6, 1, 0}})});
    EXPECT_EQ(distanceBetween(a, b), 0.5 * (0.0 + 2.0 / 4.0));
}

TEST(TypicalCellSize, is_the_root_of_the_middle_volume) {
    FvMesh mesh;
    EXPECT_EQ(typicalCellSize(mesh), 0.0);
    mesh.cellVolume = {1000.0, 8.0, 1.0};
    EXPECT_DOUBLE_EQ(typicalCellSize(mesh), 2.0);
}

TEST(CompareLines, a_result_with_itself_is_the_same) {
    Result a;
    a.add(0, 10, 0);
    a.add(0, 5, 20);
    const auto lines = compareLines(a.view(), a.view(), 0.0);
    EXPECT_EQ(told(lines), (Texts{"1-1 same", "2-2 same"}));
    EXPECT_EQ(lines[0].distance, 0.0);
}

TEST(CompareLines, nothing_on_either_side) {
    const Result none;
    Result one;
    one.add(0, 10, 0);
    EXPECT_TRUE(compareLines(none.view(), none.view(), 1.0).empty());
    const auto gone = compareLines(one.view(), none.view(), 1.0);
    EXPECT_EQ(told(gone), (Texts{"1- gone"}));
    EXPECT_TRUE(std::isnan(gone[0].distance));
    EXPECT_EQ(told(compareLines(none.view(), one.view(), 1.0)), (Texts{"-1 new"}));
}

// Two lines of length 10 can be the same up to a distance of 5.
TEST(CompareLines, moves_up_to_half_the_length) {
    Result a, near, far;
    a.add(0, 10, 0);
    near.add(0, 10, 5);
    far.add(0, 10, 5.5);
    EXPECT_EQ(told(compareLines(a.view(), near.view(), 1.0)), (Texts{"1-1 moved"}));
    EXPECT_EQ(told(compareLines(a.view(), far.view(), 1.0)), (Texts{"1- gone", "-1 new"}));
    EXPECT_EQ(told(compareLines(a.view(), far.view(), 6.0)), (Texts{"1-1 same"}));
}

TEST(CompareLines, the_tolerance_itself_is_no_move) {
    Result a, b;
    a.add(0, 10, 0);
    b.add(0, 10, 2);
    EXPECT_EQ(told(compareLines(a.view(), b.view(), 2.0)), (Texts{"1-1 same"}));
    EXPECT_EQ(told(compareLines(a.view(), b.view(), 1.9)), (Texts{"1-1 moved"}));
}

// Lengths 100 and 1 give a limit of sqrt(100) / 2 = 5; the lines are 4.5 apart sideways and the
// ends of the long one 45 and 54 beyond the short one's.
TEST(CompareLines, a_speck_beside_a_long_line_is_another_line) {
    Result a, b;
    a.add(0, 100, 0);
    b.add(45, 46, 4.5);
    EXPECT_EQ(told(compareLines(a.view(), b.view(), 1.0)), (Texts{"1- gone", "-1 new"}));
}

//   y = 0   A1            y = 1   B2 is nearer to A1, but nearer still to A2
//   y = 1.5      A2       y = -2  B1 is left for A1
TEST(CompareLines, best_pairs_first_and_one_to_one) {
    Result a, b;
    a.add(0, 10, 0);
    a.add(0, 10, 1.5);
    b.add(0, 10, -2);
    b.add(0, 10, 1);
    const auto lines = compareLines(a.view(), b.view(), 1.0);
    EXPECT_EQ(told(lines), (Texts{"1-1 moved", "2-2 same"}));
    EXPECT_EQ(lines[0].distance, 2.0);
    EXPECT_EQ(lines[1].distance, 0.5);
}

TEST(CompareLines, equally_near_lines_go_by_their_ids) {
    Result a, b;
    a.add(0, 10, 0);
    b.add(0, 10, 1);
    b.add(0, 10, -1);
    EXPECT_EQ(told(compareLines(a.view(), b.view(), 1.0)), (Texts{"1-1 same", "-2 new"}));
    EXPECT_EQ(told(compareLines(b.view(), a.view(), 1.0)), (Texts{"1-1 same", "2- gone"}));
}

TEST(CompareLines, dropped_lines_take_no_part) {
    Result a, b;
    a.add(0, 10, 50);
    a.add(0, 10, 0);
    a.drop(0);
    b.add(0, 10, 0);
    EXPECT_EQ(told(compareLines(a.view(), b.view(), 1.0)), (Texts{"2-1 same"}));
}

TEST(CompareLines, angle_changes_beyond_5_degrees) {
    Result a, b;
    a.add(0, 10, 0, 30.0);
    a.add(0, 10, 50, 30.0);
    b.add(0, 10, 0, 35.0);
    b.add(0, 10, 50, 24.5);
    const auto lines = compareLines(a.view(), b.view(), 1.0);
    EXPECT_EQ(told(lines), (Texts{"1-1 same", "2-2 changed"}));
    EXPECT_TRUE(lines[1].angleChanged);
    EXPECT_FALSE(lines[1].lengthChanged || lines[1].classChanged);
}

// 11 against 10 is a tenth; 8.75 against 10 is an eighth.
TEST(CompareLines, length_changes_beyond_a_tenth) {
    Result a, b;
    a.add(0, 10, 0);
    a.add(0, 10, 50);
    b.add(0, 11, 0);
    b.add(0, 8.75, 50);
    const auto lines = compareLines(a.view(), b.view(), 1.0);
    EXPECT_EQ(told(lines), (Texts{"1-1 same", "2-2 changed"}));
    EXPECT_TRUE(lines[1].lengthChanged);
}

TEST(CompareLines, class_changes) {
    Result a, b;
    a.add(0, 10, 0);
    b.add(0, 10, 0).kind = LineClass::Meld;
    const auto lines = compareLines(a.view(), b.view(), 1.0);
    EXPECT_EQ(told(lines), (Texts{"1-1 changed"}));
    EXPECT_TRUE(lines[0].classChanged);
}

TEST(CompareLines, a_line_that_moved_and_changed_has_moved) {
    Result a, b;
    a.add(0, 10, 0, 30.0);
    b.add(0, 10, 3, 90.0);
    const auto lines = compareLines(a.view(), b.view(), 1.0);
    EXPECT_EQ(told(lines), (Texts{"1-1 moved"}));
    EXPECT_TRUE(lines[0].angleChanged);
}

}  // namespace weldline::test
