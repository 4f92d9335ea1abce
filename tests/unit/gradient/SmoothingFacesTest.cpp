#include "gradient/SmoothingFaces.h"

#include "NumericsTest.h"

// What is packed for the passes, and in which order.

namespace weldline::test {

namespace {

using core::SmoothingFaces;

class PackedFaces : public NumericsTest {
  protected:
    // w, i, s --[1] --1-- [2] --5-- [3]-- s, w, i and an outlet; face f of a group has the area f.
    void SetUp() override {
        for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
        host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0}, 0.25);
        host.addInner(3, 2, {0, 3, 4}, {1.5, 0, 0}, 0.75);
        for (const int cell : {1, 3}) {
            const double length = cell == 1 ? 1.0 : 2.0;
            for (const Group group : {Group::Outlet, Group::Wall, Group::Inlet, Group::Symm})
                host.addBoundary(group, cell, {0, 0, length}, {0, 0, 0});
        }
        bind();
        for (int c = 1; c <= host.slots(); ++c) calc.m_pVariableOrg[c] = 1.0;
    }

    int slot(Group group, int face) const { return host.boundarySlot(group, face); }
};

TEST_F(PackedFaces, inner_faces_come_in_ascending_order_with_cells_weight_and_area) {
    const SmoothingFaces faces(calc);
    ASSERT_EQ(faces.inner().count, 2U);
    EXPECT_EQ(faces.inner().a[0], 1);
    EXPECT_EQ(faces.inner().b[0], 2);
    EXPECT_EQ(faces.inner().lambda[0], 0.25);
    EXPECT_EQ(faces.inner().area[0], 1.0);
    EXPECT_EQ(faces.inner().a[1], 3);
    EXPECT_EQ(faces.inner().b[1], 2);
    EXPECT_EQ(faces.inner().lambda[1], 0.75);
    EXPECT_EQ(faces.inner().area[1], 5.0);
}

TEST_F(PackedFaces, boundary_faces_come_inlet_first_then_symmetry_then_wall) {
    const SmoothingFaces faces(calc);
    const std::vector<int> slots{slot(Group::Inlet, 1), slot(Group::Inlet, 2),
                                 slot(Group::Symm, 1),  slot(Group::Symm, 2),
                                 slot(Group::Wall, 1),  slot(Group::Wall, 2)};
    ASSERT_EQ(faces.boundary().size(), slots.size());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(faces.boundary()[i].slot, slots[i]) << i;
        EXPECT_EQ(faces.boundary()[i].cell, i % 2 == 0 ? 1 : 3) << i;
        EXPECT_EQ(faces.boundary()[i].area, i % 2 == 0 ? 1.0 : 2.0) << i;
    }
}

// Cells 1 to 3: 1 + 3 * 1, 1 + 5 and 5 + 3 * 2; a slot has the area of its face.
TEST_F(PackedFaces, weights_are_the_sums_of_the_areas) {
    const SmoothingFaces faces(calc);
    EXPECT_EQ(calc.m_pWork1Z[1], 4.0);
    EXPECT_EQ(calc.m_pWork1Z[2], 6.0);
    EXPECT_EQ(calc.m_pWork1Z[3], 11.0);
    EXPECT_EQ(calc.m_pWork1Z[slot(Group::Wall, 2)], 2.0);
    EXPECT_EQ(calc.m_pWork1Z[slot(Group::Outlet, 1)], 0.0);
}

TEST_F(PackedFaces, faces_of_flagged_and_empty_cells_are_left_out) {
    calc.m_pZeroGradFlag[1] = 1;
    calc.m_pVariableOrg[slot(Group::Inlet, 2)] = 0.0;
    const SmoothingFaces faces(calc);
    ASSERT_EQ(faces.inner().count, 1U);
    EXPECT_EQ(faces.inner().a[0], 3);
    ASSERT_EQ(faces.boundary().size(), 2U);
    EXPECT_EQ(faces.boundary()[0].slot, slot(Group::Symm, 2));
    EXPECT_EQ(faces.boundary()[1].slot, slot(Group::Wall, 2));
    EXPECT_EQ(calc.m_pWork1Z[1], 0.0);
    EXPECT_EQ(calc.m_pWork1Z[2], 5.0);
}

}  // namespace

}  // namespace weldline::test
