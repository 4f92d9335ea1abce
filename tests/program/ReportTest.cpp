#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "ProgramTest.h"

namespace weldline::test {

namespace {

using Json = nlohmann::json;
using Names = std::vector<std::string>;

class Report : public ProgramTest {
  protected:
    std::string result() const {
        const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
        EXPECT_EQ(weldline({"analyze", part, "-o", at("result.vtu")}).exitCode, 0);
        return at("result.vtu");
    }

    // The document in the page.
    static Json dataOf(const std::string& page) {
        const std::string begin = "id=\"report-data\">";
        const std::size_t at = page.find(begin);
        EXPECT_NE(at, std::string::npos);
        const std::size_t from = at + begin.size();
        return Json::parse(page.substr(from, page.find("</script>", from) - from));
    }

    static std::size_t bytesOf(const Json& base64) {
        const auto text = base64.get<std::string>();
        return text.size() / 4 * 3 -
               static_cast<std::size_t>(std::count(text.begin(), text.end(), '='));
    }
};

}  // namespace

TEST_F(Report, holds_skin_lines_and_settings) {
    const Outcome outcome = weldline({"report", result(), "-o", at("report.html")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    const Json data = dataOf(read(at("report.html")));
    EXPECT_EQ(data["version"], 1);
    EXPECT_EQ(data["title"], "result.vtu");
    // Two triangles of three 4-byte numbers for each of 2 * (10 * 2 + 10 * 2 + 2 * 2) faces; all
    // 11 * 3 * 3 points but the 9 inside, 12 bytes each.
    EXPECT_EQ(bytesOf(data["skin"]["triangles"]), 88U * 2 * 12);
    EXPECT_EQ(bytesOf(data["skin"]["points"]), (99U - 9) * 12);
    EXPECT_EQ(bytesOf(data["skin"]["time"]), (99U - 9) * 4);
    ASSERT_EQ(data["lines"].size(), 1U);
    EXPECT_EQ(data["lines"][0]["class"], "weld");
    EXPECT_NEAR(data["lines"][0]["length"].get<double>(), 0.2, 0.01);
    EXPECT_EQ(data["lines"][0]["polylines"].size(), 1U);
    EXPECT_EQ(data["histogram"]["counts"][0], 9);
    EXPECT_EQ(data["histogram"]["edges"].size(), 37U);
    bool hasMethod = false;
    for (const Json& setting : data["settings"])
        hasMethod = hasMethod || setting == Json{"WeldlingAngleMethod", "4"};
    EXPECT_TRUE(hasMethod);
}

TEST_F(Report, data_cannot_end_its_element) {
    EXPECT_EQ(weldline({"report", result(), "-o", at("report.html"), "--title", "</script><b>x"})
                  .exitCode,
              0);
    const std::string page = read(at("report.html"));
    EXPECT_FALSE(contains(page, "</script><b>x"));
    EXPECT_EQ(dataOf(page)["title"], "</script><b>x");
}

TEST_F(Report, takes_the_limits_of_the_user) {
    EXPECT_EQ(weldline({"report", result(), "-o", at("r.html"), "--min-nodes", "10"}).exitCode, 0);
    const Json data = dataOf(read(at("r.html")));
    EXPECT_EQ(data["lines"], Json::array());
    EXPECT_EQ(data["dropped"]["lines"], 1);
}

// Formation times of cells that the melt never reached belong to the run, not to the skin.
TEST_F(Report, shows_the_lines_of_a_run_that_closed_trapped_air) {
    SampleMesh mesh = plateWithTwoFronts(20, 4, 2);
    for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell)
        if (std::abs(middleOf(mesh, cell)[0] - 0.5) < 0.1) mesh.cellArrays[0].values[cell] = 0.0;
    const std::string part = write("part.vtu", mesh);
    const Names run{"analyze",       part,    "-o",     at("result.vtu"),
                    "--trapped-air", "close", "--json", "-"};
    const Json line = Json::parse(weldline(run).out)["components"][0];
    EXPECT_GT(line["formationTime"]["last"], 0.45);
    ASSERT_EQ(weldline({"report", at("result.vtu"), "-o", at("r.html")}).exitCode, 0);
    const Json data = dataOf(read(at("r.html")));
    ASSERT_EQ(data["lines"].size(), 1U);
    for (const char* value : {"length", "meanAngle", "centroid"})
        EXPECT_EQ(data["lines"][0][value], line[value]) << value;
    EXPECT_EQ(data["lines"][0]["firstTime"], line["formationTime"]["first"]);
    EXPECT_EQ(data["lines"][0]["lastTime"], line["formationTime"]["last"]);
    EXPECT_TRUE(contains(data["remarks"][0].get<std::string>(), "forecast"));
}

TEST_F(Report, of_something_else_than_a_result) {
    const std::string part = write("plain.vtu", plateWithTwoFronts(4, 1, 1));
    expectError(weldline({"report", part, "-o", at("r.html")}), 3,
                {"plain.vtu", "MeetingAngle", "weldline analyze"});
    EXPECT_EQ(entries(), (Names{"plain.vtu"}));
}

TEST_F(Report, needs_a_page_for_output) {
    expectError(weldline({"report", result(), "-o", at("r.pdf")}), 2, {"r.pdf", ".html"});
    expectError(weldline({"report", at("result.vtu")}), 2, {"--output"});
    expectError(weldline({"report", at("none.vtu"), "-o", at("r.html")}), 3, {"none.vtu"});
}

TEST_F(Report, result_tells_of_its_run) {
    const std::string text = read(result());
    EXPECT_TRUE(contains(text, "WeldLineRun"));
}

}  // namespace weldline::test
