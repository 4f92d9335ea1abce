#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ProgramTest.h"

// Weld lines as lists, files and verdicts.

namespace weldline::test {

namespace {

using Json = nlohmann::json;
using Names = std::vector<std::string>;

class Lines : public ProgramTest {
  protected:
    // Fronts meet on x = 0.5, from y = 0 to y = 0.2: one line of 9 nodes, 0.2 long.
    std::string part() const {
        SampleMesh mesh = plateWithTwoFronts(10, 2, 2);
        addCellArray(mesh, "Temperature", [](SampleMesh::Point p) { return 200.0 + p[0]; });
        mesh.pointArrays.push_back({"Pressure", "Float64", {}});
        for (const SampleMesh::Point& point : mesh.points)
            mesh.pointArrays.back().values.push_back(point[1]);
        return write("part.vtu", mesh);
    }

    Outcome analyze(const Names& options) const {
        Names arguments{"analyze", part()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return weldline(arguments);
    }

    Json summary(Names options = {}) const {
        options.insert(options.end(), {"--json", "-"});
        const Outcome outcome = analyze(options);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        return Json::parse(outcome.out);
    }
};

}  // namespace

TEST_F(Lines, have_class_and_length) {
    const Json line = summary()["components"].at(0);
    EXPECT_EQ(line["class"], "weld");
    EXPECT_NEAR(line["length"].get<double>(), 0.2, 0.01);
    EXPECT_EQ(line["branchLength"], 0.0);
    EXPECT_EQ(line["nearestPatch"], nullptr);
}

// Fronts that meet at 60 degrees.
TEST_F(Lines, class_follows_the_weld_limit) {
    SampleMesh mesh = plate(20, 8, 2);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point p) {
        return 0.05 + 0.866 * std::min(p[0], 1.0 - p[0]) + 0.5 * p[1];
    });
    const std::string file = write("oblique.vtu", mesh);
    const auto lineAt = [&](const std::string& limit) {
        const Outcome outcome = weldline({"analyze", file, "--weld-limit", limit, "--json", "-"});
        return Json::parse(outcome.out)["components"].at(0);
    };
    const double mean = lineAt("180")["meanAngle"];
    EXPECT_GT(mean, 1.0);
    EXPECT_EQ(lineAt(std::to_string(mean + 0.1))["class"], "weld");
    EXPECT_EQ(lineAt(std::to_string(mean - 0.1))["class"], "meld");
}

TEST_F(Lines, carry_cell_and_point_values) {
    const Json carried =
        summary({"--carry", "Temperature", "--carry", "Pressure"})["components"].at(0)["carried"];
    // The cells beside the plane have their middles at x = 0.45 and 0.55.
    EXPECT_NEAR(carried["Temperature"]["smallest"].get<double>(), 200.45, 1e-9);
    EXPECT_NEAR(carried["Temperature"]["mean"].get<double>(), 200.5, 1e-9);
    EXPECT_NEAR(carried["Temperature"]["largest"].get<double>(), 200.55, 1e-9);
    // Means over the nodes of cells from y = 0 to 0.1 and from 0.1 to 0.2.
    EXPECT_NEAR(carried["Pressure"]["smallest"].get<double>(), 0.05, 1e-9);
    EXPECT_NEAR(carried["Pressure"]["largest"].get<double>(), 0.15, 1e-9);
}

TEST_F(Lines, carry_names_what_is_missing) {
    expectError(analyze({"--carry", "Thickness"}), 3, {"part.vtu", "'Thickness'"});
}

TEST_F(Lines, noise_is_left_out_counted_and_said) {
    const Outcome outcome = analyze({"--min-nodes", "10", "--json", "-"});
    EXPECT_EQ(outcome.exitCode, 0);
    const Json json = Json::parse(outcome.out);
    EXPECT_EQ(json["components"], Json::array());
    EXPECT_EQ(json["counts"]["droppedLines"], 1);
    EXPECT_EQ(json["counts"]["droppedNodes"], 9);
    EXPECT_EQ(json["counts"]["weldNodes"], 0);
    EXPECT_TRUE(contains(outcome.err, "1 line with 9 nodes in all left out"));
    EXPECT_EQ(summary({"--min-length", "0.3"})["components"], Json::array());
    EXPECT_EQ(summary({"--min-length", "0.1", "--min-nodes", "9"})["components"].size(), 1U);
}

TEST_F(Lines, csv_has_one_line_each) {
    const Outcome outcome = analyze({"--csv", "-", "--carry", "Temperature"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::string head;
    std::string row;
    std::string more;
    std::getline(lines, head);
    std::getline(lines, row);
    EXPECT_TRUE(head.starts_with("id,class,nodes,length,branch_length,skin_length,"));
    EXPECT_TRUE(
        head.ends_with("patch,patch_distance,Temperature_smallest,Temperature_mean,"
                       "Temperature_largest"));
    EXPECT_TRUE(row.starts_with("1,weld,9,0."));
    EXPECT_EQ(std::count(head.begin(), head.end(), ','), std::count(row.begin(), row.end(), ','));
    EXPECT_FALSE(std::getline(lines, more));
}

TEST_F(Lines, csv_and_json_do_not_share_standard_output) {
    expectError(analyze({"--csv", "-", "--json", "-"}), 2, {"--csv", "--json"});
}

TEST_F(Lines, file_holds_polylines_and_surface) {
    const Outcome outcome = analyze({"--lines", at("lines.vtp")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    const std::string text = read(at("lines.vtp"));
    for (const char* word : {"PolyData", "WeldLine", "Place", "Class", "Length", "SmallestAngle",
                             "MeanAngle", "MeetingAngle", "FormationTime"})
        EXPECT_TRUE(contains(text, word)) << word;
    // One curve on the skin, one through the part; 2 * 2 faces between the two halves.
    EXPECT_TRUE(contains(text, "NumberOfLines=\"2\""));
    EXPECT_TRUE(contains(text, "NumberOfPolys=\"4\""));
}

TEST_F(Lines, file_has_to_be_a_vtp) {
    expectError(analyze({"--lines", at("lines.vtk")}), 2, {"lines.vtk", ".vtp"});
    EXPECT_EQ(entries(), (Names{"part.vtu"}));
}

TEST_F(Lines, outputs_of_one_name_are_refused) {
    expectError(analyze({"--lines", at("a.vtp"), "--csv", at("a.vtp")}), 2, {"a.vtp"});
}

TEST_F(Lines, verdict_ends_with_code_10_and_names_the_lines) {
    const Outcome outcome = analyze({"--fail-on", "angle<60 & length>0.1", "--csv", at("l.csv")});
    EXPECT_EQ(outcome.exitCode, 10);
    EXPECT_TRUE(contains(outcome.err, "'angle<60 & length>0.1' holds for weld line 1\n"));
    EXPECT_TRUE(contains(outcome.out, "Weld lines"));
    EXPECT_EQ(linesWith(read(at("l.csv")), "weld"), 1);
}

TEST_F(Lines, verdict_is_silent_where_all_is_well) {
    const Outcome outcome = analyze({"--fail-on", "length>5"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_FALSE(contains(outcome.err, "length>5"));
    EXPECT_EQ(summary({"--fail-on", "length>5"})["failing"], Json::array());
}

TEST_F(Lines, rule_that_is_none_is_wrong_usage) {
    expectError(analyze({"--fail-on", "angle<"}), 2, {"--fail-on", "'angle<'", "number"});
}

TEST_F(Lines, values_without_sense_are_wrong_usage) {
    expectError(analyze({"--weld-limit", "0"}), 2, {"--weld-limit"});
    expectError(analyze({"--limit", "181"}), 2, {"--limit"});
    expectError(analyze({"--min-length", "-1"}), 2, {"--min-length"});
    expectError(analyze({"--min-nodes", "0"}), 2, {"--min-nodes"});
}

}  // namespace weldline::test
