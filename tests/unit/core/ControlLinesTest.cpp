#include <gtest/gtest.h>

#include <string>

#include "ControlRig.h"

// How one line of the section is cut, searched and replaced.

namespace weldline::test {

using ControlLines = ControlRig;

TEST_F(ControlLines, a_key_counts_anywhere_in_a_line) {
    readLines({"", "", "# my_nGrad_of_today = 9"});
    EXPECT_EQ(calculator.m_nGrad, 9);
}

TEST_F(ControlLines, a_key_counts_only_in_its_case) {
    readLines({"", "", "ngrad = 9", "NGRAD = 9", "n Grad = 9"});
    EXPECT_EQ(settings(), afterDefaults());
}

TEST_F(ControlLines, a_key_without_equals_sign_gives_zero) {
    readLines({"", "", "nGrad 5", "BoundaryAngle", "5 VolumeFilter"});
    EXPECT_EQ(calculator.m_nGrad, 0);
    EXPECT_EQ(calculator.m_BoundaryAngle, 0.0);
    EXPECT_EQ(calculator.m_Volume_Filter, 5.0);  // the whole line is parsed: it begins with 5
}

TEST_F(ControlLines, blanks_around_the_equals_sign_do_not_matter) {
    for (const char* line : {"nGrad=9", "nGrad =9", "nGrad= 9", "nGrad = 9", "nGrad=    9",
                             "nGrad =\t9", "  nGrad\t= \t 9"}) {
        calculator.m_nGrad = 1;
        readLines({"", "", line});
        EXPECT_EQ(calculator.m_nGrad, 9) << line;
    }
}

TEST_F(ControlLines, nothing_after_the_equals_sign_gives_zero) {
    for (const char* line : {"nGrad =", "nGrad = ", "nGrad = ="}) {
        calculator.m_nGrad = 1;
        readLines({"", "", line});
        EXPECT_EQ(calculator.m_nGrad, 0) << line;
    }
}

TEST_F(ControlLines, the_first_equals_sign_counts_even_before_the_key) {
    readLines({"", "", "set = 7 nGrad = 9"});
    EXPECT_EQ(calculator.m_nGrad, 7);
}

// nSmooth_beforeGrad is looked for first and finds "nGrad = 7" behind its "=", which is no number;
// nGrad then finds its own.
TEST_F(ControlLines, later_keys_see_the_replaced_line) {
    readLines({"", "", "nSmooth_beforeGrad = nGrad = 7"});
    EXPECT_EQ(calculator.m_nSmooth_beforeGrad, 0);
    EXPECT_EQ(calculator.m_nGrad, 7);
}

TEST_F(ControlLines, a_key_before_the_first_equals_sign_is_gone_for_later_keys) {
    readLines({"", "", "nGrad = nSmooth_beforeGrad = 7"});
    EXPECT_EQ(calculator.m_nSmooth_beforeGrad, 0);
    EXPECT_EQ(calculator.m_nGrad, 6);
    readLines({"", "", "nSmooth_beforeGrad nGrad = 5"});
    EXPECT_EQ(calculator.m_nSmooth_beforeGrad, 5);
    EXPECT_EQ(calculator.m_nGrad, 6);
}

TEST_F(ControlLines, two_keys_without_equals_sign_are_both_read) {
    readLines({"", "", "nGrad and BoundaryAngle"});
    EXPECT_EQ(calculator.m_nGrad, 0);
    EXPECT_EQ(calculator.m_BoundaryAngle, 0.0);
}

TEST_F(ControlLines, flag_and_method_on_one_line_come_before_the_defaults) {
    readLines({"FlagDebugOutput = 1 WeldlingAngleMethod = 2"});
    Settings expected;
    expected.debug = true;
    expected.method = 2;
    EXPECT_EQ(settings(), expected);
}

TEST_F(ControlLines, truncate_angle_replaces_the_line_like_every_key) {
    readLines({"", "", "TruncateAngle = 120 BoundaryAngle = 30"});
    EXPECT_EQ(calculator.m_TruncateAngle, 179.0);
    EXPECT_EQ(calculator.m_BoundaryAngle, 30.0);

    readLines({"", "", "BoundaryAngle TruncateAngle = 33"});
    EXPECT_EQ(calculator.m_BoundaryAngle, 30.0);
}

TEST_F(ControlLines, key_order_decides_not_line_order) {
    // In order of search: nSmooth_afterGrad takes the text behind the first "=", which is "3 nGrad
    // = 4 ..."; nGrad, VolumeFilter and GradMethodMFT follow in the same way.
    readLines({"", "", "nSmooth_afterGrad = 3 nGrad = 4 VolumeFilter = 5 GradMethodMFT = 1"});
    Settings expected = afterDefaults();
    expected.smoothAfter = 3;
    expected.gradientIterations = 4;
    expected.volumeFilter = 5.0;
    expected.gradientMethod = 1;
    EXPECT_EQ(settings(), expected);
}

TEST_F(ControlLines, crlf_files_read_alike) {
    read(
        "[WeldLinePlotCtrl]\r\nWeldlingAngleMethod = 2\r\nnGrad = 9\r\nBoundaryAngle = 30\r\n"
        "[/WeldLinePlotCtrl]\r\nnGrad = 1\r\n");
    Settings expected;
    expected.method = 2;
    expected.gradientIterations = 9;
    expected.boundaryAngle = 30.0;
    EXPECT_EQ(settings(), expected);
}

TEST_F(ControlLines, keeps_a_line_beyond_254_characters_in_pieces) {
    readLines({"", "", std::string(254, '#') + "nGrad = 9"});
    EXPECT_EQ(calculator.m_nGrad, 9);
    // The "=" of the first piece has nothing to do with the second.
    readLines({"", "", "=" + std::string(253, '#') + "nGrad 8"});
    EXPECT_EQ(calculator.m_nGrad, 0);
}

TEST_F(ControlLines, keeps_a_key_across_two_pieces_unseen) {
    readLines({"", "", std::string(250, '#') + "nGrad = 9"});
    EXPECT_EQ(calculator.m_nGrad, 6);
}

// 245 characters and "nGrad = 1" fill the first piece; the 2 of the 12 begins the second.
TEST_F(ControlLines, keeps_a_value_cut_at_the_end_of_a_piece) {
    readLines({"", "", std::string(245, '#') + "nGrad = 12"});
    EXPECT_EQ(calculator.m_nGrad, 1);
}

TEST_F(ControlLines, pieces_count_as_lines_for_the_defaults) {
    readLines({std::string(300, '#'), "WeldlingAngleMethod = 2"});
    Settings expected = afterDefaults();
    expected.method = 2;
    EXPECT_EQ(settings(), expected);
}

// 253 characters and the newline are one piece; 254 characters leave the newline for the next.
TEST_F(ControlLines, a_line_of_253_characters_is_one_piece_and_one_of_254_is_two) {
    readLines({std::string(253, '#'), "WeldlingAngleMethod = 2"});
    EXPECT_EQ(calculator.m_TruncateAngle, 135.0);
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
    calculator.m_WeldlingAngleMethod = 4;
    readLines({std::string(254, '#'), "WeldlingAngleMethod = 2"});
    EXPECT_EQ(calculator.m_TruncateAngle, 145.0);
    EXPECT_EQ(calculator.m_WeldlingAngleMethod, 2);
}

TEST_F(ControlLines, section_texts_across_two_pieces_are_unseen) {
    read(std::string(250, ' ') + "[WeldLinePlotCtrl]\nnGrad = 9\n");
    EXPECT_EQ(calculator.m_nGrad, 6);
    read("[WeldLinePlotCtrl]\n" + std::string(250, ' ') + "[/WeldLinePlotCtrl]\nnGrad = 9\n");
    EXPECT_EQ(calculator.m_nGrad, 9);
}

TEST_F(ControlLines, a_very_long_file_is_read_to_its_end) {
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "some other setting = " + std::to_string(i) + "\n";
    read(text + section({"", "", "nGrad = 9"}));
    EXPECT_EQ(calculator.m_nGrad, 9);
}

}  // namespace weldline::test
