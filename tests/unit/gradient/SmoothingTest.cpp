#include <cmath>

#include "NumericsTest.h"

// Cells drawn as [1] [2], own cells in brackets, boundary slots w (wall), i (inlet), s (symmetry),
// o (outlet), halo slots h. Areas are written at the faces.

namespace weldline::test {

namespace {

constexpr double limit = 1e-30;  // below: not reached by the melt

class Smoothing : public NumericsTest {
  protected:
    // i --1-- [1] --1-- [2]: area vectors of length 1, lambda 0.25 of cell 2.
    void buildPair() {
        host.addCell({0, 0, 0}, 1.0, {});
        host.addCell({1, 0, 0}, 1.0, {});
        host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0}, 0.25);
        host.addBoundary(Group::Inlet, 1, {0, -1, 0}, {0, -0.5, 0});
        bind();
        phi = slots(0.0);
    }

    // One pass over cells with the values 4 (cell 1), 8 (cell 2) and 2 (inlet slot).
    void smoothPair() {
        phi = slots(0.0);
        phi[1] = 4.0;
        phi[2] = 8.0;
        phi[host.boundarySlot(Group::Inlet, 1)] = 2.0;
        calc.Smooth_Variable(phi.data(), 1);
    }

    std::vector<double> phi;
};

TEST_F(Smoothing, no_pass_leaves_the_values_and_traces) {
    buildPair();
    startTrace();
    const std::vector<double> before = phi = slots(3.25);
    calc.Smooth_Variable(phi.data(), 0);
    calc.Smooth_Variable(phi.data(), -1);
    EXPECT_TRUE(sameSlots(before, phi.data()));
    EXPECT_TRUE(host.exchanges.empty());
    EXPECT_EQ(trace(), "calWeldLine: Smooth_Variable\ncalWeldLine: Smooth_Variable\n");
}

TEST_F(Smoothing, traces_only_on_the_master_with_an_open_file) {
    buildPair();
    calc.m_FlagDebugOutput = true;
    calc.Smooth_Variable(phi.data(), 0);
    startTrace();
    host.processNumber = 1;
    calc.Smooth_Variable(phi.data(), 0);
    calc.m_FlagDebugOutput = false;
    host.processNumber = 0;
    calc.Smooth_Variable(phi.data(), 0);
    EXPECT_EQ(trace(), "");
}

// w --5-- [1] --7-- [2]: the inner face value is 0.75*4 + 0.25*8 = 5, the wall's 12.
// S[1] = 5*7 + 12*5 = 95, W[1] = 12; S[2] = 35, W[2] = 7.
TEST_F(Smoothing, cell_becomes_the_area_weighted_mean_of_its_face_values) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({1, 0, 0}, 3.0, {});
    host.addInner(1, 2, {2, 3, 6}, {0.5, 0, 0}, 0.25);
    host.addBoundary(Group::Wall, 1, {0, 3, 4}, {-0.5, 0, 0});
    bind();
    phi = slots(NaN);
    phi[1] = 4.0;
    phi[2] = 8.0;
    phi[3] = 12.0;
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], 95.0 / 12.0);
    EXPECT_EQ(phi[2], 5.0);
    EXPECT_EQ(phi[3], 95.0 / 12.0);  // the wall slot follows its cell
    EXPECT_TRUE(std::isnan(phi[0]));
}

// The sums stay behind in the work arrays: S in the second, W in the third; the first is not used.
TEST_F(Smoothing, sums_lie_in_the_work_arrays) {
    buildPair();
    calc.m_pWork1X[1] = 17.0;
    smoothPair();
    EXPECT_EQ(calc.m_pWork1Y[1], 5.0 + 2.0);
    EXPECT_EQ(calc.m_pWork1Z[1], 2.0);
    EXPECT_EQ(calc.m_pWork1Y[2], 5.0);
    EXPECT_EQ(calc.m_pWork1Z[2], 1.0);
    EXPECT_EQ(calc.m_pWork1X[1], 17.0);
}

// i, w, s, o on one cell, faces of length 1, slot values 2, 3, 4: the mean is (2+4+3)/3 = 3. The
// inlet slot has one face, whose value is its own.
TEST_F(Smoothing, boundary_slots_after_a_pass) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addBoundary(Group::Outlet, 1, {0, 0, 1}, {0, 0, 1});
    host.addBoundary(Group::Inlet, 1, {-1, 0, 0}, {-1, 0, 0});
    host.addBoundary(Group::Wall, 1, {1, 0, 0}, {1, 0, 0});
    host.addBoundary(Group::Symm, 1, {0, 1, 0}, {0, 1, 0});
    bind();
    phi = {NaN, 50.0, 99.0, 2.0, 3.0, 4.0};
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], 3.0);
    EXPECT_EQ(phi[2], 0.0);  // outlet: no face takes part
    EXPECT_EQ(phi[3], 2.0);  // inlet: the weighted mean of its face values
    EXPECT_EQ(phi[4], 3.0);  // wall: the own cell
    EXPECT_EQ(phi[5], 3.0);  // symmetry: the own cell
}

// w [1], s [2], the wall face given the symmetry face's slot. Cell 1 is not reached and becomes 0,
// cell 2 takes the slot's 5; the slot holds the copy made last.
TEST_F(Smoothing, symmetry_slots_are_copied_after_wall_slots) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({2, 0, 0}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {1, 0, 0}, {1, 0, 0});
    host.addBoundary(Group::Symm, 2, {0, 1, 0}, {2, 1, 0});
    bind();
    host.mesh()->m_pWallFaceBnd[1] = host.boundarySlot(Group::Symm, 1);
    calc.m_pVariableOrg[1] = 0.0;
    phi = {NaN, 1.0, 2.0, 9.0, 5.0};
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], 0.0);
    EXPECT_EQ(phi[2], 5.0);
    EXPECT_EQ(phi[4], 5.0);
}

TEST_F(Smoothing, the_loaded_value_decides_what_is_reached) {
    buildPair();
    const int inlet = host.boundarySlot(Group::Inlet, 1);
    struct Case {
        double loaded;
        bool reached;
    };
    for (const Case& one : {Case{limit, true}, Case{std::nextafter(limit, 0.0), false},
                            Case{std::nextafter(limit, 1.0), true}, Case{0.0, false},
                            Case{-1.0, false}, Case{NaN, true}}) {
        SCOPED_TRACE(one.loaded);
        for (const int slot : {1, 2, inlet}) {
            SCOPED_TRACE(slot);
            for (const int other : {1, 2, inlet}) calc.m_pVariableOrg[other] = 1.0;
            calc.m_pVariableOrg[slot] = one.loaded;
            smoothPair();
            // Inner face value 5, inlet face value 2, both faces of length 1.
            const bool inner = one.reached || slot == inlet, inletFace = one.reached || slot == 2;
            const double faces = (inner ? 1.0 : 0.0) + (inletFace ? 1.0 : 0.0);
            const double sum = (inner ? 5.0 : 0.0) + (inletFace ? 2.0 : 0.0);
            EXPECT_EQ(phi[1], faces == 0.0 ? 0.0 : sum / faces);
            EXPECT_EQ(phi[2], inner ? 5.0 : 0.0);
            EXPECT_EQ(phi[inlet], inletFace ? 2.0 : 0.0);
        }
    }
}

// The smoothed array itself may hold anything, 0 and negative numbers too.
TEST_F(Smoothing, the_smoothed_value_does_not_decide_what_is_reached) {
    buildPair();
    phi[1] = 0.0;
    phi[2] = -8.0;
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], -1.0);  // (-2 + 0) / 2
    EXPECT_EQ(phi[2], -2.0);
}

TEST_F(Smoothing, only_the_flag_value_1_keeps_a_cell_out) {
    buildPair();
    for (const int flag : {0, 2, -1}) {
        calc.m_pZeroGradFlag[1] = calc.m_pZeroGradFlag[2] = flag;
        smoothPair();
        EXPECT_EQ(phi[2], 5.0) << flag;
    }
    calc.m_pZeroGradFlag[1] = 0;
    calc.m_pZeroGradFlag[2] = 1;
    smoothPair();
    EXPECT_EQ(phi[2], 0.0);
    EXPECT_EQ(phi[1], 2.0);  // only the inlet face is left
    calc.m_pZeroGradFlag[2] = 0;
    calc.m_pZeroGradFlag[1] = 1;
    smoothPair();
    EXPECT_EQ(phi[1], 0.0);
    EXPECT_EQ(phi[2], 0.0);
    calc.m_pZeroGradFlag[1] = 0;
    calc.m_pZeroGradFlag[host.boundarySlot(Group::Inlet, 1)] = 1;
    smoothPair();
    EXPECT_EQ(phi[1], 5.0);
}

// [1] -- [2] -- [3] -- [4], cell 3 not reached: cells 3 and 4 become 0, cell 2 averages over its
// face to cell 1 only.
TEST_F(Smoothing, neighbours_of_unreached_cells_average_over_their_other_faces) {
    for (int c = 0; c < 4; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    for (int c = 1; c < 4; ++c) host.addInner(c, c + 1, {1, 0, 0}, {c - 0.5, 0, 0}, 0.75);
    bind();
    calc.m_pVariableOrg[3] = 0.0;
    phi = {NaN, 4.0, 8.0, 100.0, 100.0};
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_TRUE(sameSlots({NaN, 7.0, 7.0, 0.0, 0.0}, phi.data()));  // 0.25*4 + 0.75*8 = 7
}

// The own value enters a boundary face with weight 0.0: an infinite or undefined one spoils it.
TEST_F(Smoothing, keeps_zero_weight_product) {
    for (const Group group : {Group::Inlet, Group::Wall, Group::Symm})
        host.addBoundary(group, host.addCell({0, 0, 0}, 1.0, {}), {1, 0, 0}, {1, 0, 0});
    bind();
    for (const double own : {HUGE_VAL, -HUGE_VAL, NaN}) {
        phi = slots(2.0);
        for (int c = 1; c <= 3; ++c) phi[c] = own;
        calc.Smooth_Variable(phi.data(), 1);
        for (int slot = 1; slot <= host.slots(); ++slot) EXPECT_TRUE(std::isnan(phi[slot])) << slot;
    }
    phi = slots(2.0);
    for (int c = 1; c <= 3; ++c) phi[c] = 1e308;
    calc.Smooth_Variable(phi.data(), 1);
    for (int slot = 1; slot <= host.slots(); ++slot) EXPECT_EQ(phi[slot], 2.0) << slot;
}

// [1] -- [2] -- [3], lambda 0.5, values 0, 8, 16.
// Pass 1: faces 4 and 12: cells 4, (4+12)/2 = 8, 12. Pass 2: faces 6 and 10: cells 6, 8, 10.
TEST_F(Smoothing, a_pass_uses_the_values_of_the_pass_before) {
    for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0});
    host.addInner(2, 3, {1, 0, 0}, {1.5, 0, 0});
    bind();
    phi = {NaN, 0.0, 8.0, 16.0};
    calc.Smooth_Variable(phi.data(), 2);
    EXPECT_TRUE(sameSlots({NaN, 6.0, 8.0, 10.0}, phi.data()));
}

// A weight of 2^-100 (7.9e-31) is not large against the guard of 1e-30.
TEST_F(Smoothing, keeps_the_guard_added_to_the_weight) {
    const double area = std::ldexp(1.0, -100);
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 1.0, {}), {area, 0, 0}, {1, 0, 0});
    bind();
    phi = {NaN, 5.0, 3.0};
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], 3.0 * area / (area + 1e-30));
}

// [1] --2-- h and [1] --1-- w. Pass 1: face value 0.75*4 + 0.25*20 = 8, cell (8*2 + 1) / 3 = 17/3;
// the halo slot leaves the sums with 8 and is refreshed to 12 by the exchange.
// Pass 2: the wall slot holds 17/3, the face value is 0.75*17/3 + 0.25*12.
TEST_F(Smoothing, halo_values_come_from_the_exchange_of_every_pass) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addInterface(1, {0, 0, 2}, {0, 0, 0.5}, 0.25, {0, 0, 1}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {1, 0, 0}, {1, 0, 0});
    bind();
    const int wall = 2, halo = 3;
    ASSERT_EQ(host.haloSlot(1), halo);
    host.exchange = [](double* array) { array[halo] = 12.0; };
    phi = {NaN, 4.0, 1.0, 20.0};
    calc.Smooth_Variable(phi.data(), 2);
    const double first = 17.0 / 3.0, face = 0.75 * first + 0.25 * 12.0;
    const double second = (face * 2.0 + first) / 3.0;
    ASSERT_EQ(host.exchanges.size(), 2U);
    EXPECT_EQ(host.exchanges[0].array, phi.data());
    EXPECT_EQ(host.exchanges[1].array, phi.data());
    EXPECT_TRUE(sameSlots({NaN, first, first, 8.0}, host.exchanges[0].before.data()));
    EXPECT_TRUE(sameSlots({NaN, second, second, face}, host.exchanges[1].before.data()));
    EXPECT_EQ(phi[wall], second);
    EXPECT_EQ(phi[halo], 12.0);
}

// Area (1, 1, 3*2^25): (1 + 1) + 9*2^50 is 9*2^50 + 2, whose root is the double above 3*2^25. With
// one of the ones added last both are lost (ties, rounded to even) and the root is 3*2^25.
TEST_F(Smoothing, keeps_the_order_of_the_squares_in_an_area) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {1, 1, 3 * 0x1p25}, {1, 0, 0});
    bind();
    phi = slots(1.0);
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(calc.m_pWork1Z[1], std::nextafter(3 * 0x1p25, HUGE_VAL));
}

// Cell numbers are held as reals and truncated: 1.9 is cell 1, 3.5 is cell 3.
TEST_F(Smoothing, cell_numbers_of_faces_are_truncated) {
    for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0});
    host.setInnerCells(1, 1.9, 3.5);
    bind();
    phi = {NaN, 2.0, 100.0, 4.0};
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_TRUE(sameSlots({NaN, 3.0, 0.0, 3.0}, phi.data()));
}

}  // namespace

}  // namespace weldline::test
