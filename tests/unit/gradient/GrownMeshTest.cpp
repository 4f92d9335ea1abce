#include "NumericsTest.h"

// A second mesh with more cells behind a calculator whose arrays were made for the first one: the
// operations work on the slots that exist, and faces that reach beyond them are left out. What they
// must not do is write or read beyond (the sanitizers watch).

namespace weldline::test {

namespace {

// First mesh: [1] w, two slots. Second mesh: [1] -- [2] -- [3] in a row with a wall and an
// interface at each cell, nine slots, of which the arrays have the first two.
class GrownMesh : public NumericsTest {
  protected:
    void SetUp() override {
        host.addNode({});
        host.addCell({0, 0, 0}, 1.0, {1});
        host.addBoundary(Group::Wall, 1, {1, 0, 0}, {1, 0, 0});
        bind();
        for (int c = 0; c < 3; ++c) {
            grown.addNode({1.0 * c, 0, 0});
            grown.addCell({1.0 * c, 0, 0}, 1.0, {c + 1, 1});
        }
        grown.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0}, 0.25);
        grown.addInner(2, 3, {1, 0, 0}, {1.5, 0, 0}, 0.25);
        for (int c = 1; c <= 3; ++c) {
            grown.addBoundary(Group::Wall, c, {0, 1, 0}, {c - 1.0, 1, 0});
            grown.addInterface(c, {0, 0, 1}, {c - 1.0, 0, 1}, 0.5, {c - 1.0, 0, 2}, 1.0, {c});
        }
        grown.finish();
        calc.setPartitionInterface(grown.partition());
        calc.setKVRCom(nullptr, nullptr);  // the exchange would look at slots that do not exist
        calc.setFlowData(grown.gv(), grown.mesh());
        for (const int c : {1, 2}) calc.m_pVariable[c] = 4.0 * c;
    }

    TestHost grown;
};

TEST_F(GrownMesh, smoothing_uses_the_faces_between_existing_slots) {
    calc.Smooth_Variable(calc.m_pVariable, 1);
    EXPECT_EQ(calc.m_pVariable[1], 5.0);  // 0.75*4 + 0.25*8
    EXPECT_EQ(calc.m_pVariable[2], 5.0);
}

TEST_F(GrownMesh, default_gradient_uses_the_faces_between_existing_slots) {
    calc.GradVarb(1, calc.m_pVariable, calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ);
    EXPECT_EQ(calc.m_pGradX[1], 5.0);
    EXPECT_EQ(calc.m_pGradX[2], -5.0);
    EXPECT_EQ(calc.m_pGradY[1], 0.0);
}

TEST_F(GrownMesh, other_operations_stay_within_their_arrays) {
    calc.GradVarb_Upwind(calc.m_pVariable, calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ);
    EXPECT_EQ(calc.m_pGradX[1], 4.0);
    calc.GradVarb_RBF(calc.m_pVariable, calc.m_pGrad2X, calc.m_pGrad2Y, calc.m_pGrad2Z);
    EXPECT_EQ(calc.m_pGrad2X[1], 5.0);
    calc.GradVarb_Iterative(calc.m_pVariable, calc.m_pGrad2X, calc.m_pGrad2Y, calc.m_pGrad2Z);
    EXPECT_EQ(calc.checkSingularLSMatrix(), 1);  // one offset a cell is left
    calc.getMeshTopologyConn();
    EXPECT_EQ(calc.m_ppNodeCell[1][0], 4);
}

}  // namespace

}  // namespace weldline::test
