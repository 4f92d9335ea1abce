#include <cmath>

#include "NumericsTest.h"

namespace weldline::test {

namespace {

constexpr double limit = 1e-30;  // below: empty

class RbfGradient : public NumericsTest {
  protected:
    // [1] -- [2] -- [3]: volumes 2, 4 and 1, areas (2, 4, 8) and (1, 0, 0).
    void buildRow() {
        host.addCell({0, 0, 0}, 2.0, {});
        host.addCell({1, 0, 0}, 4.0, {});
        host.addCell({2, 0, 0}, 1.0, {});
        host.addInner(1, 2, {2, 4, 8}, {0.5, 0, 0}, 0.25);
        host.addInner(2, 3, {1, 0, 0}, {1.5, 0, 0}, 0.25);
        bind();
    }

    void run(std::vector<double> phi) {
        g = vectors(7.5);
        calc.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
    }

    Vectors g;
};

TEST_F(RbfGradient, prepares_the_five_objects_at_every_call) {
    buildRow();
    const CallLog expected{"RBF0 getKvr3dGV",
                           "RBF0 getPartitionFace",
                           "RBF0 Initialize 1",
                           "RBF1 getKvr3dGV",
                           "RBF1 getPartitionFace",
                           "RBF1 Initialize 2",
                           "RBF2 getKvr3dGV",
                           "RBF2 getPartitionFace",
                           "RBF2 Initialize 3",
                           "RBF4 getKvr3dGV",
                           "RBF4 getPartitionFace",
                           "RBF4 Initialize 5",
                           "RBF3 getKvr3dGV",
                           "RBF3 getPartitionFace",
                           "RBF3 Initialize 6",
                           "DDM_Exch",
                           "DDM_Exch",
                           "DDM_Exch"};
    for (int call = 0; call < 2; ++call) {
        callLog().clear();
        host.exchanges.clear();
        run({NaN, 1.0, 2.0, 3.0});
        EXPECT_EQ(callLog(), expected);
        ASSERT_EQ(host.exchanges.size(), 3U);
        EXPECT_EQ(host.exchanges[0].array, g.x.data());
        EXPECT_EQ(host.exchanges[1].array, g.y.data());
        EXPECT_EQ(host.exchanges[2].array, g.z.data());
    }
}

// Face 1: 0.5*8 + 0.25*4 + 0.25*12 = 8 from cells 3, 1 and 2, exact in every term.
// Face 2 (no stencil): nothing. Cell 1: 8*(2, 4, 8)/2, cell 2: -8*(2, 4, 8)/4.
TEST_F(RbfGradient, face_values_are_weighted_over_the_stencil) {
    buildRow();
    rbfRows() = {{{3, 1, 2}, {}}, {{0.5, 0.25, 0.25}, {}}};
    run({NaN, 4.0, 12.0, 8.0});
    EXPECT_TRUE(sameSlots({NaN, 8.0, -4.0, 0.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 16.0, -8.0, 0.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 32.0, -16.0, 0.0}, g.z.data()));
    EXPECT_EQ(calc.m_pZeroGradFlag[3], 1);  // its only face has no stencil
}

// A cell that stands twice in the stencil counts twice; any slot may be named.
TEST_F(RbfGradient, stencil_may_name_any_slot_again) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({1, 0, 0}, 1.0, {});
    host.addInner(1, 2, {1, 0, 0}, {});
    host.addBoundary(Group::Wall, 2, {0, 0, 0}, {});
    host.addInterface(2, {0, 0, 0}, {}, 0.5, {}, 1.0, {});
    bind();
    rbfRows() = {{{3, 4, 3}}, {{1.0, 2.0, 1.0}}};
    run({NaN, 1.0, 1.0, 5.0, 7.0});
    EXPECT_EQ(g.x[1], 24.0);
    EXPECT_EQ(g.x[2], -24.0);
}

TEST_F(RbfGradient, uniform_stencil_gives_that_value) {
    buildRow();
    rbfRows() = {{{1, 2, 3}, {3, 2}}, {{0.25, 0.25, 0.5}, {-1.0, 2.0}}};
    run({NaN, 3.0, 3.0, 3.0});
    EXPECT_TRUE(sameSlots({NaN, 3.0, -1.5 + 0.75, -3.0}, g.x.data()));
}

// Volume 3, area 1, values 1 and 2, weights 0.25 and 0.75. Term by term (1/3)*0.25*1 +
// (1/3)*0.75*2 = 0.5833333333333334; the face value 1.75 times 1/3 is 0.5833333333333333.
TEST_F(RbfGradient, keeps_the_sum_term_by_term) {
    host.addCell({0, 0, 0}, 3.0, {});
    host.addCell({1, 0, 0}, 3.0, {});
    host.addInner(1, 2, {1, 0, 0}, {}, 0.75);
    bind();
    run({NaN, 1.0, 2.0});
    EXPECT_EQ(g.x[1], 0.5833333333333334);
    EXPECT_EQ(g.x[2], -0.5833333333333334);
}

// The terms of a stencil join the running sum one by one: 2^53, then 1, then 1 leave 2^53, and the
// last face takes it away. Joined first, 1 + 1 = 2 would survive.
TEST_F(RbfGradient, keeps_the_terms_in_the_running_sum) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({1, 0, 0}, 1.0, {});
    for (int face = 0; face < 3; ++face) host.addInner(1, 2, {1, 1, 1}, {});
    bind();
    rbfRows() = {{{1}, {1, 2}, {1}}, {{big}, {1.0, 1.0}, {-big}}};
    run({NaN, 1.0, 1.0});
    EXPECT_TRUE(sameSlots(vectors(0.0), g));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
}

// (((1/10)*3)*11)*1 = 3.3000000000000007, where (1/10)*33 and 33/10 are smaller.
TEST_F(RbfGradient, keeps_the_order_of_the_product) {
    for (int c = 1; c <= 6; ++c) host.addCell({1.0 * c, 0, 0}, 10.0, {});
    host.addInner(1, 2, {3, 0, 0}, {});  // stencil
    host.addInner(3, 4, {3, 0, 0}, {});  // beside the empty cell 4
    host.addBoundary(Group::Wall, 5, {3, 0, 0}, {});
    host.addInterface(6, {3, 0, 0}, {}, 0.5, {}, 10.0, {});
    bind();
    rbfRows() = {{{1}, {}}, {{11.0}, {}}};
    run({NaN, 1.0, 1.0, 11.0, 0.0, 1.0, 11.0, 11.0, 0.0});
    EXPECT_EQ(g.x[1], 3.3000000000000007);
    EXPECT_EQ(g.x[2], -3.3000000000000007);
    EXPECT_EQ(g.x[3], 3.3000000000000007);
    EXPECT_EQ(g.x[4], 0.0);
    EXPECT_EQ(g.x[5], 3.3000000000000007);
    EXPECT_EQ(g.x[6], 3.3000000000000007);
}

// Beside an empty cell the stencil is not asked: its entries would give NaN.
TEST_F(RbfGradient, beside_an_empty_cell_each_side_uses_its_own_value) {
    buildRow();
    const double below = std::nextafter(limit, 0.0);
    rbfRows() = {{{1}, {}}, {{NaN}, {}}};
    run({NaN, 4.0, 0.0, 5.0});
    EXPECT_TRUE(sameSlots({NaN, 4.0, 0.0, -5.0}, g.x.data()));
    run({NaN, below, 8.0, 0.0});
    EXPECT_EQ(g.x[1], 0.0);
    EXPECT_EQ(g.z[2], -16.0);
    EXPECT_EQ(g.x[2], -4.0 + 2.0);
    run({NaN, limit, 8.0, 0.0});
    EXPECT_TRUE(std::isnan(g.x[1]));  // exactly 1e-30 is filled: the stencil is used
    run({NaN, 8.0, limit, 0.0});
    EXPECT_TRUE(std::isnan(g.x[1]));
    run({NaN, NaN, 8.0, 0.0});  // and so is an undefined value
    EXPECT_TRUE(std::isnan(g.x[2]));
}

// Lengths of (2, 3, 6) and (1, 2, 2): 7 and 3.
TEST_F(RbfGradient, face_length_is_kept_of_the_last_interpolated_face) {
    for (int c = 1; c <= 4; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    host.addInner(1, 2, {2, 3, 6}, {});
    host.addInner(2, 3, {1, 2, 2}, {});
    host.addInner(3, 4, {0, 3, 4}, {});
    bind();
    calc.m_FaceAreaMag = -1.0;
    run({NaN, 0.0, 1.0, 0.0, 1.0});  // no face between two filled cells
    EXPECT_EQ(calc.m_FaceAreaMag, -1.0);
    run({NaN, 1.0, 1.0, 0.0, 1.0});
    EXPECT_EQ(calc.m_FaceAreaMag, 7.0);
    run({NaN, 1.0, 1.0, 1.0, 0.0});
    EXPECT_EQ(calc.m_FaceAreaMag, 3.0);
    rbfRows() = {{{1}, {2}, {}}, {{1.0}, {1.0}, {}}};  // an empty stencil is measured all the same
    run({NaN, 1.0, 1.0, 1.0, 1.0});
    EXPECT_EQ(calc.m_FaceAreaMag, 5.0);
}

// o, w, i, s on one cell of volume 2: the slot values 3, 5, 7, not the own 100.
TEST_F(RbfGradient, boundary_faces_use_the_slot_value_and_outlets_nothing) {
    host.addCell({0, 0, 0}, 2.0, {});
    host.addBoundary(Group::Outlet, 1, {64, 64, 64}, {});
    host.addBoundary(Group::Wall, 1, {2, 0, 0}, {});
    host.addBoundary(Group::Inlet, 1, {0, 2, 0}, {});
    host.addBoundary(Group::Symm, 1, {0, 0, 2}, {});
    bind();
    run({NaN, 100.0, NaN, 3.0, 5.0, 7.0});
    EXPECT_TRUE(sameSlots({NaN, 3.0, 0.0, 3.0, 3.0, 3.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 5.0, 0.0, 5.0, 5.0, 5.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 7.0, 0.0, 7.0, 7.0, 7.0}, g.z.data()));
    run({NaN, 100.0, NaN, 0.0, 5.0, -7.0});  // 0 adds nothing, and nothing is tested
    EXPECT_EQ(g.x[1], 0.0);
    EXPECT_EQ(g.z[1], -7.0);
}

TEST_F(RbfGradient, interface_uses_the_mean_for_the_own_cell_only) {
    host.addCell({0, 0, 0}, 2.0, {});
    host.addInterface(1, {2, 4, 8}, {}, 0.25, {1, 0, 0}, 64.0, {});
    bind();
    run({NaN, 2.0, 4.0});
    EXPECT_TRUE(sameSlots({NaN, 3.0, 0.0}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 6.0, 0.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 12.0, 0.0}, g.z.data()));
    run({NaN, 2.0, std::nextafter(limit, 0.0)});
    EXPECT_EQ(g.x[1], 2.0);
    run({NaN, 2.0, limit});
    EXPECT_EQ(g.x[1], 1.0);
    run({NaN, -2.0, 4.0});
    EXPECT_EQ(g.x[1], -2.0);
    run({NaN, limit, 4.0});
    EXPECT_EQ(g.x[1], 2.0);
    run({NaN, 2.0, NaN});
    EXPECT_TRUE(std::isnan(g.x[1]));
}

// The smallest double times 0.5 is rounded to 0 (a tie, to even) before the sum 2 + 4 comes in;
// with the mean 3 formed first it would be 3 times the smallest double. The y component keeps the
// cell above the flat limit.
TEST_F(RbfGradient, keeps_the_half_in_front_of_the_sum) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addInterface(1, {5e-324, 1, 0}, {}, 0.5, {1, 0, 0}, 1.0, {});
    bind();
    run({NaN, 2.0, 4.0});
    EXPECT_EQ(g.y[1], 3.0);
    EXPECT_EQ(g.x[1], 0.0);
}

// Slot values 0.001 and the next double below it.
TEST_F(RbfGradient, gradients_shorter_than_0_001_are_zeroed_after_copy_and_exchange) {
    const double below = std::nextafter(0.001, 0.0);
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 1.0, {}), {0, 0, 1}, {});
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 1.0, {}), {0, 0, 1}, {});
    bind();
    run({NaN, 1.0, 1.0, 0.001, below});
    EXPECT_TRUE(sameSlots({NaN, 0.001, 0.0, 0.001, below}, g.z.data()));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);
    EXPECT_TRUE(sameSlots({NaN, 0.001, below, 0.001, below}, host.exchanges[2].before.data()));
    run({NaN, 1.0, 1.0, 1.0, 1.0});
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 1);  // flags stay
    EXPECT_EQ(g.z[2], 1.0);
    EXPECT_TRUE(std::isnan(g.z[0]));  // slot 0 is nobody's
}

TEST_F(RbfGradient, zero_volume_gives_components_that_no_filter_catches) {
    host.addBoundary(Group::Wall, host.addCell({0, 0, 0}, 0.0, {}), {1, 0, 0}, {});
    bind();
    run({NaN, 2.0, 2.0});
    EXPECT_EQ(g.x[1], HUGE_VAL);
    EXPECT_TRUE(std::isnan(g.y[1]));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
}

// One slot for a wall (cell 1), an inlet (cell 2) and a symmetry face (cell 3): see the upwind
// scheme.
TEST_F(RbfGradient, boundary_copies_run_wall_inlet_symmetry) {
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

TEST_F(RbfGradient, traces_its_start) {
    buildRow();
    startTrace();
    run({NaN, 1.0, 2.0, 3.0});
    EXPECT_EQ(trace(), "..Start RBF calculation of gradients\n");
}

}  // namespace

}  // namespace weldline::test
