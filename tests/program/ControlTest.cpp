#include "ProgramTest.h"

// Where the settings of a run come from and where they are kept.

namespace weldline::test {

namespace {

using Names = std::vector<std::string>;

constexpr const char* method2 =
    "[WeldLinePlotCtrl]\nWeldlingAngleMethod = 2\n[/WeldLinePlotCtrl]\n";

class Control : public ProgramTest {
  protected:
    std::string input() const { return write("part.vtu", plateWithTwoFronts(10, 2, 2)); }

    // A run with a result and further options.
    Outcome run(const Names& options) const {
        Names arguments{"analyze", input(), "-o", at("result.vtu")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return weldline(arguments);
    }
};

TEST_F(Control, is_kept_beside_the_result) {
    ASSERT_EQ(run({"--set", "nGrad=3", "--method", "2"}).exitCode, 0);
    EXPECT_EQ(entries(), (Names{"part.vtu", "result.cmp", "result.vtu"}));
    const std::string text = read(at("result.cmp"));
    EXPECT_TRUE(contains(text,
                         "[WeldLinePlotCtrl]\nWeldlingAngleMethod = 2\nnGrad = 3\n"
                         "[/WeldLinePlotCtrl]\n"))
        << text;
}

TEST_F(Control, that_is_kept_repeats_the_result) {
    ASSERT_EQ(run({"--set", "nSmooth_afterGrad=2", "--method", "3"}).exitCode, 0);
    const std::string first = read(at("result.vtu"));
    const Outcome second =
        weldline({"analyze", at("part.vtu"), "-o", at("again.vtu"), "--control", at("result.cmp")});
    ASSERT_EQ(second.exitCode, 0) << second.err;
    EXPECT_EQ(read(at("again.vtu")), first);
    EXPECT_EQ(entries(), (Names{"again.vtu", "part.vtu", "result.cmp", "result.vtu"}));
}

TEST_F(Control, of_an_earlier_run_is_replaced) {
    ASSERT_EQ(run({"--method", "2"}).exitCode, 0);
    ASSERT_EQ(run({"--method", "1"}).exitCode, 0);
    EXPECT_TRUE(contains(read(at("result.cmp")), "WeldlingAngleMethod = 1\n"));
}

TEST_F(Control, of_somebody_else_is_never_replaced) {
    write("result.cmp", std::string(method2));
    expectError(run({}), 3, {"result.cmp", "not written by weldline", "--control"});
    EXPECT_EQ(read(at("result.cmp")), method2);
    EXPECT_EQ(entries(), (Names{"part.vtu", "result.cmp"}));
}

TEST_F(Control, beside_the_result_may_be_used_by_name) {
    const std::string control = write("result.cmp", std::string(method2));
    const Outcome outcome = run({"--control", control});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "WeldlingAngleMethod=2"));
    EXPECT_EQ(read(control), method2);
}

TEST_F(Control, without_a_result_leaves_no_file) {
    const Outcome outcome = weldline({"analyze", input(), "--method", "2"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(entries(), Names{"part.vtu"});
    EXPECT_TRUE(temporaries().empty());
}

TEST_F(Control, without_a_dot_in_its_name_is_refused) {
    const std::string control = write("control", std::string(method2));
    expectError(run({"--control", control}), 2, {"control", "needs a '.'", "control.cmp"});
    EXPECT_EQ(read(control), method2);
}

TEST_F(Control, with_a_dot_in_its_folder_only_is_refused) {
    std::filesystem::create_directory(at("run.1"));
    expectError(run({"--control", write("run.1/control", std::string(method2))}), 2,
                {"run.1/control", "needs a '.'"});
}

TEST_F(Control, that_is_missing) {
    expectError(run({"--control", at("missing.cmp")}), 3, {"missing.cmp", "No such file"});
}

TEST_F(Control, that_is_a_folder) {
    std::filesystem::create_directory(at("run.cmp"));
    expectError(run({"--control", at("run.cmp")}), 3, {"run.cmp", "folder"});
}

TEST_F(Control, with_a_method_that_calculates_nothing) {
    expectError(run({"--control", write("run.cmp", std::string("[WeldLinePlotCtrl]\n"
                                                               "WeldlingAngleMethod = 5\n"
                                                               "[/WeldLinePlotCtrl]\n"))}),
                3, {"run.cmp", "WeldlingAngleMethod is 5", "1, 2, 3, 4 or 40"});
}

TEST_F(Control, without_a_section_is_noted) {
    const Outcome outcome = run({"--control", write("run.cmp", std::string("nGrad = 3\n"))});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.err, "there is no section [WeldLinePlotCtrl]"), 1) << outcome.err;
}

TEST_F(Control, with_surprising_lines_is_noted) {
    const Outcome outcome =
        run({"--control", write("run.cmp", std::string("[WeldLinePlotCtrl]\n"
                                                       "WeldlingAngleMethod = 2\n"
                                                       "TruncateAngle = 90\n"
                                                       "[/WeldLinePlotCtrl]\n"))});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.err, "1 line does something else than it seems"), 1) << outcome.err;
}

// The trace begins with the nine settings.
TEST_F(Control, keeps_its_trace_beside_itself) {
    ASSERT_EQ(run({"--set", "FlagDebugOutput=1", "--method", "2"}).exitCode, 0);
    EXPECT_EQ(entries(),
              (Names{"part.vtu", "result.cmp", "result.vtu", "result_KVRWDLineDebug.txt"}));
    EXPECT_TRUE(contains(read(at("result_KVRWDLineDebug.txt")), "m_WeldlingAngleMethod = 2\n"));
}

TEST_F(Control, of_the_user_has_its_trace_beside_itself) {
    std::filesystem::create_directory(at("settings"));
    const std::string control = write("settings/run.1.cmp", std::string("[WeldLinePlotCtrl]\n"
                                                                        "FlagDebugOutput = 1\n"
                                                                        "[/WeldLinePlotCtrl]\n"));
    ASSERT_EQ(weldline({"analyze", input(), "--control", control}).exitCode, 0);
    EXPECT_TRUE(contains(read(at("settings/run.1_KVRWDLineDebug.txt")), "m_nGrad = 6\n"));
}

TEST_F(Control, with_a_trace_needs_a_place_for_it) {
    expectError(weldline({"analyze", input(), "--set", "FlagDebugOutput=1"}), 2,
                {"FlagDebugOutput=1", "-o"});
}

TEST_F(Control, options_without_effect_are_noted) {
    const Outcome outcome = run({"--method", "1", "--gradient", "rbf", "--gradient-set", "first"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.err, "--gradient has no effect with method 1"), 1);
    EXPECT_EQ(linesWith(outcome.err, "--gradient-set has no effect"), 1);
}

class SettingsCommand : public ProgramTest {};

TEST_F(SettingsCommand, prints_a_control_file_that_means_the_defaults) {
    const Outcome printed = weldline({"settings"});
    ASSERT_EQ(printed.exitCode, 0);
    EXPECT_EQ(printed.err, "");
    const std::string input = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    const std::string control = write("run.cmp", printed.out);
    const Outcome checked = weldline({"settings", "--check", control});
    EXPECT_EQ(checked.exitCode, 0);
    EXPECT_FALSE(contains(checked.out, " !")) << checked.out;

    ASSERT_EQ(weldline({"analyze", input, "-o", at("a.vtu")}).exitCode, 0);
    const Outcome run = weldline({"analyze", input, "-o", at("b.vtu"), "--control", control});
    ASSERT_EQ(run.exitCode, 0);
    EXPECT_EQ(linesWith(run.err, "run.cmp"), 0) << run.err;
    EXPECT_EQ(read(at("a.vtu")), read(at("b.vtu")));
}

TEST_F(SettingsCommand, check_says_what_surprises) {
    const std::string control = write("run.cmp", std::string("nGrad = 1\n"
                                                             "[WeldLinePlotCtrl]\n"
                                                             "nGrad 5\n"
                                                             "TruncateAngle = 120\n"
                                                             "[/WeldLinePlotCtrl]\n"));
    const Outcome outcome = weldline({"settings", "--check", control});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.out, "3 ! nGrad 5"), 1) << outcome.out;
    EXPECT_EQ(linesWith(outcome.out, "4 ! TruncateAngle = 120"), 1) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "nGrad=0")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "TruncateAngle=179")) << outcome.out;
}

TEST_F(SettingsCommand, check_of_a_missing_file) {
    expectError(weldline({"settings", "--check", at("missing.cmp")}), 3, {"missing.cmp"});
}

}  // namespace

}  // namespace weldline::test
