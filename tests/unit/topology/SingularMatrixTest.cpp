#include <cmath>

#include "FaceKinds.h"
#include "RandomScene.h"
#include "Scene.h"

namespace weldline::test {

namespace {

class SingularMatrix : public NumericsTest {
  protected:
    // A cell at the origin with wall faces at the given offsets.
    void cell(const std::vector<Point>& offsets) {
        const int number = host.addCell({0, 0, 0}, NaN, {});
        for (const Point& offset : offsets) host.addBoundary(Group::Wall, number, {}, offset);
    }

    int answer() {
        bind();
        return calc.checkSingularLSMatrix();
    }
};

const std::vector<Point> regular{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

TEST_F(SingularMatrix, regular_cells_pass) {
    cell(regular);
    cell({{1, 0, 0}, {1, 1, 0}, {1, 1, 1}});
    EXPECT_EQ(answer(), 0);
    EXPECT_TRUE(host.exchanges.empty());
    EXPECT_TRUE(host.allMaxArguments.empty());
}

// [1] -- [2] and walls, all along x: the second pivot is 0.
TEST_F(SingularMatrix, offsets_along_x_only_are_singular) {
    host.addCell({0, 0, 0}, NaN, {});
    host.addCell({2, 0, 0}, NaN, {});
    host.addInner(1, 2, {}, {}, NaN);
    host.addBoundary(Group::Wall, 1, {}, {-1, 0, 0});
    host.addBoundary(Group::Wall, 2, {}, {3, 0, 0});
    EXPECT_EQ(answer(), 1);
}

// All offsets on one line, but 55 / 25 is a little more than 2.2, so the second pivot, 121 - 2.2
// 55, is not 0 but a little less.
TEST_F(SingularMatrix, keeps_only_an_exact_zero_singular) {
    cell({{5, 11, 0}});
    EXPECT_EQ(answer(), 0);
}

TEST_F(SingularMatrix, offsets_without_x_are_singular) {
    cell({{0, 1, 0}, {0, 0, 1}, {0, 1, 1}});
    EXPECT_EQ(answer(), 1);
}

TEST_F(SingularMatrix, keeps_the_last_pivot_untested) {
    cell({{1, 0, 0}, {0, 1, 0}, {1, 1, 0}});
    EXPECT_EQ(answer(), 0);
}

TEST_F(SingularMatrix, a_cell_without_faces_is_singular) {
    cell({});
    EXPECT_EQ(answer(), 1);
}

TEST_F(SingularMatrix, every_own_cell_is_examined) {
    cell(regular);
    cell(regular);
    cell({{1, 0, 0}});
    EXPECT_EQ(answer(), 1);
}

// The answer stands before the undefined cell is met.
TEST_F(SingularMatrix, first_singular_cell_decides) {
    cell({{1, 0, 0}});
    cell({{NaN, NaN, NaN}});
    EXPECT_EQ(answer(), 1);
}

TEST_F(SingularMatrix, no_own_cell_is_not_singular) {
    EXPECT_EQ(answer(), 0);
}

// 1e-300 is tiny but not 0; 1e-400 is 0 in doubles, though dx*dy = 1e-100 is not.
TEST_F(SingularMatrix, keeps_the_comparison_with_exact_zero) {
    cell({{1e-150, 0, 0}, {0, 1e-150, 0}, {0, 0, 1}});
    EXPECT_EQ(answer(), 0);
}

TEST_F(SingularMatrix, keeps_an_underflowing_pivot_as_zero) {
    cell({{1e-200, 1e100, 0}, {0, 0, 1}});
    EXPECT_EQ(answer(), 1);
}

TEST_F(SingularMatrix, keeps_undefined_pivots_as_not_zero) {
    cell({{NaN, 0, 0}});
    cell({{1, 0, 0}, {0, NaN, 0}});
    cell({{HUGE_VAL, 0, 0}});  // (dx*dy)/(dx*dx) is undefined, and the second pivot with it
    EXPECT_EQ(answer(), 0);
}

// One offset (49, 1, 0): Sxx = 2401, Sxy = 49, Syy = 1. The quotient 49/2401 is rounded, and its
// product with 49 is 0.9999999999999999: the second pivot is not 0, although 49*49/2401 is 1.
TEST_F(SingularMatrix, keeps_the_quotient_before_the_product) {
    cell({{49, 1, 0}});
    EXPECT_EQ(answer(), 0);
}

TEST_F(SingularMatrix, rounded_to_zero_is_zero) {
    cell({{3, 1, 0}});  // 3/9*3 is 1 in doubles too
    EXPECT_EQ(answer(), 1);
}

TEST_F(SingularMatrix, outlet_faces_do_not_help) {
    cell({{1, 0, 0}});
    host.addBoundary(Group::Outlet, 1, {}, {0, 1, 0});
    EXPECT_EQ(answer(), 1);
}

// [1] lacks an offset along y, which one face of each kind brings.
TEST_F(SingularMatrix, every_kind_but_outlet_faces_helps) {
    for (const Kind kind : allKinds) {
        SCOPED_TRACE(nameOf(kind));
        TestHost own;
        own.addCell({0, 0, 0}, NaN, {});
        own.addBoundary(Group::Wall, 1, {}, {1, 0, 0});
        if (placeFace(own, kind, 1, {}, {0, 1, 0}).kind == Kind::Inner)
            own.addBoundary(Group::Wall, 2, {}, {1, 1, 0});
        own.finish();
        CKVR3DWeldLine other;
        other.setPartitionInterface(own.partition());
        other.setFlowData(own.gv(), own.mesh());
        EXPECT_EQ(other.checkSingularLSMatrix(), 0);
    }
}

TEST_F(SingularMatrix, cell_numbers_of_faces_are_truncated) {
    cell({{1, 0, 0}});
    cell(regular);
    host.addCell({0, 1, 0}, NaN, {});
    host.addBoundary(Group::Wall, 3, {}, {1, 1, 0});
    host.addInner(2, 2, {}, {}, NaN);
    host.setInnerCells(1, 1.9, 3.9);
    EXPECT_EQ(answer(), 0);
}

// Cell 1 with two faces of one kind at (0, 1, 0) and one of another at (1, 3*2^25, 0). Sxx = 1,
// Sxy = 3*2^25, and the second pivot is Syy - 9*2^50. Two ones first: Syy = 9*2^50 + 2, the pivot
// is
// 2. The large one first or in between: each 1 is lost (a tie, rounded to even), the pivot is 0.
int answerInOrder(const std::vector<Kind>& kinds, const std::vector<bool>& large) {
    TestHost host;
    host.addCell({0, 0, 0}, NaN, {});
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const Point offset = large[i] ? Point{1, 3 * 0x1p25, 0} : Point{0, 1, 0};
        const PlacedFace face = placeFace(host, kinds[i], 1, {}, offset);
        if (face.kind != Kind::Inner) continue;  // a second own cell must be regular itself
        host.addBoundary(Group::Symm, face.otherCell, {}, {offset[0], offset[1] + 0x1p30, 0});
        host.addBoundary(Group::Symm, face.otherCell, {}, {offset[0] + 1, offset[1], 0});
    }
    host.finish();
    CKVR3DWeldLine calc;
    calc.setPartitionInterface(host.partition());
    calc.setFlowData(host.gv(), host.mesh());
    return calc.checkSingularLSMatrix();
}

TEST(SingularMatrixOrder, inner_interface_inlet_wall_symmetry) {
    const std::vector<Kind> order{Kind::Inner, Kind::Interface, Kind::Inlet, Kind::Wall,
                                  Kind::Symm};
    for (std::size_t late = 0; late < order.size(); ++late) {
        SCOPED_TRACE(nameOf(order[late]));
        for (std::size_t early = 0; early < late; ++early) {
            SCOPED_TRACE(nameOf(order[early]));
            const Kind a = order[early], b = order[late];
            EXPECT_EQ(answerInOrder({b, a, a}, {true, false, false}), 0);
            EXPECT_EQ(answerInOrder({b, b, a}, {false, false, true}), 1);
        }
        const Kind kind = order[late];
        EXPECT_EQ(answerInOrder({kind, kind, kind}, {false, false, true}), 0);
        EXPECT_EQ(answerInOrder({kind, kind, kind}, {true, false, false}), 1);
        EXPECT_EQ(answerInOrder({kind, kind, kind}, {false, true, false}), 1);
    }
}

// Random meshes with coordinates 0, 1, 3 or 49, so that zero pivots and nearly zero ones abound.
TEST(SingularMatrixRandom, agrees_with_the_naive_test) {
    int found[2] = {0, 0};
    for (int seed = 0; seed < 500; ++seed) {
        Dice dice(static_cast<std::uint64_t>(seed) + 1);
        const auto point = [&dice] {
            const double steps[] = {0.0, 1.0, 3.0, 49.0};
            return Point{steps[dice.below(4)], steps[dice.below(4)], steps[dice.below(4)]};
        };
        TestHost host;
        host.addCell(point(), NaN, {});
        host.addCell(point(), NaN, {});
        if (dice.below(2) == 0) host.addInner(1, 2, {}, {}, NaN);
        for (int face = 2 + dice.below(3); face > 0; --face)
            placeFace(host, allKinds[1 + dice.below(4)], 1 + dice.below(2), {}, point());
        host.finish();
        CKVR3DWeldLine calc;
        calc.setPartitionInterface(host.partition());
        calc.setFlowData(host.gv(), host.mesh());
        const int expected = naiveSingular(sceneOf(host));
        EXPECT_EQ(calc.checkSingularLSMatrix(), expected) << "seed " << seed;
        ++found[expected];
    }
    EXPECT_GT(found[0], 50);
    EXPECT_GT(found[1], 50);
}

}  // namespace

}  // namespace weldline::test
