#include <cmath>

#include "NumericsTest.h"

namespace weldline::test {

namespace {

constexpr double limit = 1e-30;  // below: empty

class UpwindGradient : public NumericsTest {
  protected:
    // [1] -- [2]: volumes 2 and 4, area (2, 4, 8).
    void buildPair() {
        host.addCell({0, 0, 0}, 2.0, {});
        host.addCell({1, 0, 0}, 4.0, {});
        host.addInner(1, 2, {2, 4, 8}, {0.5, 0, 0}, 0.25);
        bind();
    }

    // [1] -- h: volume 2, area (2, 4, 8).
    void buildInterface() {
        host.addCell({0, 0, 0}, 2.0, {});
        host.addInterface(1, {2, 4, 8}, {0.5, 0, 0}, 0.25, {1, 0, 0}, 4.0, {});
        bind();
    }

    void run(std::vector<double> phi) {
        g = vectors(7.5);
        calc.GradVarb_Upwind(phi.data(), g.x.data(), g.y.data(), g.z.data());
    }

    // Values q1 and q2 on the face of buildPair(): q1*(2, 4, 8)/2 and -q2*(2, 4, 8)/4.
    void expectPair(double q1, double q2) {
        EXPECT_TRUE(sameSlots({NaN, q1, 0.0 - 0.5 * q2}, g.x.data()));
        EXPECT_TRUE(sameSlots({NaN, 2.0 * q1, 0.0 - q2}, g.y.data()));
        EXPECT_TRUE(sameSlots({NaN, 4.0 * q1, 0.0 - 2.0 * q2}, g.z.data()));
    }

    // Value q on the face of buildInterface(); the halo slot stays clear.
    void expectInterface(double q) {
        EXPECT_TRUE(sameSlots({NaN, q, 0.0}, g.x.data()));
        EXPECT_TRUE(sameSlots({NaN, 2.0 * q, 0.0}, g.y.data()));
        EXPECT_TRUE(sameSlots({NaN, 4.0 * q, 0.0}, g.z.data()));
    }

    Vectors g;
};

TEST_F(UpwindGradient, both_cells_use_the_smaller_value) {
    buildPair();
    run({NaN, 2.0, 5.0});
    expectPair(2.0, 2.0);
    run({NaN, 5.0, 2.0});
    expectPair(2.0, 2.0);
}

TEST_F(UpwindGradient, equal_values_give_that_value) {
    buildPair();
    run({NaN, 3.0, 3.0});
    expectPair(3.0, 3.0);
}

TEST_F(UpwindGradient, beside_an_empty_cell_each_side_uses_its_own_value) {
    buildPair();
    const double below = std::nextafter(limit, 0.0);
    for (const double empty : {0.0, -1.0, below}) {
        SCOPED_TRACE(empty);
        run({NaN, empty, 5.0});
        EXPECT_EQ(g.x[2], -2.5);
        run({NaN, 5.0, empty});
        EXPECT_EQ(g.x[1], 5.0);
        EXPECT_EQ(g.z[1], 20.0);
    }
    run({NaN, 4.0, 0.0});
    expectPair(4.0, 0.0);
    run({NaN, -2.0, 4.0});
    expectPair(-2.0, 4.0);
}

// Exactly 1e-30 is not empty: both sides use it, and the gradients are below the flat limit.
TEST_F(UpwindGradient, a_value_at_the_limit_is_filled) {
    buildPair();
    run({NaN, limit, 5.0});
    expectPair(0.0, 0.0);
    run({NaN, 5.0, limit});
    expectPair(0.0, 0.0);
    EXPECT_EQ(host.exchanges[0].before[1], limit);
    EXPECT_EQ(host.exchanges[0].before[2], -0.5 * limit);
}

// Three faces [1]--[2], [3]--[4], [5]--[6] of area (1, 0, 0): the second and third have an
// undefined difference. The kept values are those of the face before, one for each side: 7 and 0
// next to the empty cell 2.
TEST_F(UpwindGradient, keeps_the_previous_face_values_at_an_undefined_difference) {
    for (int c = 0; c < 6; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    for (int c = 1; c < 6; c += 2) host.addInner(c, c + 1, {1, 0, 0}, {c - 0.5, 0, 0});
    bind();
    const double inf = HUGE_VAL;
    run({NaN, 7.0, 0.0, NaN, 5.0, inf, inf});
    EXPECT_TRUE(sameSlots({NaN, 7.0, 0.0, 7.0, 0.0, 7.0, 0.0}, g.x.data()));
    run({NaN, 0.0, 3.0, 5.0, NaN, NaN, NaN});
    EXPECT_TRUE(sameSlots({NaN, 0.0, -3.0, 0.0, -3.0, 0.0, -3.0}, g.x.data()));
    run({NaN, 9.0, 4.0, 5.0, NaN, 2.0, 1.0});
    EXPECT_TRUE(sameSlots({NaN, 4.0, -4.0, 4.0, -4.0, 1.0, -1.0}, g.x.data()));
}

// Before the first face both kept values are 0, in every call.
TEST_F(UpwindGradient, keeps_zero_before_the_first_face) {
    buildPair();
    run({NaN, 2.0, 5.0});
    run({NaN, NaN, 5.0});
    expectPair(0.0, 0.0);
    run({NaN, 5.0, NaN});
    expectPair(0.0, 0.0);
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
}

// An undefined value beside an empty cell is an own value like any other.
TEST_F(UpwindGradient, an_undefined_value_beside_an_empty_cell_is_used) {
    buildPair();
    run({NaN, NaN, 0.0});
    EXPECT_TRUE(std::isnan(g.x[1]));
    EXPECT_EQ(g.x[2], 0.0);
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);
}

// o, w, i, s on a cell with the value 3 and volume 2: the own value on all of them but the outlet,
// whatever the slots hold.
TEST_F(UpwindGradient, boundary_faces_use_the_own_value_and_outlets_nothing) {
    host.addCell({0, 0, 0}, 2.0, {});
    host.addBoundary(Group::Outlet, 1, {64, 64, 64}, {});
    host.addBoundary(Group::Wall, 1, {2, 0, 0}, {});
    host.addBoundary(Group::Inlet, 1, {0, 4, 0}, {});
    host.addBoundary(Group::Symm, 1, {0, 0, 8}, {});
    bind();
    run({NaN, 3.0, NaN, NaN, NaN, NaN});
    EXPECT_TRUE(sameSlots({NaN, 3.0, 0.0, 3.0, 3.0, 3.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 6.0, 0.0, 6.0, 6.0, 6.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 12.0, 0.0, 12.0, 12.0, 12.0}, g.z.data()));
}

TEST_F(UpwindGradient, interface_takes_the_smaller_value_for_the_own_cell_only) {
    buildInterface();
    run({NaN, 2.0, 5.0});
    expectInterface(2.0);
    run({NaN, 5.0, 2.0});
    expectInterface(2.0);
    run({NaN, 3.0, 3.0});
    expectInterface(3.0);
}

TEST_F(UpwindGradient, interface_beside_an_empty_cell_uses_the_own_value) {
    buildInterface();
    run({NaN, 5.0, 0.0});
    expectInterface(5.0);
    run({NaN, 5.0, std::nextafter(limit, 0.0)});
    expectInterface(5.0);
    run({NaN, -2.0, 5.0});
    expectInterface(-2.0);
    run({NaN, -2.0, -3.0});
    expectInterface(-2.0);
    run({NaN, 5.0, limit});
    expectInterface(0.0);
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
}

// In front of the undefined interface face stands a wall of area (0, 1, 0): its 2 * 1 / 2 remains.
TEST_F(UpwindGradient, interface_with_an_undefined_difference_adds_nothing) {
    host.addCell({0, 0, 0}, 2.0, {});
    host.addBoundary(Group::Wall, 1, {0, 1, 0}, {});
    host.addInterface(1, {2, 4, 8}, {0.5, 0, 0}, 0.25, {1, 0, 0}, 4.0, {});
    bind();
    run({NaN, 2.0, 1.0, NaN});
    EXPECT_TRUE(sameSlots({NaN, 0.0, 0.0, 0.0}, g.x.data()));
    EXPECT_EQ(g.y[1], 1.0);
}

TEST_F(UpwindGradient, interface_of_an_undefined_own_value) {
    buildInterface();
    run({NaN, NaN, 5.0});
    expectInterface(0.0);
    run({NaN, HUGE_VAL, HUGE_VAL});
    expectInterface(0.0);
    run({NaN, NaN, 0.0});  // beside an empty halo cell it is used
    EXPECT_TRUE(std::isnan(g.x[1]));
}

// ((1/10)*3)*11 = 0.30000000000000004*11 = 3.3000000000000007; (1/10)*33 and 33/10 are smaller.
TEST_F(UpwindGradient, keeps_the_order_of_the_product) {
    host.addCell({0, 0, 0}, 10.0, {});
    host.addCell({1, 0, 0}, 10.0, {});
    host.addCell({2, 0, 0}, 10.0, {});
    host.addInner(1, 2, {3, 0, 0}, {});
    host.addBoundary(Group::Wall, 3, {0, 3, 0}, {});
    host.addInterface(3, {0, 0, 3}, {}, 0.5, {}, 10.0, {});
    bind();
    run({NaN, 11.0, 12.0, 11.0, 1.0, 12.0});
    EXPECT_EQ(g.x[1], 3.3000000000000007);
    EXPECT_EQ(g.x[2], -3.3000000000000007);
    EXPECT_EQ(g.y[3], 3.3000000000000007);
    EXPECT_EQ(g.z[3], 3.3000000000000007);
}

// Volume 0: an infinite component where the area is not 0, an undefined one where it is.
TEST_F(UpwindGradient, zero_volume_gives_components_that_no_filter_catches) {
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 0.0, {}), {1, 0, 0}, {});
    bind();
    run({NaN, 2.0, 2.0});
    EXPECT_EQ(g.x[1], HUGE_VAL);
    EXPECT_TRUE(std::isnan(g.y[1]));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
}

// Walls of areas 0.001 and the next double below it on cells of volume 1 and value 1.
TEST_F(UpwindGradient, gradients_shorter_than_0_001_are_zeroed_after_copy_and_exchange) {
    const double below = std::nextafter(0.001, 0.0);
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 1.0, {}), {0, 0.001, 0}, {});
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 1.0, {}), {0, below, 0}, {});
    bind();
    run(slots(1.0));
    EXPECT_TRUE(sameSlots({NaN, 0.001, 0.0, 0.001, below}, g.y.data()));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);
    EXPECT_EQ(calc.m_pZeroGradFlag[4], 0);
    EXPECT_TRUE(sameSlots({NaN, 0.001, below, 0.001, below}, host.exchanges[1].before.data()));
    std::vector<double> larger = slots(1.0);
    larger[2] = 5.0;
    run(larger);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);  // flags stay
    EXPECT_EQ(g.y[2], below * 5.0);
}

// A closed cell in a uniform field: +2 and -2 cancel.
TEST_F(UpwindGradient, a_uniform_field_in_a_closed_cell_is_flat) {
    buildPair();
    run({NaN, 0.0, 0.0});
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);
    expectPair(0.0, 0.0);
}

TEST_F(UpwindGradient, exchanges_x_y_z_with_or_without_interface) {
    buildPair();
    run({NaN, 2.0, 5.0});
    ASSERT_EQ(host.exchanges.size(), 3U);
    EXPECT_EQ(host.exchanges[0].array, g.x.data());
    EXPECT_EQ(host.exchanges[1].array, g.y.data());
    EXPECT_EQ(host.exchanges[2].array, g.z.data());
    EXPECT_TRUE(std::isnan(g.x[0]));  // slot 0 is nobody's
}

// One slot for a wall (cell 1), an inlet (cell 2) and a symmetry face (cell 3): the last copy is
// the symmetry face's; without it, by a slot of its own, the inlet's.
TEST_F(UpwindGradient, boundary_copies_run_wall_inlet_symmetry) {
    const Group groups[] = {Group::Wall, Group::Inlet, Group::Symm};
    for (int c = 1; c <= 3; ++c)
        host.addBoundary(groups[c - 1], host.addCell({}, 1.0, {}), {1.0 * c, 0, 0}, {});
    bind();
    const int slot = calc.m_pInletFaceBnd[1] = calc.m_pWallFaceBnd[1];
    run(slots(1.0));
    EXPECT_EQ(g.x[slot], 2.0);
    calc.m_pSymmFaceBnd[1] = slot;
    run(slots(1.0));
    EXPECT_EQ(g.x[slot], 3.0);
}

TEST_F(UpwindGradient, traces_its_start) {
    buildPair();
    startTrace();
    run({NaN, 2.0, 5.0});
    EXPECT_EQ(trace(), "..Start UPWIND calculation of gradients\n");
}

}  // namespace

}  // namespace weldline::test
