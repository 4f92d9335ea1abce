#include <cmath>
#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// Why a node has its angle.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

class Explain : public ProgramTest {
  protected:
    // Two fronts that meet on x = 0.5; the node in the middle of that plane has eight cells.
    std::string result(const std::vector<std::string>& more = {},
                       const SampleMesh& mesh = plateWithTwoFronts(10, 2, 2)) {
        std::vector<std::string> arguments{"analyze", write("part.vtu", mesh), "-o",
                                           at("result.vtu")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Outcome outcome = weldline(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        return at("result.vtu");
    }

    Json explained(const std::string& file, const std::string& place = "0.5,0.1,0.05") {
        const Outcome outcome = weldline({"explain", file, "--at", place, "--json", "-"});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return Json::parse(outcome.out);
    }
};

TEST_F(Explain, head_on_streams) {
    const Json j = explained(result());
    EXPECT_EQ(j["schema"], "weldline-explanation/1");
    EXPECT_EQ(j["because"]["verdict"], "kept");
    EXPECT_LT(j["angle"], 1.0);
    EXPECT_EQ(j["line"], 1);
    EXPECT_EQ(j["cells"].size(), 8u);
    EXPECT_EQ(j["pairs"].size(), 12u);  // inner faces round an inner node of hexahedra
    EXPECT_EQ(j["differingNodes"], 0);
    int kept = 0;
    for (const Json& pair : j["pairs"]) {
        if (pair["kept"] != true) continue;
        ++kept;
        EXPECT_EQ(pair["meetingAngle"], j["angle"]);
        EXPECT_TRUE(pair["refusal"].is_null());
    }
    EXPECT_EQ(kept, 1);
}

TEST_F(Explain, a_node_away_from_the_line) {
    const Json j = explained(result(), "0.2,0.1,0.05");
    EXPECT_EQ(j["angle"], 180.0);
    EXPECT_EQ(j["line"], 0);
    EXPECT_EQ(j["because"]["verdict"], "nothing meets");
    for (const Json& pair : j["pairs"]) EXPECT_EQ(pair["refusal"]["test"], "alike");
}

TEST_F(Explain, tells_of_unreached_cells_and_of_the_boundary) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    mesh.cellArrays[0].values[0] = -1.0;
    const Json j = explained(result({}, mesh), "0.1,0,0");
    ASSERT_EQ(j["cells"].size(), 2u);
    EXPECT_EQ(j["cells"][0]["reached"], false);
    EXPECT_EQ(j["cells"][0]["boundaryFaces"], 2);
    ASSERT_EQ(j["pairs"].size(), 1u);
    EXPECT_EQ(j["pairs"][0]["refusal"]["test"], "not reached");
    EXPECT_EQ(j["pairs"][0]["refusal"]["code"], 1);
    EXPECT_EQ(j["pairs"][0]["refusal"]["cell"], 0);
}

TEST_F(Explain, repeats_the_run_with_its_settings) {
    for (const std::vector<std::string>& settings :
         {std::vector<std::string>{"--method", "1"},
          {"--method", "2", "--mesh-file-type", "2"},
          {"--method", "40"},
          {"--gradient", "rbf", "--gradient-set", "first"},
          {"--set", "TruncateAngle=179", "--set", "BoundaryAngle=50.5"}}) {
        SCOPED_TRACE(settings[1]);
        EXPECT_EQ(explained(result(settings))["differingNodes"], 0);
    }
}

// Inlet faces take part in the gradient otherwise than walls do, and decide what a time of 0 means.
TEST_F(Explain, repeats_the_run_with_its_boundary_groups) {
    SampleMesh mesh = layerWithOpenSides(10, 4);
    for (double& time : mesh.cellArrays[0].values)
        time = time < 0.15 ? 0.0 : static_cast<float>(time);
    for (const char* group : {"--inlet", "--symmetry", "--outlet"}) {
        SCOPED_TRACE(group);
        EXPECT_EQ(explained(result({group, "^7$"}, mesh))["differingNodes"], 0);
    }
    EXPECT_EQ(explained(result({"--zero-time", "filled"}, mesh))["differingNodes"], 0);
    EXPECT_EQ(explained(result({"--trapped-air", "close"}, mesh))["differingNodes"], 0);
}

TEST_F(Explain, node_by_number_as_a_table) {
    // Node 5 + 11 (1 + 3) is the one in the middle.
    const Outcome outcome = weldline({"explain", result(), "--node", "49"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(linesWith(outcome.out, "49 of 99: x 0.5, y 0.1, z 0.05"), 1) << outcome.out;
    EXPECT_EQ(linesWith(outcome.out, "which the node keeps"), 1);
    EXPECT_EQ(linesWith(outcome.out, "second run of the library"), 1);
    EXPECT_TRUE(temporaries().empty());
}

TEST_F(Explain, reasons_of_all_nodes) {
    const auto range = [&](const std::string& file) {
        const Json info = Json::parse(weldline({"info", file, "--json", "-"}).out);
        for (const Json& array : info["arrays"])
            if (array["name"] == "RefusalReason") {
                EXPECT_EQ(array["where"], "points");
                return std::pair(array["minimum"].get<double>(), array["maximum"].get<double>());
            }
        return std::pair(-1.0, -1.0);
    };
    // Alike along the plate, and one cell alone at its corners.
    EXPECT_EQ(range(result({"--reasons"})), std::pair(0.0, 14.0));
    EXPECT_EQ(range(result()), std::pair(-1.0, -1.0));
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    mesh.cellArrays.push_back({"frozen", "Int32", std::vector<double>(40, 1.0)});
    EXPECT_EQ(range(result({"--reasons", "--cell-state", "frozen"}, mesh)), std::pair(13.0, 13.0));
}

TEST_F(Explain, reasons_that_cannot_be_told) {
    const std::string input = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    expectError(weldline({"analyze", input, "--reasons"}), 2, {"--reasons", "-o RESULT.vtu"});
    expectError(weldline({"analyze", input, "--reasons", "-o", at("result.vtu"), "--method", "3"}),
                2, {"--reasons", "method 3", "method 1, 2 or 4"});
}

TEST_F(Explain, says_when_the_result_was_made_otherwise) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    mesh.cellArrays.push_back({"frozen", "Int32", std::vector<double>(40, 1.0)});
    const std::string file = result({"--cell-state", "frozen"}, mesh);
    const Outcome outcome = weldline({"explain", file, "--at", "0.5,0.1,0.05"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.err, "cell state 'frozen'"), 1) << outcome.err;
}

TEST_F(Explain, refuses_what_it_does_not_know) {
    expectError(weldline({"explain", result({"--method", "3"}), "--node", "0"}), 3,
                {"result.vtu", "method 3", "methods 1, 2 and 4"});
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    addCellArray(mesh, "second", [](SampleMesh::Point) { return 1.0; });
    expectError(weldline({"explain", result({"--bi-field", "second"}, mesh), "--node", "0"}), 3,
                {"result.vtu", "--bi-field second"});
    expectError(weldline({"explain", at("part.vtu"), "--node", "0"}), 3,
                {"part.vtu", "MeetingAngle"});
}

TEST_F(Explain, refuses_wrong_usage) {
    const std::string file = result();
    expectError(weldline({"explain", file}), 2, {"--node", "--at"});
    expectError(weldline({"explain", file, "--node", "1", "--at", "0,0,0"}), 2, {"--at"});
    expectError(weldline({"explain", file, "--node", "99"}), 2, {"--node 99", "0 to 98"});
    expectError(weldline({"explain", file, "--node", "-1"}), 2, {"--node"});
    for (const char* place : {"1,2", "1,2,3,4", "a,b,c", "1,2,nan", "1;2;3"})
        expectError(weldline({"explain", file, "--at", place}), 2, {"--at", place});
}

TEST_F(Explain, negative_places) {
    EXPECT_EQ(explained(result(), "-1,-1,-1")["node"], 0);
}

}  // namespace

}  // namespace weldline::test
