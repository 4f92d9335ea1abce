// Air that stays between two fronts.

#include <cmath>
#include <nlohmann/json.hpp>

#include "ProgramTest.h"

namespace weldline::test {

namespace {

using Json = nlohmann::json;
using Names = std::vector<std::string>;

class TrappedAirRuns : public ProgramTest {
  protected:
    // Two fronts that meet on the middle plane x = 0.5, where the lower half of the width stays
    // empty in the three cells on either side.
    std::string part() const {
        SampleMesh mesh = plateWithTwoFronts(30, 4, 2);
        for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell) {
            const SampleMesh::Point middle = middleOf(mesh, cell);
            if (std::abs(middle[0] - 0.5) < 0.1 && middle[1] < 0.1)
                mesh.cellArrays[0].values[cell] = 0.0;
        }
        return write("part.vtu", mesh);
    }

    // 24 = 6 x 2 x 2 cells.
    Json summary(const Names& options, const std::string& remark) const {
        Names command{"analyze", part(), "--json", "-"};
        command.insert(command.end(), options.begin(), options.end());
        const Outcome outcome = weldline(command);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_TRUE(contains(outcome.err, "24 cells are not reached by the melt; " + remark))
            << outcome.err;
        const Json result = Json::parse(outcome.out);
        EXPECT_EQ(result["counts"]["reachedCells"], 216);
        EXPECT_EQ(result["counts"]["unreachedCells"], 24);
        return result;
    }
};

}  // namespace

TEST_F(TrappedAirRuns, stay_open_unless_told_otherwise) {
    const Json kept = summary({}, "no weld line is found between them");
    EXPECT_EQ(kept["counts"]["closedCells"], 0);
    for (const Json& line : kept["components"])
        EXPECT_TRUE(line["box"]["low"][1] > 0.0 || line["box"]["low"][0] != 0.5 ||
                    line["box"]["high"][0] != 0.5);
    EXPECT_EQ(summary({"--trapped-air", "keep"}, "no weld")["components"], kept["components"]);
}

TEST_F(TrappedAirRuns, are_closed_on_the_plane_where_the_fronts_would_meet) {
    const Json closed = summary({"--trapped-air", "close"}, "they get a time as if the melt had");
    EXPECT_EQ(closed["counts"]["closedCells"], 24);
    ASSERT_EQ(closed["components"].size(), 1U);
    const Json& line = closed["components"][0];
    EXPECT_EQ(line["nodes"], 15);
    EXPECT_EQ(line["box"]["low"], (Json{0.5, 0.0, 0.0}));
    EXPECT_EQ(line["box"]["high"], (Json{0.5, 0.2, 0.1}));
}

// The second injection fills the gap, so that nothing is left to close.
TEST_F(TrappedAirRuns, keep_what_the_second_injection_brings) {
    SampleMesh mesh = plate(12, 2, 2);
    addCellArray(mesh, "FillTime",
                 [](SampleMesh::Point p) { return p[0] < 0.5 ? p[0] + 0.1 : -1.0; });
    addCellArray(mesh, "Second",
                 [](SampleMesh::Point p) { return p[0] < 0.5 ? -1.0 : 1.1 - p[0]; });
    const std::string file = write("two.vtu", mesh);
    const auto linesOf = [&](const char* gaps) {
        return Json::parse(weldline({"analyze", file, "--bi-field", "Second", "--trapped-air", gaps,
                                     "--json", "-"})
                               .out)["components"];
    };
    EXPECT_EQ(linesOf("keep").size(), 1U);
    EXPECT_EQ(linesOf("close"), linesOf("keep"));
}

TEST_F(TrappedAirRuns, know_two_ways) {
    const Outcome outcome = weldline({"analyze", part(), "--trapped-air", "open"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(linesWith(outcome.err, "--trapped-air"), 1) << outcome.err;
}

}  // namespace weldline::test
