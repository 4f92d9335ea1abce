#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "ControlRig.h"

// Where the section of the control file begins and ends, and when the defaults of a method come.

namespace weldline::test {

using ControlSection = ControlRig;

TEST_F(ControlSection, empty_file_changes_nothing) {
    read("");
    EXPECT_EQ(settings(), Settings());
}

TEST_F(ControlSection, file_without_the_section_changes_nothing) {
    read("nGrad = 9\nWeldlingAngleMethod = 2\n[Other]\nBoundaryAngle = 5\n[/Other]\n");
    EXPECT_EQ(settings(), Settings());
    EXPECT_EQ(calculator.m_nDefaultPass, 0);
}

TEST_F(ControlSection, keys_before_and_after_the_section_are_ignored) {
    read("nGrad = 9\n" + section({"", ""}) + "nGrad = 8\nTruncateAngle = 1\n");
    EXPECT_EQ(settings(), afterDefaults());
}

TEST_F(ControlSection, opening_and_counters_are_cleared_by_every_file_that_opens) {
    calculator.m_bMethod40 = 1;
    calculator.m_nDefaultPass = 2;
    read("");
    EXPECT_EQ(calculator.m_bMethod40, 0);
    EXPECT_EQ(calculator.m_nDefaultPass, 0);
}

TEST_F(ControlSection, opening_text_counts_anywhere_in_a_line_and_only_in_its_case) {
    read("  ! see [WeldLinePlotCtrl] here\nnGrad = 9\n\n[/WeldLinePlotCtrl]\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
    read("[weldlineplotctrl]\nnGrad = 3\n[/weldlineplotctrl]\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
}

TEST_F(ControlSection, keys_on_the_opening_line_are_not_read) {
    read("nGrad = 9 [WeldLinePlotCtrl] nGrad = 9\n\n\n[/WeldLinePlotCtrl]\n");
    EXPECT_EQ(settings(), afterDefaults());
}

// The line that opens is not looked at again, so its closing text goes unseen.
TEST_F(ControlSection, closing_text_on_the_opening_line_does_not_close) {
    read("[WeldLinePlotCtrl] [/WeldLinePlotCtrl]\nnGrad = 9\n\n[/WeldLinePlotCtrl]\nnGrad = 2\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
}

TEST_F(ControlSection, opening_text_on_the_closing_line_does_not_open_again) {
    read("[WeldLinePlotCtrl]\n\n[/WeldLinePlotCtrl][WeldLinePlotCtrl]\nnGrad = 9\n");
    EXPECT_EQ(calculator.m_nGrad, 6);
}

TEST_F(ControlSection, a_key_before_the_closing_text_is_read_and_the_section_closes) {
    read("[WeldLinePlotCtrl]\nnGrad = 9 [/WeldLinePlotCtrl]\nnGrad = 2\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
    EXPECT_EQ(calculator.m_nDefaultPass, 1);
}

// "[/WeldLinePlotCtrl] nGrad = 9" has become "9" when the end of the section is looked for.
TEST_F(ControlSection, keeps_reading_when_a_key_has_replaced_the_closing_text) {
    read("[WeldLinePlotCtrl]\n[/WeldLinePlotCtrl] nGrad = 9\nBoundaryAngle = 30\n\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
    EXPECT_EQ(calculator.m_BoundaryAngle, 30.0);
}

TEST_F(ControlSection, a_key_without_equals_sign_on_the_closing_line_leaves_it_closing) {
    read("[WeldLinePlotCtrl]\n[/WeldLinePlotCtrl] nGrad\nBoundaryAngle = 30\n");
    EXPECT_EQ(calculator.m_nGrad, 0);
    EXPECT_EQ(calculator.m_BoundaryAngle, -1.0);
}

TEST_F(ControlSection, empty_section_applies_the_defaults_once_on_its_closing_line) {
    readLines({});
    EXPECT_EQ(settings(), afterDefaults());
    EXPECT_EQ(calculator.m_nDefaultPass, 1);
}

TEST_F(ControlSection, defaults_come_on_the_first_two_lines_whatever_they_contain) {
    readLines({"# first", "", "# third"});
    EXPECT_EQ(settings(), afterDefaults());
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
}

TEST_F(ControlSection, unclosed_section_is_read_to_its_last_line) {
    read("[WeldLinePlotCtrl]\nnGrad = 9\n\nBoundaryAngle = 30\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
    EXPECT_EQ(calculator.m_BoundaryAngle, 30.0);
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
}

TEST_F(ControlSection, unclosed_section_counts_only_lines_that_exist) {
    read("[WeldLinePlotCtrl]\n");
    EXPECT_EQ(settings(), Settings());
    EXPECT_EQ(calculator.m_nDefaultPass, 0);
    read("[WeldLinePlotCtrl]\nnGrad = 9\n");
    EXPECT_EQ(calculator.m_nDefaultPass, 1);
    EXPECT_EQ(calculator.m_nGrad, 9);
}

TEST_F(ControlSection, last_line_needs_no_newline) {
    read("[WeldLinePlotCtrl]\nnGrad = 9");
    EXPECT_EQ(calculator.m_nGrad, 9);
    EXPECT_EQ(calculator.m_nDefaultPass, 1);
    read("[WeldLinePlotCtrl]\nnGrad = 8\n[/WeldLinePlotCtrl]");
    EXPECT_EQ(calculator.m_nGrad, 8);
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
    read("[WeldLinePlotCtrl]");
    EXPECT_EQ(calculator.m_nDefaultPass, 0);
}

TEST_F(ControlSection, second_section_overrides_without_new_defaults) {
    read(section({"WeldlingAngleMethod = 2", "nGrad = 9"}) + "between\n" +
         section({"WeldlingAngleMethod = 3", "nGrad = 8"}));
    Settings expected;
    expected.method = 3;
    expected.gradientIterations = 8;
    EXPECT_EQ(settings(), expected);  // 135.0 and 4: the defaults of method 2
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
}

TEST_F(ControlSection, second_section_gets_the_pass_that_the_first_left) {
    read(section({}) + section({"WeldlingAngleMethod = 2", "nGrad = 9"}));
    Settings expected;
    expected.method = 2;
    expected.gradientIterations = 9;
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
}

TEST_F(ControlSection, method_on_the_first_line_brings_its_defaults) {
    readLines({"WeldlingAngleMethod = 2"});
    Settings expected;
    expected.method = 2;
    EXPECT_EQ(settings(), expected);  // 135.0 and 4
    for (int method : {1, 3, 0, 5, -2}) {
        readLines({"WeldlingAngleMethod = " + std::to_string(method)});
        expected.method = method;
        expected.smoothAfter = 20;
        EXPECT_EQ(settings(), expected);
    }
    readLines({"WeldlingAngleMethod = 4"});
    EXPECT_EQ(settings(), afterDefaults());
}

TEST_F(ControlSection, method_on_the_second_line_brings_its_defaults) {
    readLines({"# comment", "WeldlingAngleMethod = 2"});
    Settings expected;
    expected.method = 2;
    EXPECT_EQ(settings(), expected);
}

TEST_F(ControlSection, keeps_earlier_defaults_for_a_method_on_the_third_line) {
    readLines({"", "", "WeldlingAngleMethod = 2"});
    Settings expected = afterDefaults();
    expected.method = 2;
    EXPECT_EQ(settings(), expected);

    readLines({"WeldlingAngleMethod = 2", "", "WeldlingAngleMethod = 4"});
    EXPECT_EQ(settings(), Settings());  // method 4 with 135.0 and 4
}

TEST_F(ControlSection, method_40_is_method_4_with_fewer_smoothing_passes) {
    readLines({"WeldlingAngleMethod = 40"});
    Settings expected = afterDefaults();
    expected.smoothAfter = 4;
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(calculator.m_bMethod40, 1);
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
}

TEST_F(ControlSection, method_40_is_forgotten_by_the_next_file) {
    readLines({"WeldlingAngleMethod = 40"});
    readLines({"# the method stays 4"});
    EXPECT_EQ(settings(), afterDefaults());
    EXPECT_EQ(calculator.m_bMethod40, 0);
}

TEST_F(ControlSection, the_file_is_closed_after_the_reading) {
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openFiles();
    readLines({"nGrad = 5"});
    EXPECT_EQ(openFiles(), before);
}

// The second line's method brings its own defaults: method 1 has no fewer passes for having
// been 40.
TEST_F(ControlSection, method_40_is_overruled_by_the_second_line) {
    readLines({"WeldlingAngleMethod = 40", "WeldlingAngleMethod = 1"});
    EXPECT_EQ(calculator.m_WeldlingAngleMethod, 1);
    EXPECT_EQ(calculator.m_bMethod40, 1);
    EXPECT_EQ(calculator.m_TruncateAngle, 135.0);
    EXPECT_EQ(calculator.m_nSmooth_afterGrad, 20);
}

TEST_F(ControlSection, keeps_40_when_it_comes_after_the_defaults) {
    readLines({"", "", "WeldlingAngleMethod = 40"});
    Settings expected = afterDefaults();
    expected.method = 40;
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(calculator.m_bMethod40, 0);
}

// Line 1: the defaults, then the keys; line 2: the defaults again, so the keys of line 1 are lost.
TEST_F(ControlSection, keeps_second_pass_over_the_keys_of_the_first_line) {
    readLines({"nSmooth_afterGrad = 9", ""});
    EXPECT_EQ(settings(), afterDefaults());
    readLines({"TruncateAngle = 120", ""});
    EXPECT_EQ(settings(), afterDefaults());
}

TEST_F(ControlSection, keys_on_the_second_line_win_over_the_defaults) {
    readLines({"", "nSmooth_afterGrad = 9"});
    EXPECT_EQ(calculator.m_nSmooth_afterGrad, 9);
    readLines({"", "TruncateAngle = 120"});
    EXPECT_EQ(calculator.m_TruncateAngle, 179.0);
}

TEST_F(ControlSection, a_path_that_is_a_directory_gives_no_lines) {
    std::filesystem::create_directory(host.controlPath());
    const std::string output =
        standardOutputOf([&] { EXPECT_EQ(calculator.readControlFile(), 0); });
    EXPECT_EQ(output, "");
    EXPECT_EQ(settings(), Settings());
}

}  // namespace weldline::test
