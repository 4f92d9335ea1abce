#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// What a data set holds, before any run.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

class Info : public ProgramTest {
  protected:
    // The plate with quads on its ends: patch 1 at x = 0, patch 2 at x = 1.
    static SampleMesh plateWithPatches() {
        SampleMesh mesh = plateWithTwoFronts(4, 1, 2);
        mesh.cellArrays.push_back({"PatchId", "Int32", std::vector<double>(8, 0.0)});
        const auto addEnd = [&](int x, double patch) {
            for (int layer = 0; layer < 2; ++layer) {
                const int low = x + 10 * layer;
                mesh.addCell(9, {low, low + 5, low + 15, low + 10});
                mesh.cellArrays[0].values.push_back(0.0);
                mesh.cellArrays[1].values.push_back(patch);
            }
        };
        addEnd(0, 1.0);
        addEnd(4, 2.0);
        return mesh;
    }
};

TEST_F(Info, lists_cells_arrays_and_box) {
    SampleMesh mesh = plateWithTwoFronts(4, 1, 2);
    mesh.pointArrays.push_back({"heat", "Float64", std::vector<double>(30, 2.5)});
    const Outcome outcome = weldline({"info", write("part.vtu", mesh)});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(contains(outcome.out, "30 points")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "x 0 to 1, y 0 to 0.2, z 0 to 0.1"));
    EXPECT_EQ(linesWith(outcome.out, "FillTime"), 1);
    EXPECT_EQ(linesWith(outcome.out, "heat"), 1);
    EXPECT_EQ(linesWith(outcome.out, "every boundary face would be taken as wall"), 1);
}

TEST_F(Info, tells_the_group_of_every_patch) {
    const Outcome outcome =
        weldline({"info", write("part.vtu", plateWithPatches()), "--inlet", "^1$", "--json", "-"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
    const Json info = Json::parse(outcome.out);
    EXPECT_EQ(info["schema"], "weldline-info/1");
    ASSERT_EQ(info["patches"].size(), 2u);
    EXPECT_EQ(info["patches"][0], (Json{{"name", "1"}, {"group", "inlet"}, {"faces", 2}}));
    EXPECT_EQ(info["patches"][1], (Json{{"name", "2"}, {"group", "wall"}, {"faces", 2}}));
}

TEST_F(Info, agrees_with_the_groups_of_a_run) {
    const std::string input = write("part.vtu", plateWithPatches());
    const Outcome outcome =
        weldline({"analyze", input, "--inlet", "^1$", "--outlet", "^2$", "--json", "-"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
    // 28 boundary faces: 2 * (1 * 2 at the ends + 4 * 2 at the sides + 4 * 1 above and below).
    EXPECT_EQ(Json::parse(outcome.out)["mesh"]["groups"],
              (Json{{"wall", 24}, {"inlet", 2}, {"outlet", 2}, {"symmetry", 0}}));
}

TEST_F(Info, json_file) {
    const std::string input = write("part.vtu", plateWithPatches());
    ASSERT_EQ(weldline({"info", input, "--json", at("info.json")}).exitCode, 0);
    EXPECT_EQ(Json::parse(read(at("info.json")))["cellShapes"].size(), 2u);
}

TEST_F(Info, json_in_place_of_the_input_is_refused) {
    const std::string input = write("part.vtu", plateWithPatches());
    const std::string before = read(input);
    expectError(weldline({"info", input, "--json", input}), 2, {"part.vtu", "input"});
    EXPECT_EQ(read(input), before);
}

}  // namespace

// What a mesh cannot be built of can be told of all the same.
TEST_F(Info, of_quadratic_cells) {
    SampleMesh mesh = plateWithTwoFronts(4, 1, 1);
    mesh.addCell(24, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    mesh.cellArrays[0].values.push_back(0.1);
    const Outcome outcome = weldline({"info", write("part.vtu", mesh)});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(linesWith(outcome.out, "1 QuadraticTetra"), 1) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "Proposal"));
}

TEST_F(Info, of_a_cell_that_stands_three_times) {
    SampleMesh mesh = plateWithTwoFronts(4, 1, 1);
    for (int more = 0; more < 2; ++more) {
        mesh.addCell(mesh.types[0], std::vector<int>(mesh.cells[0]));
        mesh.cellArrays[0].values.push_back(0.1);
    }
    const Outcome outcome = weldline({"info", write("part.vtu", mesh)});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.out, "6 Hexahedron"), 1) << outcome.out;
    EXPECT_EQ(linesWith(outcome.err, ""), 1) << outcome.err;
    EXPECT_TRUE(contains(outcome.err, "note: inlets and outlets cannot be proposed: cell"))
        << outcome.err;
}

}  // namespace weldline::test
