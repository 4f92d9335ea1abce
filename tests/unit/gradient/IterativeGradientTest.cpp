#include <cmath>

#include "NumericsTest.h"

namespace weldline::test {

namespace {

class IterativeGradient : public NumericsTest {
  protected:
    // A face of `group` at `offset` from the centre of `cell`, with an area that must not matter.
    int boundary(Group group, int cell, Point offset) {
        return host.addBoundary(group, cell, {NaN, NaN, NaN}, offset);
    }

    void run(std::vector<double> phi) {
        g = vectors(7.5);
        calc.GradVarb_Iterative(phi.data(), g.x.data(), g.y.data(), g.z.data());
    }

    Vectors g;
};

// The field 2x + 3y - z on cells with an inner, an interface, an inlet, a wall and a symmetry face
// along the axes: sums of squares of powers of two, so the solution is exact.
//
//         i (0,2,0)
//         |
//   h -- [1] -- [2]   h at (-1,0,0), cell 1 in the origin, cell 2 at (4,0,0)
//        / \           w of cell 1 at (0,0,-4), of cell 2 at (0,1,0) and (0,0,1) from its centre
//       w   s          s at (0,0,2)
TEST_F(IterativeGradient, a_linear_field_is_reproduced) {
    host.addCell({0, 0, 0}, NaN, {});
    host.addCell({4, 0, 0}, NaN, {});
    host.addInner(1, 2, {NaN, NaN, NaN}, {NaN, NaN, NaN}, NaN);
    boundary(Group::Outlet, 1, {1, 1, 1});
    boundary(Group::Inlet, 1, {0, 2, 0});
    boundary(Group::Wall, 1, {0, 0, -4});
    boundary(Group::Symm, 1, {0, 0, 2});
    boundary(Group::Wall, 2, {4, 1, 0});
    boundary(Group::Wall, 2, {4, 0, 1});
    host.addInterface(1, {NaN, NaN, NaN}, {NaN, NaN, NaN}, NaN, {-1, 0, 0}, NaN, {});
    bind();
    const std::vector<double> phi{NaN, 0.0, 8.0, NaN, 6.0, 4.0, -2.0, 11.0, 7.0, -2.0};
    run(phi);
    EXPECT_TRUE(sameSlots({NaN, 2.0, 2.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 3.0, 3.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, -1.0, -1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}, g.z.data()));
}

// Offsets (2,0,2), (3,3,1), (1,0,2) with differences 7, 9, 6: the gradient is (1, 7/6, 5/2).
// Normal matrix ((14,9,9), (9,9,3), (9,3,9)) with the right-hand side (47, 27, 35). The numbers are
// such that M*M/M for (M/M)*M, or another order in the last step, gives other bits.
TEST_F(IterativeGradient, full_matrix_worked_by_hand) {
    host.addCell({0, 0, 0}, NaN, {});
    boundary(Group::Wall, 1, {2, 0, 2});
    boundary(Group::Wall, 1, {3, 3, 1});
    boundary(Group::Wall, 1, {1, 0, 2});
    bind();
    run({NaN, 0.0, 7.0, 9.0, 6.0});
    const double q = 9.0 / 14.0;  // first pivot: the same quotient for both rows
    const double a22 = 9.0 - q * 9.0, a23 = 3.0 - q * 9.0, b2 = 27.0 - q * 47.0;
    const double a32 = 3.0 - q * 9.0, a33 = 9.0 - q * 9.0, b3 = 35.0 - q * 47.0;
    const double s = a32 / a22, c33 = a33 - s * a23, c3 = b3 - s * b2;  // second pivot
    const double gz = c3 / c33, gy = (b2 - gz * a23) / a22;
    const double gx = ((47.0 - gy * 9.0) - gz * 9.0) / 14.0;
    EXPECT_EQ(g.z[1], gz);
    EXPECT_EQ(g.y[1], gy);
    EXPECT_EQ(g.x[1], gx);
    EXPECT_NEAR(gx, 1.0, 1e-13);
    EXPECT_NEAR(gy, 7.0 / 6.0, 1e-13);
    EXPECT_NEAR(gz, 2.5, 1e-13);
}

TEST_F(IterativeGradient, a_constant_field_is_flat_and_the_flag_stays) {
    host.addCell({0, 0, 0}, NaN, {});
    boundary(Group::Wall, 1, {1, 0, 0});
    boundary(Group::Wall, 1, {1, 1, 0});
    boundary(Group::Wall, 1, {1, 1, 1});
    bind();
    run(slots(5.0));
    EXPECT_TRUE(sameSlots(vectors(0.0), g));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 0);
    run({NaN, 0.0, 1.0, 3.0, 7.0});
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
}

// All offsets in the plane z = 0: the last pivot is 0, and 0/0 spreads to the other components.
TEST_F(IterativeGradient, coplanar_neighbours_give_undefined_components) {
    host.addCell({0, 0, 0}, NaN, {});
    boundary(Group::Wall, 1, {1, 0, 0});
    boundary(Group::Wall, 1, {0, 1, 0});
    bind();
    run({NaN, 0.0, 1.0, 3.0});
    EXPECT_TRUE(std::isnan(g.x[1]));
    EXPECT_TRUE(std::isnan(g.y[1]));
    EXPECT_TRUE(std::isnan(g.z[1]));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
}

// Offsets with dx = 0 only: the first pivot is 0 although a row exchange would not help either;
// nothing is guarded.
TEST_F(IterativeGradient, keeps_the_unguarded_first_pivot) {
    host.addCell({0, 0, 0}, NaN, {});
    boundary(Group::Wall, 1, {0, 1, 0});
    boundary(Group::Wall, 1, {0, 0, 1});
    bind();
    run({NaN, 0.0, 1.0, 3.0});
    EXPECT_TRUE(std::isnan(g.x[1]));
    EXPECT_TRUE(std::isnan(g.y[1]));
    EXPECT_TRUE(std::isnan(g.z[1]));
}

// dx = 2^-600 squares to 0, but its product with dy = 2^500 is 2^-100: with a row exchange the
// cell could be solved; without one it cannot.
TEST_F(IterativeGradient, keeps_the_elimination_without_pivoting) {
    host.addCell({0, 0, 0}, NaN, {});
    boundary(Group::Wall, 1, {std::ldexp(1.0, -600), std::ldexp(1.0, 500), 0});
    boundary(Group::Wall, 1, {0, 0, 1});
    bind();
    run({NaN, 0.0, 1.0, 3.0});
    EXPECT_FALSE(std::isfinite(g.x[1]));
    EXPECT_FALSE(std::isfinite(g.z[1]));
}

// Values below 1e-30 take part like any other: there is no reached test.
TEST_F(IterativeGradient, empty_cells_take_part) {
    host.addCell({0, 0, 0}, NaN, {});
    for (const Point offset : {Point{2, 0, 0}, Point{0, 2, 0}, Point{0, 0, 2}})
        boundary(Group::Symm, 1, offset);
    bind();
    run({NaN, 8.0, 0.0, -8.0, 1e-31});
    EXPECT_EQ(g.x[1], -4.0);
    EXPECT_EQ(g.y[1], -8.0);
    EXPECT_EQ(g.z[1], -4.0);
}

// Differences 0.001 and the next double below it over the distance 1.
TEST_F(IterativeGradient, gradients_shorter_than_0_001_are_zeroed_after_the_exchange) {
    const double below = std::nextafter(0.001, 0.0);
    for (int c = 1; c <= 2; ++c) {
        host.addCell({0, 0, 0}, NaN, {});
        for (const Point offset : {Point{1, 0, 0}, Point{0, 1, 0}, Point{0, 0, 1}})
            boundary(Group::Inlet, c, offset);
    }
    bind();
    run({NaN, 0.0, 0.0, 0.001, 0.0, 0.0, below, 0.0, 0.0});
    EXPECT_EQ(g.x[1], 0.001);
    EXPECT_EQ(g.x[2], 0.0);
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);
    ASSERT_EQ(host.exchanges.size(), 3U);
    EXPECT_EQ(host.exchanges[0].array, g.x.data());
    EXPECT_EQ(host.exchanges[1].array, g.y.data());
    EXPECT_EQ(host.exchanges[2].array, g.z.data());
    EXPECT_EQ(host.exchanges[0].before[2], below);
}

// What the exchange brings into the halo slot stays there; the work arrays of the record and slot 0
// are not touched.
TEST_F(IterativeGradient, slots_beyond_the_own_cells_belong_to_the_exchange) {
    host.addCell({0, 0, 0}, NaN, {});
    for (const Point offset : {Point{1, 0, 0}, Point{0, 1, 0}}) boundary(Group::Wall, 1, offset);
    host.addInterface(1, {}, {}, 0.5, {0, 0, 1}, 1.0, {});
    bind();
    host.exchange = [this](double* array) { array[host.haloSlot(1)] = 42.0; };
    calc.m_pWork1X[1] = 3.0;
    run({NaN, 0.0, 1.0, 2.0, 4.0});
    EXPECT_TRUE(sameSlots({NaN, 4.0, 0.0, 0.0, 42.0}, g.z.data()));
    EXPECT_TRUE(std::isnan(g.z[0]));
    EXPECT_EQ(calc.m_pWork1X[1], 3.0);
}

TEST_F(IterativeGradient, traces_its_stages) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addInterface(1, {}, {}, 0.5, {0, 0, 1}, 1.0, {});
    bind();
    startTrace();
    run(slots(1.0));
    EXPECT_EQ(trace(),
              "..Start iterative calculation of gradients\n"
              "// Contribution from inner cell faces\n"
              "// Contribution from Inlet Boundaries\n"
              "// Contribution from Wall Boundaries\n"
              "// Contribution from Symmetry Boundaries\n"
              "// Calculate Gradient Components at CV-centers\n");
}

}  // namespace

}  // namespace weldline::test
