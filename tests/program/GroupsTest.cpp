#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// Inlets and outlets of a data set whose patches have none of the usual names.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

// Fronts from both ends: each end has 3 * 3 faces.
class AutoGroups : public ProgramTest {
  protected:
    std::string input() const { return write("part.vtu", plateWithTwoFronts(12, 3, 3)); }

    // One front from x = 0 to x = 1.
    std::string oneFront() const {
        SampleMesh mesh = plate(12, 3, 3);
        addCellArray(mesh, "FillTime", [](SampleMesh::Point p) { return p[0]; });
        return write("one.vtu", mesh);
    }

    static Json patch(const Json& summary, const std::string& name) {
        for (const Json& one : summary["mesh"]["patches"])
            if (one["name"] == name) return one;
        return {};
    }
};

TEST_F(AutoGroups, info_proposes_them) {
    const Outcome outcome = weldline({"info", input()});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(contains(outcome.out, "no patch name tells inlets")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "18 faces that fill first"));
    const Json info = Json::parse(weldline({"info", oneFront(), "--json", "-"}).out);
    ASSERT_EQ(info["proposed"].size(), 2u);
    EXPECT_EQ(info["proposed"][0]["group"], "inlet");
    EXPECT_EQ(info["proposed"][0]["faces"], 9);
    EXPECT_EQ(info["proposed"][0]["box"]["high"][0], 0.0);
    EXPECT_EQ(info["proposed"][0]["patches"], Json::array());
    EXPECT_EQ(info["proposed"][1]["group"], "outlet");
    EXPECT_EQ(info["proposed"][1]["box"]["low"][0], 1.0);
    EXPECT_EQ(info["proposedFrom"], (Json{{"field", "FillTime"}, {"series", nullptr}}));
}

TEST_F(AutoGroups, info_proposes_nothing_without_a_fill_time) {
    const Outcome outcome = weldline({"info", write("bare.vtu", plate(4, 1, 1))});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_FALSE(contains(outcome.out, "Proposal"));
}

TEST_F(AutoGroups, are_used_only_when_asked_for) {
    const Json j = Json::parse(weldline({"analyze", input(), "--json", "-"}).out);
    EXPECT_EQ(j["mesh"]["groups"]["inlet"], 0);
    EXPECT_EQ(patch(j, "filled first"), Json());
}

TEST_F(AutoGroups, are_named_in_table_and_json) {
    const Outcome outcome = weldline({"analyze", input(), "--auto-groups"});
    EXPECT_TRUE(contains(outcome.out, "inlet 18 (filled first)")) << outcome.out;
    EXPECT_TRUE(contains(outcome.err,
                         "taken as inlet by --auto-groups, as patch 'filled first': "
                         "18 faces that fill first"))
        << outcome.err;
    const Json j =
        Json::parse(weldline({"analyze", oneFront(), "--auto-groups", "--json", "-"}).out);
    EXPECT_EQ(patch(j, "filled first")["group"], "inlet");
    EXPECT_EQ(patch(j, "filled first")["faces"], 9);
    EXPECT_EQ(patch(j, "front runs out")["group"], "outlet");
    EXPECT_EQ(j["mesh"]["groups"]["inlet"], 9);
    EXPECT_EQ(j["mesh"]["groups"]["outlet"], 9);
    EXPECT_TRUE(contains(j["remarks"].dump(), "front runs out"));
}

// The result keeps them: what explains it calculates with the same groups.
TEST_F(AutoGroups, are_kept_in_the_result) {
    ASSERT_EQ(weldline({"analyze", input(), "--auto-groups", "-o", at("r.vtu")}).exitCode, 0);
    const Json found =
        Json::parse(weldline({"explain", at("r.vtu"), "--at", "0.5,0.1,0.05", "--json", "-"}).out);
    EXPECT_TRUE(found.contains("pairs")) << found;
    const Json j = Json::parse(weldline({"analyze", input(), "--auto-groups", "--json", "-"}).out);
    ASSERT_GT(j["components"].size(), 0u);
    EXPECT_EQ(j["components"][0]["nearestPatch"]["name"], "filled first");
}

// Patch 7 covers both sides across y; named an inlet, no other is looked for.
TEST_F(AutoGroups, leave_groups_alone_that_have_names) {
    const std::string sides = write("sides.vtu", layerWithOpenSides(12, 3));
    const Outcome all = weldline(
        {"analyze", sides, "--inlet", "7", "--auto-groups", "--outlet", "7|x", "--json", "-"});
    const Json j = Json::parse(all.out);
    EXPECT_EQ(patch(j, "filled first"), Json());
    EXPECT_EQ(patch(j, "7")["faces"], 72);
    EXPECT_TRUE(contains(all.err, "--auto-groups changes nothing")) << all.err;
    const Json taken =
        Json::parse(weldline({"analyze", sides, "--auto-groups", "--json", "-"}).out);
    EXPECT_EQ(patch(taken, "filled first")["faces"], 6);
    EXPECT_EQ(patch(taken, "7")["faces"], 72);
}

}  // namespace

}  // namespace weldline::test
