#include <gtest/gtest.h>

#include <string>

#include "Solver.h"

// The debug trace file byte by byte, as a solver gets it through the public class.

namespace weldline::test {

namespace {

const std::string kDefaultSettings =
    "m_WeldlingAngleMethod = 4\n"
    "m_nSmooth_beforeGrad = 2\n"
    "m_nSmooth_afterGrad = 20\n"
    "m_nGrad = 6\n"
    "m_TruncateAngle = 145.000000\n"
    "m_BoundaryAngle = -1.000000\n"
    "m_GradValueFilterPara = 1.000000\n"
    "m_Volume_Filter = 0.200000\n"
    "m_GradMethodMFT = 3\n";

const std::string kConnectivity =
    "calWeldLine: getMeshTopologyConn\n"
    "calWeldLine: getInnerCell03Conn\n"
    "calWeldLine: getCell32Conn\n";

const std::string kSmooth = "calWeldLine: Smooth_Variable\n";

const std::string kUpwind = "..Start UPWIND calculation of gradients\n";

const std::string kIterative =
    "..Start iterative calculation of gradients\n"
    "// Contribution from inner cell faces\n"
    "// Contribution from Inlet Boundaries\n"
    "// Contribution from Wall Boundaries\n"
    "// Contribution from Symmetry Boundaries\n"
    "// Calculate Gradient Components at CV-centers\n";

const std::string kDefaultAngles =
    "calWeldLine: CalNodeVectorAngle_Modified_RBF_Holvex01\n"
    "calWeldLine: truncateAngle\n";

const std::string kEnd = "calWeldLine: ~CKVR3DWeldLine...Done!!\n";

// All lines of a default run between the settings and the reading of the result.
std::string defaultStages() {
    std::string text = kConnectivity + kSmooth + kUpwind + kIterative;
    for (int component = 0; component < 6; ++component) text += kSmooth;
    return text + kDefaultAngles;
}

std::string settingsOfMethod(int method, int smoothAfter, const std::string& boundaryAngle) {
    return "m_WeldlingAngleMethod = " + std::to_string(method) +
           "\nm_nSmooth_beforeGrad = 2\nm_nSmooth_afterGrad = " + std::to_string(smoothAfter) +
           "\nm_nGrad = 6\nm_TruncateAngle = 135.000000\nm_BoundaryAngle = " + boundaryAngle +
           "\nm_GradValueFilterPara = 1.000000\nm_Volume_Filter = 0.200000\nm_GradMethodMFT = 3\n";
}

std::string stagesOfMethod(const std::string& angleMethod) {
    return kConnectivity + kSmooth + "calWeldLine: GradVarb\n" + kSmooth + kSmooth + kSmooth +
           "calWeldLine: CalNodeVectorAngle_Modified_" + angleMethod +
           "\ncalWeldLine: truncateAngle\n";
}

const std::string kTraced = section({"FlagDebugOutput = 1", ""});

}  // namespace

TEST(TraceFile, default_run_from_setting_up_to_the_end) {
    Solver solver;
    solver.start();
    solver.run(kTraced);
    solver.handle->getMeetingAngle();
    solver.stop();
    EXPECT_EQ(solver.trace(),
              kDefaultSettings + defaultStages() + "calWeldLine: getMeetingAngle\n" + kEnd);
}

TEST(TraceFile, methods_1_to_3) {
    const struct {
        int method;
        int smoothAfter;
        const char* operation;
    } cases[] = {{1, 20, "03Loop"}, {2, 4, "FaceLoop"}, {3, 20, "Hybrid"}};
    for (const auto& [method, smoothAfter, operation] : cases) {
        Solver solver;
        solver.start();
        solver.run(
            section({"WeldlingAngleMethod = " + std::to_string(method), "FlagDebugOutput = 1"}));
        EXPECT_EQ(solver.trace(),
                  settingsOfMethod(method, smoothAfter, "-1.000000") + stagesOfMethod(operation));
    }
}

// The boundary angle of the second run is the cosine of 65 degrees that the first one left.
TEST(TraceFile, second_run_empties_the_file_and_shows_the_settings_it_starts_with) {
    Solver solver;
    solver.start();
    const std::string control = section({"WeldlingAngleMethod = 1", "FlagDebugOutput = 1"});
    solver.run(control);
    solver.run(control);
    EXPECT_EQ(solver.trace(), settingsOfMethod(1, 20, "0.422618") + stagesOfMethod("03Loop"));
}

TEST(TraceFile, singular_mesh_shows_the_rbf_gradient) {
    Solver solver(3, 1, 1, [](Point, Point) { return std::optional<Group>(); });
    solver.start();
    solver.run(kTraced);
    std::string stages =
        kConnectivity + kSmooth + kUpwind + "..Start RBF calculation of gradients\n";
    for (int component = 0; component < 6; ++component) stages += kSmooth;
    EXPECT_EQ(solver.trace(), kDefaultSettings + stages + kDefaultAngles);
}

TEST(TraceFile, smoothing_of_no_pass_still_shows) {
    Solver solver;
    solver.start();
    solver.run(
        section({"", "FlagDebugOutput = 1", "nSmooth_beforeGrad = 0", "nSmooth_afterGrad = 0"}));
    std::string settings = kDefaultSettings;
    settings.replace(settings.find("beforeGrad = 2"), 14, "beforeGrad = 0");
    settings.replace(settings.find("afterGrad = 20"), 14, "afterGrad = 0");
    EXPECT_EQ(solver.trace(), settings + defaultStages());
}

TEST(TraceFile, setters_of_the_next_round_follow_the_run) {
    Solver solver;
    solver.start();
    solver.run(kTraced);
    solver.handle->setMeshFileType(2);
    solver.handle->setWallFace20(nullptr);
    solver.bind();
    EXPECT_EQ(solver.trace(), kDefaultSettings + defaultStages() +
                                  "CKVR3DWeldLine::setMeshFileType\n"
                                  "CKVR3DWeldLine::InitialValue\n"
                                  "CKVR3DWeldLine::setFlowData\n");
    solver.run(kTraced);
    std::string settings = kDefaultSettings;
    settings.replace(settings.find("-1.000000"), 9, "120.000000");  // left by the first run
    EXPECT_EQ(solver.trace(), settings + defaultStages());
}

TEST(TraceFile, run_whose_control_file_has_gone_is_traced_too) {
    Solver solver;
    solver.start();
    solver.run(kTraced);
    std::remove(solver.host.controlPath().c_str());
    standardOutputOf([&] { solver.handle->calWeldLine(); });
    std::string settings = kDefaultSettings;
    settings.replace(settings.find("-1.000000"), 9, "120.000000");
    EXPECT_EQ(solver.trace(), settings + defaultStages());
}

TEST(TraceFile, no_file_without_the_flag) {
    Solver solver;
    solver.start();
    solver.run(section({"FlagDebugOutput = 0", ""}));
    solver.handle->getMeetingAngle();
    solver.stop();
    EXPECT_FALSE(TestHost::fileExists(solver.host.tracePath()));
}

TEST(TraceFile, other_processes_open_no_file_and_drop_their_lines) {
    Solver solver;
    solver.host.processNumber = 1;
    solver.start();
    EXPECT_EQ(solver.run(kTraced), 0);
    solver.handle->setMeshFileType(2);
    solver.bind();
    solver.run(kTraced);
    solver.handle->getMeetingAngle();
    solver.stop();
    EXPECT_FALSE(TestHost::fileExists(solver.host.tracePath()));
}

TEST(TraceFile, tracing_does_not_change_the_angles) {
    Solver traced;
    traced.start();
    traced.run(kTraced);
    Solver silent;
    silent.start();
    silent.run(section({"", ""}));
    EXPECT_EQ(traced.angles(), silent.angles());
}

}  // namespace weldline::test
