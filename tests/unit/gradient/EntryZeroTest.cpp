// All lists begin with entry 1. Entry 0 is memory without a meaning, whatever it holds: here faces
// that would change every result.

#include <string>
#include <vector>

#include "OperationCase.h"

namespace weldline::test {

namespace {

class EntryZero : public testing::TestWithParam<Operation> {
  protected:
    struct Outcome {
        std::vector<double> phi;
        Vectors g;
        std::vector<int> flags;
    };

    static Outcome calculate(bool withEntryZero) {
        TestHost host;
        for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0.5 * c, 0.25 * c * c}, 1.0 + c, {});
        host.addInner(1, 2, {1, 0.5, 0.25}, {0.5, 0.25, 0}, 0.25);
        host.addInner(2, 3, {1, 0.5, 0.25}, {1.5, 0.75, 0.5}, 0.25);
        host.addInterface(1, {0.5, 1, 0.75}, {0, 0.5, 0}, 0.25, {0, 1, 0.5}, 1.0, {});
        for (const Group group : {Group::Wall, Group::Inlet, Group::Symm, Group::Outlet})
            host.addBoundary(group, 2, {0.25, 0.5, 2}, {-0.5, 0.125, 1});
        host.finish();
        const int outlet = host.boundarySlot(Group::Outlet, 1);
        host.setValue(outlet, 7.0F);  // no operation but those on entry 0 would look at it
        CKVR3DWeldLine calc;
        calc.setPartitionInterface(host.partition());
        calc.setKVRCom(host.communication(), host.collective());
        calc.setFlowData(host.gv(), host.mesh());
        if (withEntryZero) fillEntryZero(host, outlet);
        const std::vector<double> start(static_cast<std::size_t>(host.slots()) + 1, 4.0);
        Outcome outcome{start, {start, start, start}, {}};
        for (const int slot : {1, 2, 3}) outcome.phi[slot] = 1.0 + slot * slot;
        GetParam().run(calc, outcome.phi.data(), outcome.g);
        outcome.flags.assign(calc.m_pZeroGradFlag, calc.m_pZeroGradFlag + start.size());
        return outcome;
    }

  private:
    // A face of every kind between cell 2 and the outlet's slot.
    static void fillEntryZero(TestHost& host, int outlet) {
        CKVR3DFiniteVolumeMesh& m = *host.mesh();
        static double face[] = {0, 2, 0, 1, 2, 3, 4, 5, 6};
        face[2] = outlet;
        m.m_ppInnerFace[0] = face;
        m.m_pInnerFaceLambda[0] = 0.5;
        CPartitionFace_DLL& p = *host.partition();
        p.ijParCV()[0] = 2;
        p.ijPar()[0] = outlet;
        for (double* values : {p.ijParSx(), p.ijParSy(), p.ijParSz(), p.ijParxc(), p.ijParyc(),
                               p.ijParzc(), p.ParInterFace_Lamda()})
            values[0] = 0.5;
        for (int* cells : {m.m_pWallFaceCV, m.m_pInletFaceCV, m.m_pSymmFaceCV}) cells[0] = 2;
        for (int* slots : {m.m_pWallFaceBnd, m.m_pInletFaceBnd, m.m_pSymmFaceBnd})
            slots[0] = outlet;
        for (double* values :
             {m.m_pWallFaceSx, m.m_pWallFaceSy, m.m_pWallFaceSz, m.m_pInletFaceSx, m.m_pInletFaceSy,
              m.m_pInletFaceSz, m.m_pSymmFaceSx, m.m_pSymmFaceSy, m.m_pSymmFaceSz, m.m_pWallFaceXc,
              m.m_pWallFaceYc, m.m_pWallFaceZc, m.m_pInletFaceXc, m.m_pInletFaceYc,
              m.m_pInletFaceZc, m.m_pSymmFaceXc, m.m_pSymmFaceYc, m.m_pSymmFaceZc})
            values[0] = 2.0;
    }
};

}  // namespace

TEST_P(EntryZero, of_a_face_list_means_nothing) {
    const Outcome without = calculate(false);
    const Outcome with = calculate(true);
    EXPECT_TRUE(sameSlots(without.phi, with.phi.data()));
    EXPECT_TRUE(sameSlots(without.g, with.g));
}

// On purpose, the default scheme clears entry 0 like all others; no other operation writes it.
TEST_P(EntryZero, of_the_result_is_cleared_by_the_default_scheme_only) {
    const Outcome outcome = calculate(false);
    const bool isDefault = GetParam().name == std::string("Default");
    EXPECT_EQ(outcome.g.x[0], isDefault ? 0.0 : 4.0);
    EXPECT_EQ(outcome.g.y[0], isDefault ? 0.0 : 4.0);
    EXPECT_EQ(outcome.g.z[0], isDefault ? 0.0 : 4.0);
    EXPECT_EQ(outcome.phi[0], 4.0);
}

TEST_P(EntryZero, of_the_flags_stays_as_it_was) {
    EXPECT_EQ(calculate(false).flags[0], 0);
}

TEST(EntryZeroOfScratch, of_the_previous_gradient_is_cleared_and_of_the_sums_is_not) {
    TestHost host;
    host.addCell({0, 0, 0}, 1.0, {});
    host.finish();
    CKVR3DWeldLine calc;
    calc.setPartitionInterface(host.partition());
    calc.setFlowData(host.gv(), host.mesh());
    for (double* work : {calc.m_pWork1X, calc.m_pWork1Y, calc.m_pWork1Z}) work[0] = 4.0;
    calc.Smooth_Variable(calc.m_pVariable, 1);
    EXPECT_EQ(calc.m_pWork1Y[0], 4.0);
    EXPECT_EQ(calc.m_pWork1Z[0], 4.0);
    calc.GradVarb(1, calc.m_pVariable, calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ);
    for (double* work : {calc.m_pWork1X, calc.m_pWork1Y, calc.m_pWork1Z}) EXPECT_EQ(work[0], 0.0);
}

INSTANTIATE_TEST_SUITE_P(All, EntryZero, testing::ValuesIn(kOperations), operationName);

}  // namespace weldline::test
