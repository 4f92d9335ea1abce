#include <sstream>

#include "ProgramTest.h"

// The command line: help, version, wrong usage (exit code 2).

namespace weldline::test {

namespace {

class Usage : public ProgramTest {
  protected:
    void expectHelp(const std::vector<std::string>& arguments,
                    const std::vector<std::string>& texts) const {
        const Outcome outcome = weldline(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.err, "");
        for (const std::string& text : texts)
            EXPECT_TRUE(contains(outcome.out, text)) << text << "\n" << outcome.out;
        std::istringstream lines(outcome.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
    }
};

TEST_F(Usage, help_of_the_program_names_commands_examples_and_exit_codes) {
    expectHelp({"--help"}, {"analyze", "info", "settings", "Examples:",
                            "weldline analyze part.vtu -o result.vtu", "Exit codes:", "0 done",
                            "1 failed", "2 wrong usage", "3 unusable input"});
}

TEST_F(Usage, help_of_analyze_has_examples_and_every_option) {
    expectHelp({"analyze", "--help"},
               {"Examples:",
                "weldline analyze case.foam -o out/case.vtu --json out/case.json",
                "Exit codes:",
                "--output",
                "--json",
                "--field",
                "--time",
                "--control",
                "--set",
                "--inlet",
                "--outlet",
                "--symmetry",
                "--auto-groups",
                "--method",
                "--gradient",
                "--gradient-set",
                "--bi-field",
                "--mesh-file-type",
                "--cell-state",
                "--trapped-air",
                "FlagDebugOutput=1"});
}

TEST_F(Usage, help_of_analyze_tells_of_units) {
    expectHelp({"analyze", "--help"}, {"--scale", "FACTOR"});
}

TEST_F(Usage, help_of_filltime_has_examples_and_every_option) {
    expectHelp({"filltime", "--help"}, {"Examples:", "weldline filltime case -o filltime.vtu",
                                        "--field", "--level", "Exit codes:"});
}

TEST_F(Usage, help_of_check_has_examples_and_every_option) {
    expectHelp({"check", "--help"}, {"Examples:", "weldline check part.vtu", "--field", "--json",
                                     "--time", "--inlet", "--outlet", "Exit codes:"});
}

TEST_F(Usage, help_of_info_has_examples) {
    expectHelp({"info", "--help"}, {"Examples:", "weldline info case.foam", "Exit codes:"});
}

TEST_F(Usage, help_of_settings_has_examples) {
    expectHelp({"settings", "--help"},
               {"Examples:", "weldline settings --check run.cmp", "Exit codes:"});
}

TEST_F(Usage, version_is_one_line) {
    const Outcome outcome = weldline({"--version"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out, "weldline " WELDLINE_VERSION "\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Usage, missing_command) {
    expectError(weldline({}), 2, {"weldline --help"});
}

TEST_F(Usage, unknown_command) {
    expectError(weldline({"analyse"}), 2, {"analyse", "weldline --help"});
}

TEST_F(Usage, unknown_option) {
    expectError(weldline({"analyze", "part.vtu", "--feild", "x"}), 2,
                {"--feild", "weldline analyze --help"});
}

TEST_F(Usage, missing_input) {
    expectError(weldline({"analyze"}), 2, {"INPUT", "weldline analyze --help"});
}

TEST_F(Usage, option_without_its_value) {
    expectError(weldline({"info", "part.vtu", "--time"}), 2, {"--time"});
}

TEST_F(Usage, empty_value) {
    expectError(weldline({"analyze", "part.vtu", "--field", ""}), 2, {"--field", "empty"});
}

TEST_F(Usage, time_that_is_no_number) {
    expectError(weldline({"analyze", "part.vtu", "--time", "noon"}), 2,
                {"--time", "noon", "latest"});
}

TEST_F(Usage, method_that_does_not_exist) {
    expectError(weldline({"analyze", "part.vtu", "--method", "5"}), 2, {"--method", "5", "40"});
}

TEST_F(Usage, gradient_that_does_not_exist) {
    expectError(weldline({"analyze", "part.vtu", "--gradient", "exact"}), 2,
                {"--gradient", "exact", "upwind"});
}

TEST_F(Usage, largest_angle_out_of_range) {
    expectError(weldline({"analyze", "part.vtu", "--limit", "181"}), 2, {"--limit", "180"});
}

TEST_F(Usage, unknown_setting_names_the_known_ones) {
    expectError(weldline({"analyze", "part.vtu", "--set", "nSmooth=3"}), 2,
                {"nSmooth", "nSmooth_beforeGrad", "GradMethodMFT"});
}

TEST_F(Usage, setting_with_a_value_that_means_nothing) {
    expectError(weldline({"analyze", "part.vtu", "--set", "nGrad=many"}), 2, {"nGrad", "many"});
}

TEST_F(Usage, setting_given_twice_by_option_and_key) {
    expectError(
        weldline({"analyze", "part.vtu", "--method", "2", "--set", "WeldlingAngleMethod=1"}), 2,
        {"WeldlingAngleMethod", "twice"});
}

TEST_F(Usage, control_file_and_settings_exclude_each_other) {
    for (const std::vector<std::string>& other :
         {std::vector<std::string>{"--set", "nGrad=3"}, {"--method", "2"}, {"--gradient", "rbf"}}) {
        std::vector<std::string> arguments{"analyze", "part.vtu", "--control", "run.cmp"};
        arguments.insert(arguments.end(), other.begin(), other.end());
        expectError(weldline(arguments), 2, {"--control", other.front()});
    }
}

TEST_F(Usage, pattern_that_is_no_regular_expression) {
    const std::string input = write("part.vtu", plateWithTwoFronts(4, 1, 2));
    expectError(weldline({"analyze", input, "--inlet", "(gate"}), 2, {"(gate"});
}

TEST_F(Usage, a_setting_does_not_swallow_the_input) {
    const std::string input = write("part.vtu", plateWithTwoFronts(4, 1, 2));
    EXPECT_EQ(weldline({"analyze", "--set", "nGrad=3", input}).exitCode, 0);
}

TEST_F(Usage, an_input_that_looks_like_an_option) {
    expectError(weldline({"info", "--", "--part.vtu"}), 3, {"--part.vtu"});
}

}  // namespace

}  // namespace weldline::test
