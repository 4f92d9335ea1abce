// Orders of operations that show at the ends of the number range only.

#include <limits>

#include "NumericsTest.h"

namespace weldline::test {

namespace {

constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

class Rounding : public NumericsTest {};

}  // namespace

// The interface term is ((1/V S) 0.5) sum. With V = 3 and S of 9 smallest numbers: 1/V is a little
// below 1/3, and 1/V S rounds to 3 of them; the half, 1.5, to the even 2; the sum is 2^1000. Any
// other bracketing gives 1/V 4 = 1 of them (S halved first) or 1.5 of them (the sum halved first).
// The y component keeps the gradient from counting as flat.
TEST_F(Rounding, keeps_the_half_of_interface_faces_behind_the_area) {
    for (int axis = 0; axis < 3; ++axis) {
        TestHost partition;
        partition.addCell({0, 0, 0}, 3.0, {});
        Point area{};
        area[axis] = 9.0 * kSmallest;
        area[(axis + 1) % 3] = 1.0;
        partition.addInterface(1, area, {1, 0, 0}, 0.5, {2, 0, 0}, 1.0, {});
        partition.finish();
        CKVR3DWeldLine c;
        c.setPartitionInterface(partition.partition());
        c.setFlowData(partition.gv(), partition.mesh());
        std::vector<double> phi(3, 0x1p999);
        Vectors g{phi, phi, phi};
        c.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
        const double* const component[] = {&g.x[1], &g.y[1], &g.z[1]};
        EXPECT_EQ(*component[axis], 2.0 * kSmallest * 0x1p1000) << axis;
    }
}

// Face 1 leaves 2^53 in cell 1. Face 2 has cell 1 on both sides: first the one side adds 1, which
// is a tie and leaves 2^53, then the other takes 1 off: 2^53 - 1. The other way round 2^53 would be
// left. The values, 2^-104, count as empty; the areas are 2^104 times the shares.
TEST_F(Rounding, keeps_the_first_side_before_the_second_where_a_face_has_one_cell) {
    constexpr double tiny = 0x1p-104;
    for (int c = 0; c < 2; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    host.addInner(1, 2, {0, big / tiny, 0}, {0.5, 0, 0});
    host.addInner(1, 1, {0, 1.0 / tiny, 0}, {0, 0, 0});
    bind();
    std::vector<double> phi = slots(tiny);
    Vectors g = vectors(0.0);
    calc.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.y[1], big - 1.0);
    calc.GradVarb_Upwind(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.y[1], big - 1.0);
}

// Without own cells there is nothing to solve; what the gradient held before is cleared all the
// same, from slot 1 on.
TEST_F(Rounding, least_squares_clears_all_slots_of_a_partition_without_own_cells) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {0, 1, 0}, {1, 0, 0});
    bind();
    calc.m_nCV = 0;
    std::vector<double> phi = slots(1.0);
    Vectors g = vectors(4.0);
    calc.GradVarb_Iterative(phi.data(), g.x.data(), g.y.data(), g.z.data());
    for (const int slot : {1, 2}) EXPECT_EQ(g.x[slot], 0.0) << slot;
}

}  // namespace weldline::test
