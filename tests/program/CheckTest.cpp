#include <algorithm>
#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// What the program says about a filling result before anybody believes in lines.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

class CheckCommand : public ProgramTest {
  protected:
    // 12 * 3 * 3 cells with fronts from both ends; where the fronts meet lie two layers of cells.
    static SampleMesh goodPlate() { return plateWithTwoFronts(12, 3, 3); }

    Json findings(const std::vector<std::string>& arguments) const {
        std::vector<std::string> all{"check"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        all.insert(all.end(), {"--json", "-"});
        const Outcome outcome = weldline(all);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        return Json::parse(outcome.out);
    }

    static Json finding(const Json& all, const std::string& name) {
        for (const Json& one : all["findings"])
            if (one["name"] == name) return one;
        ADD_FAILURE() << name;
        return {};
    }
};

TEST_F(CheckCommand, nothing_stands_out_in_a_good_result) {
    const Outcome outcome = weldline({"check", write("part.vtu", goodPlate())});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(contains(outcome.out, "100.00 % of the volume, 108 of 108 cells")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "Nothing stands out."));
    EXPECT_FALSE(contains(outcome.out, "!"));
    EXPECT_FALSE(contains(outcome.out, "Time steps"));
}

// The plate is 0.1 thick in 3 layers, 0.2 wide in 3 and 1 long in 12. Of the 72 + 72 + 18 walls
// half see 3 cells.
TEST_F(CheckCommand, json_holds_every_number) {
    const Json all = findings({write("part.vtu", goodPlate())});
    EXPECT_EQ(all["schema"], "weldline-check/1");
    EXPECT_EQ(all["findings"].size(), 9u);
    EXPECT_NEAR(finding(all, "nonOrthogonality")["value"].get<double>(), 0.0, 1e-4);
    EXPECT_NEAR(finding(all, "volumeRatio")["value"].get<double>(), 1.0, 1e-9);
    EXPECT_EQ(finding(all, "filledVolume")["value"], 1.0);
    EXPECT_EQ(finding(all, "pockets")["value"], 0.0);
    EXPECT_EQ(finding(all, "layers")["value"], 3.0);
    for (const Json& one : all["findings"]) {
        EXPECT_EQ(one["level"], "ok") << one;
        EXPECT_TRUE(one["consequence"].is_null());
    }
}

// Four cells in the middle stay empty: a pocket, unless the patch that they touch is a vent.
TEST_F(CheckCommand, unfilled_cells_are_told_with_their_consequence) {
    SampleMesh mesh = goodPlate();
    for (const int cell : {5, 6, 17, 18}) mesh.cellArrays[0].values[cell] = -1.0;
    const std::string input = write("part.vtu", mesh);
    const Json all = findings({input});
    EXPECT_NEAR(finding(all, "filledVolume")["value"].get<double>(), 104.0 / 108.0, 1e-12);
    EXPECT_EQ(finding(all, "filledVolume")["level"], "look");
    EXPECT_EQ(finding(all, "pockets")["value"], 1.0);
    const Outcome outcome = weldline({"check", input});
    EXPECT_TRUE(contains(outcome.out, "! Unfilled pockets    1, no vents are known; the largest"))
        << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "4 cells"));
    EXPECT_TRUE(contains(outcome.out, "means: air is trapped there"));
    EXPECT_TRUE(contains(outcome.out, "do: vent these places"));
    EXPECT_TRUE(contains(outcome.out, "do: analyze with --trapped-air close"));
    EXPECT_TRUE(contains(outcome.out, "2 of 9 findings are worth a look (!)."));
}

TEST_F(CheckCommand, late_and_early_cells) {
    SampleMesh mesh = goodPlate();
    mesh.cellArrays[0].values[14] = 9.0;
    mesh.cellArrays[0].values[57] = 0.01;
    const Json all = findings({write("part.vtu", mesh)});
    EXPECT_EQ(finding(all, "lateCells")["value"], 1.0);
    EXPECT_EQ(finding(all, "lateCells")["level"], "look");
    EXPECT_NEAR(finding(all, "earlyCells")["value"].get<double>(), 1.0 / 108.0, 1e-12);
    EXPECT_EQ(finding(all, "earlyCells")["level"], "look");
}

TEST_F(CheckCommand, one_layer_is_too_few) {
    const Json all = findings({write("part.vtu", plateWithTwoFronts(12, 3, 1))});
    EXPECT_EQ(finding(all, "layers")["value"], 1.0);
    EXPECT_EQ(finding(all, "layers")["level"], "look");
}

TEST_F(CheckCommand, volumes_that_differ_too_much) {
    SampleMesh mesh = goodPlate();
    for (SampleMesh::Point& point : mesh.points)
        if (point[0] > 0.99) point[0] = 1.5;
    const Json ratio = finding(findings({write("part.vtu", mesh)}), "volumeRatio");
    EXPECT_NEAR(ratio["value"].get<double>(), 7.0, 1e-9);
    EXPECT_TRUE(contains(ratio["text"], "9 faces above 5")) << ratio;
    EXPECT_EQ(ratio["level"], "look");
}

// A front along x that is one cell wide passes one of the 12 cells in 1 / 12 of time; steps of a
// quarter pass three.
TEST_F(CheckCommand, steps_of_a_series_against_cells) {
    std::string entries;
    for (const double time : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        SampleMesh mesh = plate(12, 3, 3);
        addCellArray(mesh, "alpha.melt", [&](SampleMesh::Point p) {
            return std::min(std::max(0.5 + (time - p[0]) * 2.0, 0.0), 1.0);
        });
        const std::string file = "step" + std::to_string(time) + ".vtu";
        write(file, mesh);
        entries += "<DataSet timestep=\"" + std::to_string(time) + "\" file=\"" + file + "\"/>\n";
    }
    const std::string input = write("run.pvd", "<VTKFile type=\"Collection\"><Collection>\n" +
                                                   entries + "</Collection></VTKFile>\n");
    const Json steps = finding(findings({input}), "cellsPerStep");
    EXPECT_NEAR(steps["value"].get<double>(), 3.0, 1e-4);
    EXPECT_EQ(steps["level"], "look");
}

TEST_F(CheckCommand, json_into_a_file_leaves_the_table_on_standard_output) {
    const Outcome outcome =
        weldline({"check", write("part.vtu", goodPlate()), "--json", at("check.json")});
    EXPECT_TRUE(contains(outcome.out, "Nothing stands out."));
    EXPECT_EQ(Json::parse(read(at("check.json")))["findings"].size(), 9u);
}

TEST_F(CheckCommand, input_that_cannot_be_checked) {
    expectError(weldline({"check", at("gone.vtu")}), 3, {"gone.vtu", "no such file"});
    expectError(weldline({"check", write("bare.vtu", plate(4, 1, 1))}), 3,
                {"bare.vtu", "FillTime"});
    SampleMesh empty = plateWithTwoFronts(4, 1, 1);
    empty.cellArrays[0].values.assign(4, -1.0);
    expectError(weldline({"check", write("empty.vtu", empty)}), 3, {"empty.vtu", "no cell"});
    const std::string input = write("part.vtu", goodPlate());
    expectError(weldline({"check", input, "--json", input}), 2, {"part.vtu"});
    expectError(weldline({"check", input, "--inlet", "("}), 2, {"inlet", "regular expression"});
    expectError(weldline({"check", input, "--time", "noon"}), 2, {"--time", "noon"});
}

}  // namespace

}  // namespace weldline::test
