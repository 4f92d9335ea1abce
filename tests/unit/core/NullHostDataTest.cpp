#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "Rig.h"
#include "Trace.h"

// What stands for the host's data where the host has none: a null process number is 0, a null
// analysis mode is not bi-injection, a null mesh path is the empty path.

namespace weldline::test {

namespace {

// A calculator with an open trace file of its own, whether a host is bound or not.
struct TracingCalculator {
    TracingCalculator() {
        calculator.m_FlagDebugOutput = true;
        calculator.m_pDebugFile = std::tmpfile();
    }

    std::string traceOfGetter() {
        calculator.getMeetingAngle();
        std::rewind(calculator.m_pDebugFile);
        char line[100] = {};
        return std::fgets(line, sizeof line, calculator.m_pDebugFile) == nullptr ? "" : line;
    }

    CKVR3DWeldLine calculator;
};

constexpr const char* kGetterLine = "calWeldLine: getMeetingAngle\n";

}  // namespace

TEST(NullHostData, calculator_without_a_host_traces_as_the_master) {
    TracingCalculator tracing;
    EXPECT_EQ(tracing.traceOfGetter(), kGetterLine);
}

TEST(NullHostData, process_without_a_number_is_the_master) {
    CKvr3dGV host;
    TracingCalculator tracing;
    tracing.calculator.m_pGV = &host;
    EXPECT_EQ(tracing.traceOfGetter(), kGetterLine);
}

TEST(NullHostData, processes_of_other_numbers_than_0_are_not_the_master) {
    for (const int number : {-1, 1, 2}) {
        CKvr3dGV host;
        host.m_pProcessNumber = &number;
        TracingCalculator tracing;
        tracing.calculator.m_pGV = &host;
        EXPECT_EQ(tracing.traceOfGetter(), "") << number;
        EXPECT_FALSE(core::isMaster(tracing.calculator)) << number;
    }
}

TEST(NullHostData, analysis_without_a_mode_is_no_bi_injection) {
    Rig rig;
    std::vector<float> other(rig.host.slots() + 1, 2.0F);
    rig.host.setValue(1, 0.0F);
    rig.host.gv()->m_pAnalysisMode = nullptr;
    rig.calculator.setBiIMFlowData(other.data());
    rig.bind();
    EXPECT_EQ(rig.calculator.m_pVariable[1], 0.0);
}

TEST(NullHostData, mesh_without_a_path_has_an_empty_name) {
    Rig rig;
    rig.host.gv()->m_pMeshFilePath = nullptr;
    rig.bind();
    EXPECT_STREQ(rig.calculator.m_MeshFileName, "");
}

}  // namespace weldline::test
