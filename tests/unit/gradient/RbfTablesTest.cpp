// The RBF scheme and the tables of a host: none at all, and entries beyond the slots.

#include "NumericsTest.h"

namespace weldline::test {

namespace {

//   +-----+-----+-----+     faces 1 (cells 1, 2) and 2 (cells 2, 3), areas (1, 0, 0), volumes 1;
//   |  1  1  2  2  3  |     the stencils are the two cells with weights 1/2
//   +-----+-----+-----+
class RbfTables : public NumericsTest {
  protected:
    // The x components of the gradient; as many slots as phi has.
    static std::vector<double> calculate(std::vector<double> phi) {
        TestHost host;
        for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
        host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0});
        host.addInner(2, 3, {1, 0, 0}, {1.5, 0, 0});
        host.finish();
        CKVR3DWeldLine calc;
        calc.setPartitionInterface(host.partition());
        calc.setFlowData(host.gv(), host.mesh());
        calc.m_nCV = calc.m_nCV_Total = static_cast<int>(phi.size()) - 1;
        std::vector<double> x = phi, y = phi, z = phi;
        phi.push_back(1000.0);  // what lies behind the slots is no part of the variable
        calc.GradVarb_RBF(phi.data(), x.data(), y.data(), z.data());
        return x;
    }
};

}  // namespace

// Face 1 lies between filled cells and adds nothing; cell 3 is empty, so that cell 2 sees its own
// value 5 on face 2, and cell 3 its own, 0.
TEST_F(RbfTables, host_without_a_table_has_empty_stencils) {
    for (const bool hasStencils : {false, true}) {
        rbfRows().hasStencils = hasStencils;
        rbfRows().hasWeights = !hasStencils;
        const std::vector<double> x = calculate({NaN, 3.0, 5.0, 0.0});
        EXPECT_EQ(x[1], 0.0);
        EXPECT_EQ(x[2], 5.0);
        EXPECT_EQ(x[3], 0.0);
    }
}

// The mesh has slots 1 and 2; the stencil of face 1 names cell 3 as well: 3/2 + 5/2.
TEST_F(RbfTables, stencil_entries_beyond_the_slots_are_left_out) {
    rbfRows().stencils = {{1, 3, 2}, {2, 3}};
    rbfRows().weights = {{0.5, 0.5, 0.5}, {0.5, 0.5}};
    const std::vector<double> x = calculate({NaN, 3.0, 5.0});
    EXPECT_EQ(x[1], 4.0);
    EXPECT_EQ(x[2], -4.0);
}

}  // namespace weldline::test
