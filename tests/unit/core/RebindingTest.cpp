#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Rig.h"

// A second setFlowData: the arrays of the first one are used again, whatever the counts. The
// sanitizer build tells when a run leaves them.

namespace weldline::test {

namespace {

double slope(Point x) {
    return 1.0 + x[0] + 2.0 * x[1] + 4.0 * x[2];
}

// An exchange of a partition without neighbours that reads and writes every slot of its mesh.
class ThoroughExchange : public CCommunication {
  public:
    void DDM_Exch(double* cellArray) override {
        for (int slot = 1; slot <= slots; ++slot) cellArray[slot] += 0.0;
    }
    int slots = 0;
};

// Sees and changes the ends of the array.
class MarkingExchange : public CCommunication {
  public:
    void DDM_Exch(double* cellArray) override {
        seenFirst = cellArray[1];
        seenLast = cellArray[slots];
        cellArray[1] = 7.0;
        cellArray[slots] = 8.0;
    }
    int slots = 0;
    double seenFirst = 0.0;
    double seenLast = 0.0;
};

// A calculator that is bound to one mesh after the other.
class Rebinding : public ::testing::Test {
  protected:
    Rebinding() {
        addBox(m_small, 2, 1, 1, 1.0);
        addBox(m_large, 3, 3, 2, 1.0);
        for (TestHost* host : {&m_small, &m_large}) {
            host->finish();
            setField(*host, slope);
        }
    }

    void bind(TestHost& host, CKVR3DWeldLine& calculator) {
        calculator.setPartitionInterface(host.partition());
        m_exchange.slots = host.slots();
        calculator.setKVRCom(&m_exchange, host.collective());
        EXPECT_TRUE(calculator.setFlowData(host.gv(), host.mesh()));
    }
    void bind(TestHost& host) { bind(host, m_c); }

    static int run(TestHost& host, CKVR3DWeldLine& calculator, const std::string& method,
                   const std::string& gradient) {
        host.setControl(
            section({"WeldlingAngleMethod = " + method, "GradMethodMFT = " + gradient}));
        return calculator.calWeldLine();
    }

    // Every method, and method 4 with every gradient choice.
    template <class Action>
    static void forEachChoice(const Action& action) {
        for (const char* method : {"1", "2", "3", "5"}) action(method, "3");
        for (const char* gradient : {"0", "1", "2", "3", "4"}) action("4", gradient);
    }

    std::vector<const void*> ownedArrays() const {
        return {m_c.m_pVariable,  m_c.m_pVariableOrg,  m_c.m_pWork1X,      m_c.m_pWork1Y,
                m_c.m_pWork1Z,    m_c.m_pGradX,        m_c.m_pGradY,       m_c.m_pGradZ,
                m_c.m_pGrad2X,    m_c.m_pGrad2Y,       m_c.m_pGrad2Z,      m_c.m_ppNodeScratch,
                m_c.m_pCellFlag2, m_c.m_pZeroGradFlag, m_c.m_pMeetingAngle};
    }

    TestHost m_small;  // 2 cells, 10 boundary slots, 12 nodes
    TestHost m_large;  // 18 cells, 42 boundary slots, 48 nodes
    ThoroughExchange m_exchange;
    CKVR3DWeldLine m_c;
};

}  // namespace

TEST_F(Rebinding, uses_the_first_arrays_again) {
    bind(m_small);
    const std::vector<const void*> first = ownedArrays();
    bind(m_large);
    EXPECT_EQ(ownedArrays(), first);
    EXPECT_EQ(m_c.m_pMesh, m_large.mesh());
    EXPECT_EQ(m_c.m_pGV, m_large.gv());
    EXPECT_EQ(m_c.m_pXc, m_large.mesh()->m_pXc);
    EXPECT_EQ(m_c.m_pControlFilePath, m_large.gv()->m_pControlFilePath);
    bind(m_small);
    EXPECT_EQ(ownedArrays(), first);
}

TEST_F(Rebinding, counts_follow_the_new_mesh) {
    bind(m_small);
    bind(m_large);
    EXPECT_EQ(m_c.m_nCV_Total, 60);
    EXPECT_EQ(m_c.m_nCV, 18);
    EXPECT_EQ(m_c.m_nNode, 48);
    EXPECT_EQ(m_c.m_nInnerFace, 33);
    EXPECT_EQ(m_c.m_nBoundaryFace, 42);
}

TEST_F(Rebinding, loads_the_variable_anew) {
    bind(m_small);
    run(m_small, m_c, "4", "4");
    setField(m_small, [](Point x) { return 5.0 + x[0]; });
    bind(m_small);
    for (int slot = 1; slot <= m_small.slots(); ++slot) {
        EXPECT_EQ(m_c.m_pVariable[slot], m_small.gv()->m_pFlowVariable[slot]);
        EXPECT_EQ(m_c.m_pVariableOrg[slot], m_small.gv()->m_pFlowVariable[slot]);
    }
}

TEST_F(Rebinding, clears_first_set_flags_and_angles_but_not_the_second_set) {
    bind(m_small);
    const int last = m_small.slots();
    for (double* array : {m_c.m_pWork1X, m_c.m_pGradX, m_c.m_pGradZ, m_c.m_pGrad2X})
        std::fill_n(array, last + 1, 3.0);
    std::fill_n(m_c.m_pZeroGradFlag, last + 1, 1);
    std::fill_n(m_c.m_pMeetingAngle, 13, 3.0);
    bind(m_small);
    const std::vector<double> zeros(last + 1, 0.0);
    EXPECT_TRUE(sameBits(slotsOf(m_c.m_pWork1X, last), zeros));
    EXPECT_TRUE(sameBits(slotsOf(m_c.m_pGradX, last), zeros));
    EXPECT_TRUE(sameBits(slotsOf(m_c.m_pGradZ, last), zeros));
    EXPECT_TRUE(sameBits(slotsOf(m_c.m_pMeetingAngle, 12), std::vector<double>(13, 0.0)));
    EXPECT_EQ(slotsOf(m_c.m_pZeroGradFlag, last), std::vector<int>(last + 1, 0));
    EXPECT_TRUE(sameBits(slotsOf(m_c.m_pGrad2X, last), std::vector<double>(last + 1, 3.0)));
}

TEST_F(Rebinding, the_same_data_give_the_same_angles_again) {
    bind(m_large);
    run(m_large, m_c, "4", "3");
    const std::vector<double> first = slotsOf(m_c.getMeetingAngle(), 48);
    bind(m_large);
    run(m_large, m_c, "4", "3");
    EXPECT_TRUE(sameBits(slotsOf(m_c.getMeetingAngle(), 48), first));
}

TEST_F(Rebinding, larger_counts_fill_the_slots_that_exist) {
    bind(m_small);
    bind(m_large);
    for (int slot = 1; slot <= m_small.slots(); ++slot)
        EXPECT_EQ(m_c.m_pVariable[slot], m_large.gv()->m_pFlowVariable[slot]);
}

// The exchange gets an array of the large mesh's 60 slots: the 12 that exist, zeros beyond, and
// what it writes into the 12 comes back. A uniform field of 3 stays 3 when it is smoothed.
TEST_F(Rebinding, larger_counts_hand_the_exchange_an_array_of_their_own_length) {
    setField(m_large, [](Point) { return 3.0; });
    bind(m_small);
    bind(m_large);
    MarkingExchange exchange;
    exchange.slots = m_large.slots();
    m_c.setKVRCom(&exchange, m_large.collective());
    m_c.Smooth_Variable(m_c.m_pVariable, 1);
    EXPECT_EQ(exchange.seenFirst, 3.0);
    EXPECT_EQ(exchange.seenLast, 0.0);
    EXPECT_EQ(m_c.m_pVariable[1], 7.0);
    EXPECT_EQ(m_c.m_pVariable[2], 3.0);
}

TEST_F(Rebinding, larger_counts_with_bi_injection_stay_within_the_arrays) {
    std::vector<float> bi(m_large.slots() + 1, 2.0F);
    m_large.analysisMode = 11;
    setField(m_large, [](Point) { return 0.0; });
    m_c.setBiIMFlowData(bi.data());
    bind(m_small);
    bind(m_large);
    for (int slot = 1; slot <= m_small.slots(); ++slot) EXPECT_EQ(m_c.m_pVariable[slot], 2.0);
}

TEST_F(Rebinding, larger_counts_before_the_first_run_stay_within_the_arrays) {
    forEachChoice([&](const char* method, const char* gradient) {
        CKVR3DWeldLine calculator;
        bind(m_small, calculator);
        bind(m_large, calculator);
        EXPECT_EQ(run(m_large, calculator, method, gradient), 0) << method << " " << gradient;
        EXPECT_EQ(run(m_large, calculator, method, gradient), 0) << method << " " << gradient;
    });
}

TEST_F(Rebinding, larger_counts_after_a_run_stay_within_the_arrays) {
    forEachChoice([&](const char* method, const char* gradient) {
        CKVR3DWeldLine calculator;
        bind(m_small, calculator);
        run(m_small, calculator, method, gradient);
        bind(m_large, calculator);
        EXPECT_EQ(run(m_large, calculator, method, gradient), 0) << method << " " << gradient;
    });
}

// The arrays come from the larger mesh, the connectivity tables from the smaller one: nodes beyond
// its 12 have no cells, and nothing meets there.
TEST_F(Rebinding, tables_smaller_than_the_arrays_are_not_left) {
    forEachChoice([&](const char* method, const char* gradient) {
        CKVR3DWeldLine calculator;
        bind(m_large, calculator);
        bind(m_small, calculator);
        run(m_small, calculator, method, gradient);
        bind(m_large, calculator);
        EXPECT_EQ(run(m_large, calculator, method, gradient), 0) << method << " " << gradient;
        if (std::string(method) == "5") return;  // no such method: the angles stay
        for (int node = 13; node <= 48; ++node)
            EXPECT_EQ(calculator.getMeetingAngle()[node], 180.0) << method << " " << gradient;
    });
}

TEST_F(Rebinding, smaller_counts_after_a_run_stay_within_the_meshes) {
    forEachChoice([&](const char* method, const char* gradient) {
        CKVR3DWeldLine calculator;
        bind(m_large, calculator);
        run(m_large, calculator, method, gradient);
        bind(m_small, calculator);
        EXPECT_EQ(run(m_small, calculator, method, gradient), 0) << method << " " << gradient;
        bind(m_large, calculator);
        EXPECT_EQ(run(m_large, calculator, method, gradient), 0) << method << " " << gradient;
    });
}

// Nothing of the larger mesh has been used yet, so the smaller one gets what it would get alone.
TEST_F(Rebinding, smaller_counts_before_the_first_run_give_the_angles_of_a_new_calculator) {
    forEachChoice([&](const char* method, const char* gradient) {
        CKVR3DWeldLine rebound;
        bind(m_large, rebound);
        bind(m_small, rebound);
        run(m_small, rebound, method, gradient);
        CKVR3DWeldLine fresh;
        bind(m_small, fresh);
        run(m_small, fresh, method, gradient);
        EXPECT_TRUE(
            sameBits(slotsOf(rebound.getMeetingAngle(), 12), slotsOf(fresh.getMeetingAngle(), 12)))
            << method << " " << gradient;
    });
}

}  // namespace weldline::test
