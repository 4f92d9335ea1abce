#include <gtest/gtest.h>

#include <string>

#include "ControlRig.h"

// Which key fills which setting, how its value is read, and what stays from run to run.

namespace weldline::test {

using ControlValues = ControlRig;

namespace {

constexpr const char* kMissingFile = "Fail to open *.cmp file in WeldLine Calculation! \n";

std::vector<std::string> third(const std::string& line) {
    return {"", "", line};
}

}  // namespace

TEST_F(ControlValues, every_key_fills_its_own_setting) {
    readLines({"WeldlingAngleMethod = 3", "# second", "nSmooth_beforeGrad = 11",
               "nSmooth_afterGrad = 12", "nGrad = 13", "BoundaryAngle = 14.5",
               "GradValueFilterPara = 15.5", "VolumeFilter = 16.5", "GradMethodMFT = 17"});
    Settings expected;
    expected.method = 3;
    expected.smoothBefore = 11;
    expected.smoothAfter = 12;
    expected.gradientIterations = 13;
    expected.boundaryAngle = 14.5;
    expected.gradientFilter = 15.5;
    expected.volumeFilter = 16.5;
    expected.gradientMethod = 17;
    EXPECT_EQ(settings(), expected);
}

TEST_F(ControlValues, nothing_is_clamped) {
    readLines({"", "", "WeldlingAngleMethod = -7", "nSmooth_beforeGrad = -1",
               "nSmooth_afterGrad = -2", "nGrad = -3", "BoundaryAngle = 1000",
               "GradValueFilterPara = -1e300", "VolumeFilter = 0", "GradMethodMFT = -9"});
    Settings expected;
    expected.method = -7;
    expected.smoothBefore = -1;
    expected.smoothAfter = -2;
    expected.gradientIterations = -3;
    expected.truncateAngle = 145.0;
    expected.boundaryAngle = 1000.0;
    expected.gradientFilter = -1.0e300;
    expected.volumeFilter = 0.0;
    expected.gradientMethod = -9;
    EXPECT_EQ(settings(), expected);
}

TEST_F(ControlValues, flag_is_switched_on_by_exactly_1) {
    for (const char* value : {"0", "2", "-1", "11", "true", "", "0.9"}) {
        readLines(third(std::string("FlagDebugOutput = ") + value));
        EXPECT_FALSE(calculator.m_FlagDebugOutput) << value;
    }
    readLines(third("FlagDebugOutput = 1.9 yes"));
    EXPECT_TRUE(calculator.m_FlagDebugOutput);
}

TEST_F(ControlValues, keeps_the_flag_on_for_good) {
    readLines(third("FlagDebugOutput = 1"));
    readLines(third("FlagDebugOutput = 0"));
    EXPECT_TRUE(calculator.m_FlagDebugOutput);
    readLines({});
    EXPECT_TRUE(calculator.m_FlagDebugOutput);
}

TEST_F(ControlValues, keeps_179_for_every_truncate_angle) {
    for (const char* line : {"TruncateAngle = 120", "TruncateAngle = 0", "TruncateAngle",
                             "TruncateAngle = nonsense", "# no TruncateAngle today"}) {
        calculator.m_TruncateAngle = 1.0;
        readLines(third(line));
        EXPECT_EQ(calculator.m_TruncateAngle, 179.0) << line;
    }
}

TEST_F(ControlValues, whole_numbers_end_at_the_first_other_character) {
    const std::pair<const char*, int> cases[] = {{"12abc", 12}, {"3.9", 3}, {"1e2", 1},
                                                 {"-5", -5},    {"+5", 5},  {"abc", 0},
                                                 {"0x10", 0},   {"007", 7}, {"1 2", 1}};
    for (const auto& [text, value] : cases) {
        readLines(third(std::string("nGrad = ") + text));
        EXPECT_EQ(calculator.m_nGrad, value) << text;
    }
}

TEST_F(ControlValues, reals_end_at_the_first_other_character) {
    const std::pair<const char*, double> cases[] = {
        {"30", 30.0}, {"-3.5abc", -3.5}, {"1e2", 100.0}, {".5.5", 0.5},
        {"abc", 0.0}, {"1,5", 1.0},      {"+0.1", 0.1},  {"2.5e", 2.5}};
    for (const auto& [text, value] : cases) {
        readLines(third(std::string("BoundaryAngle = ") + text));
        EXPECT_EQ(calculator.m_BoundaryAngle, value) << text;
        readLines(third(std::string("VolumeFilter = ") + text));
        EXPECT_EQ(calculator.m_Volume_Filter, value) << text;
        readLines(third(std::string("GradValueFilterPara = ") + text));
        EXPECT_EQ(calculator.m_GradValueFilterPara, value) << text;
    }
}

TEST_F(ControlValues, gradient_method_is_a_real_truncated_toward_zero) {
    const std::pair<const char*, int> cases[] = {{"2.9", 2},  {"-2.9", -2}, {"0.99", 0},
                                                 {"-0.9", 0}, {"1e1", 10},  {"4", 4}};
    for (const auto& [text, value] : cases) {
        readLines(third(std::string("GradMethodMFT = ") + text));
        EXPECT_EQ(calculator.m_GradMethodMFT, value) << text;
    }
}

// No such number of a gradient method exists, so whatever is stored must choose none of them.
TEST_F(ControlValues, gradient_method_beyond_whole_numbers_chooses_none) {
    for (const char* text : {"1e99", "-1e99", "2147483648", "-2147483649", "nan", "inf"}) {
        readLines(third(std::string("GradMethodMFT = ") + text));
        const int stored = calculator.m_GradMethodMFT;
        EXPECT_TRUE(stored < 1 || stored > 4) << text << " gave " << stored;
    }
    readLines(third("GradMethodMFT = 2147483647.5"));
    EXPECT_EQ(calculator.m_GradMethodMFT, 2147483647);
    readLines(third("GradMethodMFT = -2147483648.5"));
    EXPECT_EQ(calculator.m_GradMethodMFT, -2147483647 - 1);
    readLines(third("GradMethodMFT = -2147483647"));
    EXPECT_EQ(calculator.m_GradMethodMFT, -2147483647);
}

TEST_F(ControlValues, settings_that_a_file_does_not_give_stay_from_the_last_run) {
    readLines({"WeldlingAngleMethod = 3", "nGrad = 9", "BoundaryAngle = 30",
               "GradValueFilterPara = 2", "VolumeFilter = 0.5", "GradMethodMFT = 1",
               "nSmooth_beforeGrad = 7"});
    const Settings first = settings();
    readLines({"", "", ""});
    EXPECT_EQ(settings(), first);
}

// Only these two have defaults by method, which every file with a section applies anew.
TEST_F(ControlValues, truncation_and_smoothing_after_return_to_the_defaults_at_each_run) {
    readLines({"", "", "TruncateAngle = 1", "nSmooth_afterGrad = 9"});
    readLines({"", "", ""});
    EXPECT_EQ(settings(), afterDefaults());
}

TEST_F(ControlValues, missing_file_is_told_and_keeps_all_settings) {
    readLines({"WeldlingAngleMethod = 40", "nGrad = 9"});
    const Settings before = settings();
    host.setControlPath(host.controlPath() + ".elsewhere.cmp");
    calculator.m_pControlFilePath = host.gv()->m_pControlFilePath;
    const std::string output =
        standardOutputOf([&] { EXPECT_EQ(calculator.readControlFile(), 0); });
    EXPECT_EQ(output, kMissingFile);
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(calculator.m_bMethod40, 1);
    EXPECT_EQ(calculator.m_nDefaultPass, 2);
}

TEST_F(ControlValues, missing_path_is_a_file_that_cannot_be_opened) {
    calculator.m_pControlFilePath = nullptr;
    const std::string output =
        standardOutputOf([&] { EXPECT_EQ(calculator.readControlFile(), 0); });
    EXPECT_EQ(output, kMissingFile);
    EXPECT_EQ(settings(), Settings());
}

TEST_F(ControlValues, empty_path_is_a_file_that_cannot_be_opened) {
    calculator.m_pControlFilePath = "";
    const std::string output =
        standardOutputOf([&] { EXPECT_EQ(calculator.readControlFile(), 0); });
    EXPECT_EQ(output, kMissingFile);
    EXPECT_EQ(settings(), Settings());
}

TEST_F(ControlValues, every_process_reads_the_file) {
    host.processNumber = 3;
    readLines(third("nGrad = 9"));
    EXPECT_EQ(calculator.m_nGrad, 9);
}

}  // namespace weldline::test
