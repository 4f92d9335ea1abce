#include <cmath>

#include "NumericsTest.h"

// The default scheme with one iteration, and the flux of a single face.

namespace weldline::test {

namespace {

constexpr double limit = 1e-30;  // above: reached by the melt

class DefaultGradient : public NumericsTest {
  protected:
    // [1] -- [2]: volumes 2 and 4, area (2, 3, 6), lambda 0.25 of cell 2.
    void buildPair() {
        host.addCell({0, 0, 0}, 2.0, {});
        host.addCell({1, 0, 0}, 4.0, {});
        host.addInner(1, 2, {2, 3, 6}, {NaN, NaN, NaN}, 0.25);
    }

    void run(int iterations, std::vector<double> phi) {
        g = vectors(7.5);
        calc.GradVarb(iterations, phi.data(), g.x.data(), g.y.data(), g.z.data());
    }

    // The flux of one face of area (2, 3, 6) between cells 1 and 2 on top of sums of 100.
    void addFace(int iterations, double first, double second, double lambda, Point centre) {
        std::vector<double> phi = slots(NaN);
        phi[1] = first;
        phi[2] = second;
        g = vectors(100.0);
        calc.GradVarb_FaceContribution(iterations, phi.data(), g.x.data(), g.y.data(), g.z.data(),
                                       lambda, 1, 2, 2.0, 3.0, 6.0, centre[0], centre[1],
                                       centre[2]);
    }

    void expectSums(double first, double second) {
        EXPECT_TRUE(sameSlots({NaN, 100.0 + 2.0 * first, 100.0 + 2.0 * second}, g.x.data()));
        EXPECT_TRUE(sameSlots({NaN, 100.0 + 3.0 * first, 100.0 + 3.0 * second}, g.y.data()));
        EXPECT_TRUE(sameSlots({NaN, 100.0 + 6.0 * first, 100.0 + 6.0 * second}, g.z.data()));
    }

    Vectors g;
};

// Face value 0.75*4 + 8*0.25 = 5. Cell 1: 5*(2, 3, 6)/2, cell 2: -5*(2, 3, 6)/4.
// One iteration reads no face centre: it is NaN here.
TEST_F(DefaultGradient, one_iteration_interpolates_linearly) {
    buildPair();
    bind();
    run(1, {NaN, 4.0, 8.0});
    EXPECT_TRUE(sameSlots({NaN, 5.0, -2.5}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 7.5, -3.75}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 15.0, -7.5}, g.z.data()));
}

TEST_F(DefaultGradient, both_sides_reached_share_the_face_value) {
    buildPair();
    bind();
    addFace(1, 4.0, 8.0, 0.25, {});
    expectSums(5.0, -5.0);
}

// A value of exactly 1e-30 is not reached here, the next double above it is.
TEST_F(DefaultGradient, a_side_not_reached_takes_no_flux) {
    buildPair();
    bind();
    const double above = std::nextafter(limit, 1.0);
    for (const double empty : {limit, 0.0, -3.0, NaN}) {
        SCOPED_TRACE(empty);
        addFace(1, 4.0, empty, 0.25, {});
        expectSums(4.0, 0.0);
        addFace(1, empty, 8.0, 0.25, {});
        expectSums(0.0, -8.0);
        addFace(1, empty, limit, 0.25, {});
        expectSums(0.0, 0.0);
    }
    addFace(1, 4.0, above, 0.25, {});
    expectSums(3.0, -3.0);
    addFace(1, above, 8.0, 0.25, {});
    expectSums(2.0, -2.0);
}

// Two iterations or more add the correction, with the centre between the cells at
// 0.75*(0, 0, 0) + 0.25*(8, 4, -4) = (2, 1, -1) and the gradient 0.75*(4, 8, 0) + 0.25*(0, 0, 4) =
// (3, 6, 1): from there to the face centre (4, 0, 1) it is (2, -1, 2).
// Face value (2*3 + 5) + -1*6 + 2*1 = 7.
TEST_F(DefaultGradient, more_iterations_correct_with_the_previous_gradient) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({8, 4, -4}, 1.0, {});
    bind();
    calc.m_pWork1X[1] = 4.0;
    calc.m_pWork1Y[1] = 8.0;
    calc.m_pWork1Z[2] = 4.0;
    addFace(2, 4.0, 8.0, 0.25, {4, 0, 1});
    expectSums(7.0, -7.0);
    addFace(3, 4.0, 8.0, 0.25, {4, 0, 1});
    expectSums(7.0, -7.0);
    addFace(1, 4.0, 8.0, 0.25, {4, 0, 1});
    expectSums(5.0, -5.0);
}

// The terms are X = 2^53, value 1, Y = -2^53, Z = 3: ((X + 1) + Y) + Z = (2^53 - 2^53) + 3 = 3.
// X + Y first would give 4, Z before Y as well, the value last too.
TEST_F(DefaultGradient, keeps_the_order_of_the_corrected_sum) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({0, 0, 0}, 1.0, {});
    bind();
    for (const int cell : {1, 2}) {
        calc.m_pWork1X[cell] = big;
        calc.m_pWork1Y[cell] = -big;
        calc.m_pWork1Z[cell] = 3.0;
    }
    addFace(2, 1.0, 1.0, 0.5, {1, 1, 1});
    expectSums(3.0, -3.0);
}

// The side that stands alone takes its own value, not the corrected one.
TEST_F(DefaultGradient, correction_is_not_used_beside_an_empty_cell) {
    buildPair();
    bind();
    addFace(2, 4.0, 0.0, 0.25, {NaN, NaN, NaN});
    expectSums(4.0, 0.0);
    addFace(2, 0.0, 8.0, 0.25, {NaN, NaN, NaN});
    expectSums(0.0, -8.0);
}

// i, s, w and o on one cell of volume 2 that the melt has not reached: the slot values count
// whatever they are. x: 1*4 + 2*(-3) + 4*0 = -2; y: 0*4 + 1*(-3) + 8*0 = -3.
TEST_F(DefaultGradient, boundary_faces_take_the_slot_value_untested) {
    host.addCell({0, 0, 0}, 2.0, {});
    host.addBoundary(Group::Outlet, 1, {9, 9, 9}, {});
    host.addBoundary(Group::Inlet, 1, {1, 0, 0}, {});
    host.addBoundary(Group::Symm, 1, {2, 1, 0}, {});
    host.addBoundary(Group::Wall, 1, {4, 8, 0}, {});
    bind();
    run(1, {NaN, 0.0, NaN, 4.0, -3.0, 0.0});
    EXPECT_TRUE(sameSlots({NaN, -1.0, 0.0, -1.0, -1.0, -1.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, -1.5, 0.0, -1.5, -1.5, -1.5}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 0.0, 0.0, 0.0, 0.0, 0.0}, g.z.data()));
}

// [1] -- h, volume 2, area (2, 3, 6), face value 0.75*4 + 8*0.25 = 5. The halo slot collects the
// opposite flux, undivided, until the exchange refreshes it.
TEST_F(DefaultGradient, interface_faces_count_like_inner_faces) {
    host.addCell({0, 0, 0}, 2.0, {});
    host.addInterface(1, {2, 3, 6}, {NaN, NaN, NaN}, 0.25, {1, 0, 0}, 64.0, {});
    bind();
    run(1, {NaN, 4.0, 8.0});
    EXPECT_TRUE(sameSlots({NaN, 5.0, -10.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 7.5, -15.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 15.0, -30.0}, g.z.data()));
}

// [1] -- [2], volume 1, area (1, 0, 0): the filled cell takes its own 4, the empty one nothing
// across the face and 0.5*2 from its wall.
TEST_F(DefaultGradient, an_empty_cell_has_only_its_other_faces) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({1, 0, 0}, 1.0, {});
    host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0});
    host.addBoundary(Group::Wall, 2, {0, 2, 0}, {1, 1, 0});
    bind();
    run(1, {NaN, 4.0, 0.0, 0.5});
    EXPECT_TRUE(sameSlots({NaN, 4.0, 0.0, 0.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 0.0, 1.0, 1.0}, g.y.data()));
}

// The sum 5 times 1/3 is one unit in the last place below 5/3.
TEST_F(DefaultGradient, keeps_the_multiplication_by_the_inverse_volume) {
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 3.0, {}), {1, 0, 0}, {});
    bind();
    run(1, {NaN, 1.0, 5.0});
    EXPECT_EQ(g.x[1], 1.6666666666666665);
}

TEST_F(DefaultGradient, a_cell_of_zero_volume_is_multiplied_by_1e30) {
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 0.0, {}), {2, 0, 0}, {});
    bind();
    run(1, {NaN, 1.0, 5.0});
    EXPECT_EQ(g.x[1], 10.0 * (1.0 / 1e-30));
    EXPECT_EQ(g.y[1], 0.0);
}

TEST_F(DefaultGradient, all_slots_are_cleared_the_first_unused_one_too) {
    buildPair();
    host.addBoundary(Group::Outlet, 1, {9, 9, 9}, {});
    bind();
    run(1, {NaN, 4.0, 8.0, NaN});
    EXPECT_EQ(g.x[0], 0.0);
    EXPECT_EQ(g.y[0], 0.0);
    EXPECT_EQ(g.z[0], 0.0);
    EXPECT_EQ(g.x[3], 0.0);
}

// One slot for three faces of cells 1 (inlet), 2 (symmetry), 3 (wall): the wall copy comes last,
// and without it the symmetry copy. The gradients are the cells' areas times the value 1.
TEST_F(DefaultGradient, boundary_copies_run_inlet_symmetry_wall) {
    for (const bool withWall : {true, false}) {
        TestHost shared;
        for (const double area : {1.0, 2.0, 4.0}) {
            const int cell = shared.addCell({}, 1.0, {});
            const Group groups[] = {Group::Inlet, Group::Symm, Group::Wall};
            if (cell < 3 || withWall) shared.addBoundary(groups[cell - 1], cell, {area, 0, 0}, {});
        }
        shared.finish();
        const int slot = shared.boundarySlot(Group::Inlet, 1);
        shared.mesh()->m_pSymmFaceBnd[1] = slot;
        if (withWall) shared.mesh()->m_pWallFaceBnd[1] = slot;
        CKVR3DWeldLine other;
        other.setPartitionInterface(shared.partition());
        other.setKVRCom(shared.communication(), shared.collective());
        other.setFlowData(shared.gv(), shared.mesh());
        std::vector<double> phi(shared.slots() + 1, 1.0), x = phi, y = phi, z = phi;
        other.GradVarb(1, phi.data(), x.data(), y.data(), z.data());
        EXPECT_EQ(x[slot], withWall ? 4.0 : 2.0);
    }
}

}  // namespace

}  // namespace weldline::test
