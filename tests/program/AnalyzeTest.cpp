#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ProgramTest.h"

// The main job on meshes whose answer is known.

namespace weldline::test {

namespace {

using Json = nlohmann::json;
using Names = std::vector<std::string>;

class Analyze : public ProgramTest {
  protected:
    // The JSON summary of a run on a mesh.
    Json summaryOf(const SampleMesh& mesh, const Names& options = {}) const {
        Names arguments{"analyze", write("part.vtu", mesh), "--json", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome outcome = weldline(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        return Json::parse(outcome.out);
    }
};

//      x = 0        0.5         1
//        +--+--+--+--#--+--+--+--+      Fronts start at both ends and meet at #, head-on. The
//        | >| >| >| >#< |< |< |< |      plane holds (2 + 1) * (2 + 1) nodes; the cells beside it
//        +--+--+--+--#--+--+--+--+      are filled at 0.45 + 0.05.
void expectMiddlePlane(const Json& summary, int nodes, double largest = 1e-3) {
    EXPECT_EQ(summary["counts"]["weldNodes"], nodes);
    ASSERT_EQ(summary["components"].size(), 1u) << summary["components"];
    const Json& line = summary["components"][0];
    EXPECT_EQ(line["id"], 1);
    EXPECT_EQ(line["nodes"], nodes);
    EXPECT_EQ(line["box"]["low"], (Json{0.5, 0.0, 0.0}));
    EXPECT_EQ(line["box"]["high"], (Json{0.5, 0.2, 0.1}));
    EXPECT_LT(line["smallestAngle"], largest);
    EXPECT_LT(line["meanAngle"], largest);
    EXPECT_EQ(line["formationTime"]["first"], 0.5);
    EXPECT_EQ(line["formationTime"]["last"], 0.5);
}

TEST_F(Analyze, two_fronts_meet_on_the_middle_plane) {
    expectMiddlePlane(summaryOf(plateWithTwoFronts(10, 2, 2)), 9);
}

// With walls around it, one layer of cells is no singular mesh: the walls count as neighbours.
TEST_F(Analyze, two_fronts_in_one_layer_of_cells) {
    expectMiddlePlane(summaryOf(plateWithTwoFronts(10, 2, 1)), 6);
}

// One layer of cells between two open sides, which no step counts: nothing lies beside a cell in y,
// the second pivot is zero, and the second gradient is the RBF's instead of least squares.
TEST_F(Analyze, singular_mesh_takes_the_rbf_gradient) {
    const Names options{"-o", at("result.vtu"), "--outlet", "7", "--set", "FlagDebugOutput=1"};
    expectMiddlePlane(summaryOf(layerWithOpenSides(10, 2), options), 6, 5.0);
    const std::string trace = read(at("result_KVRWDLineDebug.txt"));
    EXPECT_TRUE(contains(trace, "..Start RBF calculation of gradients\n"));
    EXPECT_FALSE(contains(trace, "..Start iterative calculation of gradients\n"));
}

TEST_F(Analyze, methods_find_the_middle_plane) {
    for (const char* method : {"1", "2", "4", "40"})
        expectMiddlePlane(summaryOf(plateWithTwoFronts(10, 2, 2), {"--method", method}), 9);
}

// The four corners of the plane have two cells only, which the hybrid method judges at the origin
// instead of their common face. The cells at x > 0.5 flow towards it, those at x < 0.5 do not.
TEST_F(Analyze, keeps_hybrid_method_without_nodes_of_two_cells) {
    expectMiddlePlane(summaryOf(plateWithTwoFronts(10, 2, 2), {"--method", "3"}), 5);
}

// Beside the walls the RBF gradient is slightly oblique.
TEST_F(Analyze, gradients_find_the_middle_plane) {
    for (const char* gradient : {"default", "rbf", "auto", "upwind"})
        for (const char* set : {"first", "second"})
            expectMiddlePlane(summaryOf(plateWithTwoFronts(10, 2, 2),
                                        {"--gradient", gradient, "--gradient-set", set}),
                              9, 5.0);
}

TEST_F(Analyze, one_front_meets_nothing) {
    SampleMesh mesh = plate(10, 2, 2);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point p) { return p[0]; });
    const Json summary = summaryOf(mesh);
    EXPECT_EQ(summary["counts"]["weldNodes"], 0);
    EXPECT_EQ(summary["components"], Json::array());
}

// The fronts need 0.5 time units for half of the length, a rise of 1e-4 per unit of length.
TEST_F(Analyze, lengths_in_too_small_a_unit_are_noted) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    for (SampleMesh::Point& point : mesh.points)
        for (double& coordinate : point) coordinate *= 1e4;
    const std::string note = "less than 0.001 per unit of length";
    const std::string file = write("part.vtu", mesh);
    EXPECT_NE(weldline({"analyze", file}).err.find(note), std::string::npos);
    EXPECT_EQ(weldline({"analyze", file, "--method", "1"}).err.find(note), std::string::npos);
    const std::string usual = write("usual.vtu", plateWithTwoFronts(10, 2, 2));
    EXPECT_EQ(weldline({"analyze", usual}).err.find(note), std::string::npos);
}

TEST_F(Analyze, largest_angle_leaves_out_what_opens_wider) {
    EXPECT_EQ(summaryOf(plateWithTwoFronts(10, 2, 2), {"--limit", "1"})["counts"]["weldNodes"], 9);
}

// 10 * 2 * 1 cells: 9 * 2 + 10 * 1 inner faces; 2 * (2 * 1 + 10 * 1 + 10 * 2) outside.
TEST_F(Analyze, counts_of_the_mesh) {
    const Json mesh = summaryOf(plateWithTwoFronts(10, 2, 1))["mesh"];
    EXPECT_EQ(mesh["cells"], 20);
    EXPECT_EQ(mesh["cellsByKind"], (Json{{"hexahedra", 20}}));
    EXPECT_EQ(mesh["nodes"], 66);
    EXPECT_EQ(mesh["innerFaces"], 28);
    EXPECT_EQ(mesh["boundaryFaces"], 64);
    EXPECT_EQ(mesh["groups"], (Json{{"wall", 64}, {"inlet", 0}, {"outlet", 0}, {"symmetry", 0}}));
    EXPECT_NEAR(mesh["volume"].get<double>(), 0.02, 1e-12);
    EXPECT_EQ(mesh["box"]["high"], (Json{1.0, 0.2, 0.1}));
}

TEST_F(Analyze, summary_says_how_it_was_made) {
    const Json summary = summaryOf(plateWithTwoFronts(4, 1, 2), {"--set", "nGrad=3"});
    EXPECT_EQ(summary["schema"], "weldline-summary/1");
    EXPECT_EQ(summary["program"]["version"], WELDLINE_VERSION);
    EXPECT_EQ(summary["input"]["field"], "FillTime");
    EXPECT_EQ(summary["input"]["time"], nullptr);
    EXPECT_EQ(summary["settings"]["nGrad"], 3);
    EXPECT_EQ(summary["settings"]["WeldlingAngleMethod"], 4);
    EXPECT_EQ(summary["settings"]["TruncateAngle"], 145.0);
    EXPECT_EQ(summary["settings"]["controlFile"], nullptr);
    EXPECT_EQ(summary["counts"]["reachedCells"], 8);
    EXPECT_EQ(summary["outputs"]["json"], "-");
}

TEST_F(Analyze, summary_on_standard_output_is_alone_there) {
    const Outcome outcome =
        weldline({"analyze", write("part.vtu", plateWithTwoFronts(4, 1, 2)), "--json", "-"});
    EXPECT_EQ(outcome.out.front(), '{');
    EXPECT_EQ(outcome.out.substr(outcome.out.size() - 2), "}\n");
    EXPECT_TRUE(Json::accept(outcome.out));
}

TEST_F(Analyze, summary_file_equals_the_summary_on_standard_output) {
    const std::string input = write("part.vtu", plateWithTwoFronts(4, 1, 2));
    Json printed = Json::parse(weldline({"analyze", input, "--json", "-"}).out);
    ASSERT_EQ(weldline({"analyze", input, "--json", at("sum.json")}).exitCode, 0);
    const Json kept = Json::parse(read(at("sum.json")));
    EXPECT_EQ(kept["outputs"]["json"], at("sum.json"));
    printed["outputs"] = kept["outputs"];
    EXPECT_EQ(kept, printed);
}

TEST_F(Analyze, summary_may_go_into_a_device) {
    EXPECT_EQ(
        weldline({"analyze", write("part.vtu", plateWithTwoFronts(4, 1, 2)), "--json", "/dev/null"})
            .exitCode,
        0);
}

TEST_F(Analyze, same_run_gives_the_same_bytes) {
    const std::string input = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    const Names arguments{"analyze", input, "-o", at("result.vtu"), "--json", at("sum.json")};
    const Outcome first = weldline(arguments);
    const Names before{read(at("result.vtu")), read(at("sum.json")), read(at("result.cmp"))};
    const Outcome second = weldline(arguments);
    ASSERT_EQ(second.exitCode, 0);
    EXPECT_EQ(first.out, second.out);
    EXPECT_EQ(before,
              (Names{read(at("result.vtu")), read(at("sum.json")), read(at("result.cmp"))}));
}

TEST_F(Analyze, result_holds_angles_weld_lines_and_flow) {
    const std::string input = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    ASSERT_EQ(weldline({"analyze", input, "-o", at("result.vtu")}).exitCode, 0);
    const Json info = Json::parse(weldline({"info", at("result.vtu"), "--json", "-"}).out);
    std::map<std::string, Json> arrays;
    for (const Json& array : info["arrays"]) arrays[array["name"]] = array;
    EXPECT_EQ(arrays["MeetingAngle"]["where"], "points");
    EXPECT_EQ(arrays["MeetingAngle"]["maximum"], 180.0);
    EXPECT_LT(std::abs(arrays["MeetingAngle"]["minimum"].get<double>()), 1e-3);
    EXPECT_EQ(arrays["WeldLine"]["where"], "points");
    EXPECT_EQ(arrays["WeldLine"]["minimum"], 0.0);
    EXPECT_EQ(arrays["WeldLine"]["maximum"], 1.0);
    EXPECT_EQ(arrays["FillTime"]["where"], "cells");
    EXPECT_EQ(arrays["FlowDirection"]["components"], 3);
    EXPECT_EQ(info["cells"], 40);
    EXPECT_EQ(info["points"], 99);
}

TEST_F(Analyze, exodus_result_holds_the_same_values) {
    const std::string input = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    for (const char* name : {"result.vtu", "result.exo"})
        ASSERT_EQ(weldline({"analyze", input, "-o", at(name)}).exitCode, 0);
    const auto rangeOf = [&](const std::string& file, const std::string& name) {
        const Json info = Json::parse(weldline({"info", at(file), "--json", "-"}).out);
        for (const Json& array : info["arrays"])
            if (array["name"] == name) return Json{array["minimum"], array["maximum"]};
        return Json{};
    };
    for (const char* array : {"MeetingAngle", "WeldLine", "FillTime", "FlowDirection"})
        EXPECT_EQ(rangeOf("result.exo", array), rangeOf("result.vtu", array)) << array;
    const std::string before = read(at("result.exo"));
    ASSERT_EQ(weldline({"analyze", input, "-o", at("result.exo")}).exitCode, 0);
    EXPECT_EQ(read(at("result.exo")), before);
}

TEST_F(Analyze, result_can_be_analysed_again) {
    const std::string input = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    ASSERT_EQ(weldline({"analyze", input, "-o", at("result.vtu")}).exitCode, 0);
    const Outcome again = weldline({"analyze", at("result.vtu"), "--json", "-"});
    ASSERT_EQ(again.exitCode, 0) << again.err;
    expectMiddlePlane(Json::parse(again.out), 9);
}

// The second injection fills what the first left empty: x > 0.5 is filled from the other end.
TEST_F(Analyze, second_injection_fills_what_the_first_left) {
    SampleMesh mesh = plate(10, 2, 2);
    addCellArray(mesh, "FillTime",
                 [](SampleMesh::Point p) { return p[0] < 0.5 ? p[0] + 0.05 : 0.0; });
    addCellArray(mesh, "Second", [](SampleMesh::Point p) { return 1.05 - p[0]; });
    const Json summary = summaryOf(mesh, {"--bi-field", "Second"});
    expectMiddlePlane(summary, 9);
    EXPECT_EQ(summary["counts"]["reachedCells"], 40);
    EXPECT_EQ(summary["input"]["biField"], "Second");
    EXPECT_EQ(summaryOf(mesh)["counts"]["reachedCells"], 20);
}

// Cells of state 1 at y < 0.1 keep the nodes at y = 0 and y = 0.1 free; 3 nodes at y = 0.2 remain.
TEST_F(Analyze, cell_state_keeps_nodes_free) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    addCellArray(mesh, "State", [](SampleMesh::Point p) { return p[1] < 0.1 ? 1.0 : 0.0; });
    const Json summary = summaryOf(mesh, {"--cell-state", "State"});
    EXPECT_EQ(summary["counts"]["weldNodes"], 3);
    EXPECT_EQ(summary["components"][0]["box"]["low"], (Json{0.5, 0.2, 0.0}));
}

TEST_F(Analyze, other_name_of_the_fill_time) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    mesh.cellArrays[0].name = "arrival";
    const Json summary = summaryOf(mesh, {"--field", "arrival"});
    expectMiddlePlane(summary, 9);
    EXPECT_EQ(summary["input"]["field"], "arrival");
}

// Infinite values would be no JSON numbers: every number of the text is finite by its grammar.
TEST_F(Analyze, summary_has_no_number_that_is_not_finite) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    mesh.cellArrays[0].values[0] = INFINITY;
    const Json summary = summaryOf(mesh);
    EXPECT_EQ(summary["counts"]["markedCells"], 1);
    EXPECT_EQ(summary["counts"]["unreachedCells"], 1);
}

TEST_F(Analyze, zero_times_mean_what_the_user_says) {
    SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
    mesh.cellArrays[0].values[0] = 0.0;
    EXPECT_EQ(summaryOf(mesh, {"--zero-time", "unreached"})["counts"]["reachedCells"], 39);
    const Json filled = summaryOf(mesh, {"--zero-time", "filled"});
    EXPECT_EQ(filled["counts"]["reachedCells"], 40);
    EXPECT_EQ(filled["counts"]["cellsFilledAtZero"], 1);
}

TEST_F(Analyze, table_stays_within_80_columns_and_says_the_main_things) {
    const Outcome outcome = weldline({"analyze", write("part.vtu", plateWithTwoFronts(10, 2, 2))});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(contains(outcome.out, "1 with 9 nodes; smallest meeting angle 0.0 degrees"))
        << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "40 hexahedra; 99 nodes"));
    EXPECT_TRUE(contains(outcome.out, "WeldlingAngleMethod=4"));
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);)
        if (!contains(line, "part.vtu")) {
            EXPECT_LE(line.size(), 80u) << line;
        }
}

TEST_F(Analyze, data_set_without_patches_is_noted) {
    const Outcome outcome = weldline({"analyze", write("part.vtu", plateWithTwoFronts(10, 2, 2))});
    EXPECT_EQ(linesWith(outcome.err, "no patches"), 1) << outcome.err;
}

TEST_F(Analyze, pipe_gets_neither_progress_nor_control_sequences) {
    const Outcome outcome = weldline({"analyze", write("part.vtu", plateWithTwoFronts(10, 2, 2))});
    EXPECT_EQ(linesWith(outcome.err, "\r"), 0);
    EXPECT_EQ(linesWith(outcome.err + outcome.out, "\033"), 0);
    EXPECT_EQ(linesWith(outcome.err, ""), linesWith(outcome.err, "weldline: note: "));
}

TEST_F(Analyze, terminal_shows_progress_and_emphasis) {
    Setting setting;
    setting.terminal = true;
    setting.environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}};
    const Outcome outcome =
        weldline({"analyze", write("part.vtu", plateWithTwoFronts(10, 2, 2))}, setting);
    EXPECT_TRUE(contains(outcome.out, "[1/7] reading part.vtu")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "[7/7] writing"));
    EXPECT_TRUE(contains(outcome.out, "\033[1m"));
}

TEST_F(Analyze, terminal_without_colour) {
    Setting setting;
    setting.terminal = true;
    setting.environment = {{"TERM", "xterm"}, {"NO_COLOR", "1"}};
    const Outcome outcome =
        weldline({"analyze", write("part.vtu", plateWithTwoFronts(10, 2, 2))}, setting);
    EXPECT_TRUE(contains(outcome.out, "[1/7]"));
    EXPECT_FALSE(contains(outcome.out, "\033"));
}

}  // namespace

}  // namespace weldline::test
