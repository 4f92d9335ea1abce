#include <functional>

#include "NumericsTest.h"

// When the operations of this folder write their trace lines: with the flag on, a file open and on
// the master process only.

namespace weldline::test {

namespace {

class TraceGate : public NumericsTest {
  protected:
    void SetUp() override {
        host.addCell({0, 0, 0}, 1.0, {});
        host.addBoundary(Group::Wall, 1, {1, 0, 0}, {1, 0, 0});
        bind();
        phi = slots(1.0);
        g = vectors(0.0);
    }

    void runAll() {
        calc.Smooth_Variable(phi.data(), 1);
        calc.GradVarb(1, phi.data(), g.x.data(), g.y.data(), g.z.data());
        calc.GradVarb_Upwind(phi.data(), g.x.data(), g.y.data(), g.z.data());
        calc.GradVarb_Iterative(phi.data(), g.x.data(), g.y.data(), g.z.data());
        calc.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
    }

    std::vector<double> phi;
    Vectors g;
};

TEST_F(TraceGate, no_file_no_line_and_no_harm) {
    calc.m_FlagDebugOutput = true;
    runAll();
    EXPECT_FALSE(TestHost::fileExists(host.tracePath()));
}

TEST_F(TraceGate, other_processes_write_nothing) {
    startTrace();
    host.processNumber = 1;
    runAll();
    EXPECT_EQ(trace(), "");
}

TEST_F(TraceGate, flag_off_writes_nothing) {
    startTrace();
    calc.m_FlagDebugOutput = false;
    runAll();
    EXPECT_EQ(trace(), "");
}

TEST_F(TraceGate, singularity_test_writes_nothing) {
    startTrace();
    calc.checkSingularLSMatrix();
    EXPECT_EQ(trace(), "");
}

}  // namespace

}  // namespace weldline::test
