#include <algorithm>
#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// From phase fractions over time to fill times and weld lines.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

// The phase fraction of a plate with fronts from both ends, which meet at x = 0.5 at time 0.5; the
// front is as wide as 0.2 of time. A crossing of 0.5 between two steps is linear, therefore exact.
double fractionAt(double time, SampleMesh::Point p) {
    const double arrival = std::min(p[0], 1.0 - p[0]);
    return std::clamp(0.5 + (time - arrival) / 0.2, 0.0, 1.0);
}

class FillTimeCommand : public ProgramTest {
  protected:
    // 10 * 2 * 1 cells, whose middles the fronts reach at 0.05, 0.15, ... 0.45.
    std::string series(const std::vector<double>& times, const std::string& name = "alpha.melt") {
        std::string entries;
        for (std::size_t i = 0; i < times.size(); ++i) {
            SampleMesh mesh = plate(10, 2, 1);
            addCellArray(mesh, name, [&](SampleMesh::Point p) { return fractionAt(times[i], p); });
            const std::string file = "step" + std::to_string(i) + ".vtu";
            write(file, mesh);
            entries +=
                "<DataSet timestep=\"" + std::to_string(times[i]) + "\" file=\"" + file + "\"/>\n";
        }
        return write("run.pvd", "<VTKFile type=\"Collection\"><Collection>\n" + entries +
                                    "</Collection></VTKFile>\n");
    }
};

// Steps of 0.1 lie in the middle between arrivals, where the fraction is 0.25 and 0.75.
const std::vector<double> steps{0.0, 0.1, 0.2, 0.3, 0.4, 0.5};

TEST_F(FillTimeCommand, writes_the_arrival_times_and_says_how_it_went) {
    const Outcome outcome = weldline({"filltime", series(steps), "-o", at("out.vtu")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(contains(outcome.out, "alpha.melt, full from 0.5")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "6 from 0 to 0.5, the largest step is 0.1"));
    EXPECT_TRUE(contains(outcome.out, "20 (100.00 %), from 0.05 to 0.45"));
    EXPECT_TRUE(contains(outcome.out, "0 of them full at the first time"));
    EXPECT_TRUE(contains(outcome.out, "0 (0.00 %)"));
    const Json info = Json::parse(weldline({"info", at("out.vtu"), "--json", "-"}).out);
    EXPECT_EQ(info["arrays"][0]["name"], "FillTime");
    EXPECT_EQ(info["arrays"][0]["type"], "Float64");
    EXPECT_NEAR(info["arrays"][0]["minimum"].get<double>(), 0.05, 1e-12);
    EXPECT_NEAR(info["arrays"][0]["maximum"].get<double>(), 0.45, 1e-12);
}

TEST_F(FillTimeCommand, level) {
    // At three quarters the fronts are 0.05 later.
    const Outcome outcome = weldline(
        {"filltime", series({0.0, 0.15, 0.3, 0.45, 0.6}), "-o", at("out.vtu"), "--level", "0.75"});
    EXPECT_TRUE(contains(outcome.out, "full from 0.75")) << outcome.out << outcome.err;
}

TEST_F(FillTimeCommand, analyze_makes_the_same_fill_time_by_itself_and_says_so) {
    const std::string input = series(steps);
    ASSERT_EQ(weldline({"filltime", input, "-o", at("out.vtu")}).exitCode, 0);
    const Outcome made = weldline({"analyze", at("out.vtu"), "--json", "-"});
    const Outcome direct = weldline({"analyze", input, "--json", "-"});
    ASSERT_EQ(direct.exitCode, 0) << direct.err;
    const Json a = Json::parse(made.out);
    const Json b = Json::parse(direct.out);
    EXPECT_GT(b["components"].size(), 0u);
    EXPECT_EQ(a["components"], b["components"]);
    EXPECT_EQ(a["counts"], b["counts"]);
    const std::string remark =
        "the data set holds no fill time; it is made from 'alpha.melt' at 6 times, up to 0.1 apart "
        "(first crossing of 0.5)";
    EXPECT_EQ(b["remarks"][0], remark);
    EXPECT_TRUE(contains(direct.err, remark)) << direct.err;
    EXPECT_FALSE(contains(made.err, "is made from"));
}

TEST_F(FillTimeCommand, never_filled_cells_are_unreached_afterwards) {
    // At 0.35 the two middle cells of each row hold 0.25 and 0.
    const Outcome outcome =
        weldline({"filltime", series({0.0, 0.1, 0.2, 0.3}), "-o", at("out.vtu")});
    EXPECT_TRUE(contains(outcome.out, "12 (60.00 %), from 0.05 to 0.25")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "8 (40.00 %)"));
    const Json j = Json::parse(weldline({"analyze", at("out.vtu"), "--json", "-"}).out);
    EXPECT_EQ(j["counts"]["reachedCells"], 12);
    EXPECT_EQ(j["counts"]["markedCells"], 8);
}

// Full at 0.1 are the cells that the fronts reach at 0.05.
TEST_F(FillTimeCommand, cells_full_at_the_start_count_as_reached) {
    const std::string input = series({0.1, 0.3, 0.5});
    const Outcome outcome = weldline({"filltime", input, "-o", at("out.vtu")});
    EXPECT_TRUE(contains(outcome.out, "4 of them full at the first time")) << outcome.out;
    const Json j = Json::parse(weldline({"analyze", at("out.vtu"), "--json", "-"}).out);
    EXPECT_EQ(j["counts"]["reachedCells"], 20);
    EXPECT_NEAR(j["fillTime"]["earliest"].get<double>(), 0.1, 1e-6);
}

TEST_F(FillTimeCommand, field_by_name) {
    const std::string input = series(steps, "melt");
    expectError(weldline({"filltime", input, "-o", at("out.vtu")}), 3,
                {"run.pvd", "alpha", "--field", "'melt'"});
    EXPECT_EQ(weldline({"filltime", input, "-o", at("out.vtu"), "--field", "melt"}).exitCode, 0);
    expectError(weldline({"filltime", input, "-o", at("no.vtu"), "--field", "beta"}), 3,
                {"run.pvd", "'beta'", "phase fraction", "'melt'"});
    EXPECT_EQ(read(at("no.vtu")), "");
}

TEST_F(FillTimeCommand, input_without_a_series) {
    SampleMesh mesh = plate(4, 1, 1);
    addCellArray(mesh, "alpha.melt", [](SampleMesh::Point) { return 1.0; });
    const std::string input = write("part.vtu", mesh);
    expectError(weldline({"filltime", input, "-o", at("out.vtu")}), 3,
                {"part.vtu", "several times"});
    expectError(weldline({"filltime", at("gone.pvd"), "-o", at("out.vtu")}), 3,
                {"gone.pvd", "no such file"});
}

// The first twentieth of the filling, from 0.05 to 0.07, is that of the two cells at either end,
// each with one face there.
TEST_F(FillTimeCommand, info_proposes_inlets_from_the_series_and_says_so) {
    const std::string input = series(steps);
    const Outcome outcome = weldline({"info", input});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(contains(outcome.out, "4 faces that fill first")) << outcome.out;
    EXPECT_TRUE(
        contains(outcome.out, "Fill time    made from 'alpha.melt' at 6 times, up to 0.1 "));
    const Json info = Json::parse(weldline({"info", input, "--json", "-"}).out);
    ASSERT_FALSE(info["proposed"].empty());
    EXPECT_EQ(info["proposed"][0]["faces"], 4);
    EXPECT_EQ(info["proposedFrom"]["field"], "alpha.melt");
    EXPECT_EQ(info["proposedFrom"]["series"]["times"], 6);
    EXPECT_NEAR(info["proposedFrom"]["series"]["largestStep"].get<double>(), 0.1, 1e-12);
    EXPECT_EQ(info["proposedFrom"]["series"]["level"], 0.5);
    const Outcome run = weldline({"analyze", input, "--auto-groups"});
    EXPECT_TRUE(contains(run.out, "inlet 4 (filled first)")) << run.out;
}

TEST_F(FillTimeCommand, info_shows_its_progress_on_a_terminal) {
    Setting setting;
    setting.terminal = true;
    setting.environment = {{"TERM", "xterm"}};
    const Outcome outcome = weldline({"info", series(steps)}, setting);
    EXPECT_TRUE(contains(outcome.out, "[1/2] reading run.pvd")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "[2/2] fill time from 'alpha.melt': time 6 of 6"));
}

// What the data set holds at the last time is told even so.
TEST_F(FillTimeCommand, info_of_a_series_that_cannot_be_used) {
    const std::string input = series(steps);
    SampleMesh other = plate(5, 2, 1);
    addCellArray(other, "alpha.melt", [](SampleMesh::Point) { return 1.0; });
    write("step2.vtu", other);
    const Outcome outcome = weldline({"info", input});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.err, ""), 1) << outcome.err;
    EXPECT_TRUE(contains(outcome.err, "note: inlets and outlets cannot be proposed: '" + input +
                                          "': the number of cells changes: 10 at time 0.2"))
        << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "20 Hexahedron"));
    EXPECT_FALSE(contains(outcome.out, "Proposal"));
    const Json info = Json::parse(weldline({"info", input, "--json", "-"}).out);
    EXPECT_EQ(info["proposedFrom"], Json());
}

TEST_F(FillTimeCommand, wrong_usage) {
    const std::string input = series(steps);
    expectError(weldline({"filltime", input}), 2, {"--output"});
    expectError(weldline({"filltime", input, "-o", at("out.vtk")}), 2, {"out.vtk", ".vtu"});
    for (const char* level : {"0", "-1", "inf", "nan"})
        expectError(weldline({"filltime", input, "-o", at("out.vtu"), "--level", level}), 2,
                    {"--level"});
    expectError(weldline({"filltime", input, "-o", at("step0.vtu")}), 2, {"step0.vtu", "input"});
}

}  // namespace

}  // namespace weldline::test
