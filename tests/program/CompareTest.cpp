#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// Two results side by side.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

class Compare : public ProgramTest {
  protected:
    // The plate with fronts from both ends that meet head-on at x.
    std::string resultWithLineAt(const std::string& name, double x, int nx) {
        SampleMesh mesh = plate(nx, 4, 2);
        addCellArray(mesh, "FillTime",
                     [&](SampleMesh::Point p) { return 1.0 + std::min(p[0], 2.0 * x - p[0]); });
        return analyzed(name, mesh);
    }

    std::string resultWithoutLine(const std::string& name) {
        SampleMesh mesh = plate(20, 4, 2);
        addCellArray(mesh, "FillTime", [](SampleMesh::Point p) { return 1.0 + p[0]; });
        return analyzed(name, mesh);
    }

    std::string analyzed(const std::string& name, const SampleMesh& mesh) {
        const std::string result = at(name + ".vtu");
        EXPECT_EQ(weldline({"analyze", write(name + "-input.vtu", mesh), "-o", result}).exitCode,
                  0);
        return result;
    }

    Json compared(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "compare");
        arguments.insert(arguments.end(), {"--json", "-"});
        const Outcome outcome = weldline(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return Json::parse(outcome.out);
    }
};

TEST_F(Compare, finds_the_same_line_on_another_mesh) {
    const Json j = compared({resultWithLineAt("a", 0.5, 20), resultWithLineAt("b", 0.5, 40)});
    EXPECT_EQ(j["schema"], "weldline-comparison/1");
    EXPECT_EQ(j["counts"],
              (Json{{"same", 1}, {"changed", 0}, {"moved", 0}, {"gone", 0}, {"new", 0}}));
    ASSERT_EQ(j["lines"].size(), 1u);
    EXPECT_EQ(j["lines"][0]["a"]["id"], 1);
    EXPECT_EQ(j["lines"][0]["b"]["id"], 1);
    EXPECT_LT(j["lines"][0]["distance"], 0.05);
    EXPECT_EQ(j["lines"][0]["changes"], Json::array());
}

// From x = 0.5 to 0.55: half a tenth, within twice the cells of 0.05.
TEST_F(Compare, tells_a_move_beyond_the_tolerance) {
    const std::string a = resultWithLineAt("a", 0.5, 20);
    const std::string b = resultWithLineAt("b", 0.55, 20);
    const Json within = compared({a, b});
    EXPECT_NEAR(within["options"]["tolerance"].get<double>(), 0.1, 1e-9);
    EXPECT_EQ(within["lines"][0]["fate"], "same");
    const Json beyond = compared({a, b, "--tolerance", "0.02"});
    EXPECT_EQ(beyond["lines"][0]["fate"], "moved");
    EXPECT_NEAR(beyond["lines"][0]["distance"].get<double>(), 0.05, 0.01);
}

TEST_F(Compare, tells_what_is_gone_and_what_is_new) {
    const std::string with = resultWithLineAt("with", 0.5, 20);
    const std::string without = resultWithoutLine("without");
    const Json gone = compared({with, without});
    EXPECT_EQ(gone["lines"][0]["fate"], "gone");
    EXPECT_TRUE(gone["lines"][0]["b"].is_null());
    EXPECT_TRUE(gone["lines"][0]["distance"].is_null());
    EXPECT_EQ(compared({without, with})["lines"][0]["fate"], "new");
    EXPECT_EQ(compared({with, without, "--min-nodes", "1000"})["a"]["droppedLines"], 1);
}

TEST_F(Compare, table_and_file) {
    const std::string a = resultWithLineAt("a", 0.5, 20);
    const std::string b = resultWithoutLine("b");
    const Outcome outcome = weldline({"compare", a, b, "--json", at("c.json")});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(linesWith(outcome.out, "0 same, 0 changed, 0 moved, 1 gone, 0 new"), 1);
    EXPECT_EQ(linesWith(outcome.out, " weld "), 1);
    EXPECT_EQ(Json::parse(read(at("c.json")))["counts"]["gone"], 1);
    EXPECT_TRUE(temporaries().empty());
}

TEST_F(Compare, notes_parts_in_other_places) {
    const std::string a = resultWithLineAt("a", 0.5, 20);
    SampleMesh far = plate(20, 4, 2);
    addCellArray(far, "FillTime", [](SampleMesh::Point p) { return 1.0 + p[0]; });
    for (SampleMesh::Point& p : far.points) p[0] += 7.0;
    const Outcome outcome = weldline({"compare", a, analyzed("b", far)});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.err, "unit of length"), 1) << outcome.err;
}

TEST_F(Compare, refuses_what_makes_no_sense) {
    const std::string a = resultWithLineAt("a", 0.5, 20);
    const std::string before = read(a);
    expectError(weldline({"compare", a}), 2, {"B", "weldline compare --help"});
    expectError(weldline({"compare", a, a, "--tolerance", "-1"}), 2, {"--tolerance", "0 or more"});
    expectError(weldline({"compare", a, a, "--limit", "181"}), 2, {"--limit", "180"});
    expectError(weldline({"compare", a, a, "--json", a}), 2, {"a.vtu", "replace the input"});
    EXPECT_EQ(read(a), before);
    expectError(weldline({"compare", a, at("a-input.vtu")}), 3,
                {"a-input.vtu", "MeetingAngle", "weldline analyze"});
    expectError(weldline({"compare", at("missing.vtu"), a}), 3, {"missing.vtu"});
}

}  // namespace

}  // namespace weldline::test
