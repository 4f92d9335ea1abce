#include <gtest/gtest.h>

#include "BindBoxMesh.h"
#include "base/Errors.h"
#include "settings/ControlSection.h"

namespace weldline::test {

namespace {

Settings read(const std::string& text, const Settings& before = {}) {
    return readControlText(text, before).settings;
}

Settings inSection(const std::string& lines, const Settings& before = {}) {
    return read("[WeldLinePlotCtrl]\n" + lines + "[/WeldLinePlotCtrl]\n", before);
}

// The effects of the line with this number.
LineEffect effectOf(const std::string& text, int line) {
    for (const LineEffect& effect : readControlText(text).lines)
        if (effect.line == line) return effect;
    return {};
}

bool says(const LineEffect& effect, const std::string& part) {
    for (const std::string& sentence : effect.effects)
        if (sentence.find(part) != std::string::npos) return true;
    return false;
}

const std::string open = "[WeldLinePlotCtrl]\n";
const std::string close = "[/WeldLinePlotCtrl]\n";

}  // namespace

TEST(ControlText, without_a_section_changes_nothing) {
    const ControlReading reading = readControlText("nGrad = 9\n");
    EXPECT_EQ(reading.settings, Settings{});
    EXPECT_FALSE(reading.sectionFound);
    EXPECT_EQ(reading.warnings.size(), 1U);
    EXPECT_TRUE(reading.lines[0].surprising);
}

TEST(ControlText, empty_section_applies_the_defaults_of_method_4) {
    const Settings s = inSection("");
    EXPECT_EQ(s.method, 4);
    EXPECT_EQ(s.truncateAngle, 145.0);
    EXPECT_EQ(s.smoothAfter, 20);
}

TEST(ControlText, method_on_the_first_line_brings_its_defaults) {
    EXPECT_EQ(inSection("WeldlingAngleMethod = 2\n").smoothAfter, 4);
    EXPECT_EQ(inSection("WeldlingAngleMethod = 2\n").truncateAngle, 135.0);
    EXPECT_EQ(inSection("WeldlingAngleMethod = 1\n").smoothAfter, 20);
    EXPECT_EQ(inSection("WeldlingAngleMethod = 1\n").truncateAngle, 135.0);
    const Settings s = inSection("WeldlingAngleMethod = 40\n");
    EXPECT_EQ(s.method, 4);
    EXPECT_EQ(s.smoothAfter, 4);
    EXPECT_EQ(s.truncateAngle, 145.0);
}

TEST(ControlText, keeps_defaults_of_the_earlier_method_for_a_late_method) {
    const std::string text = open + "\n\nWeldlingAngleMethod = 2\n" + close;
    EXPECT_EQ(read(text).method, 2);
    EXPECT_EQ(read(text).smoothAfter, 20);
    EXPECT_EQ(read(text).truncateAngle, 145.0);
    EXPECT_TRUE(effectOf(text, 4).surprising);
    EXPECT_TRUE(says(effectOf(text, 4), "TruncateAngle stays 145"));
}

TEST(ControlText, keeps_second_line_defaults_over_the_first_line) {
    const std::string text = open + "nSmooth_afterGrad = 7\n\n" + close;
    EXPECT_EQ(read(text).smoothAfter, 20);
    EXPECT_TRUE(effectOf(text, 3).surprising);
    EXPECT_TRUE(says(effectOf(text, 3), "lost"));
    EXPECT_EQ(inSection("\nnSmooth_afterGrad = 7\n").smoothAfter, 7);
}

TEST(ControlText, keeps_truncate_angle_at_179) {
    const std::string text = open + "\nTruncateAngle = 120\n" + close;
    EXPECT_EQ(read(text).truncateAngle, 179.0);
    EXPECT_TRUE(effectOf(text, 3).surprising);
    EXPECT_TRUE(says(effectOf(text, 3), "\"120\" is not read"));
    EXPECT_FALSE(effectOf(open + "\nTruncateAngle = 179\n" + close, 3).surprising);
}

TEST(ControlText, keeps_debug_switch_on) {
    EXPECT_TRUE(inSection("FlagDebugOutput = 1\n").debugOutput);
    EXPECT_FALSE(inSection("FlagDebugOutput = 2\n").debugOutput);
    Settings on;
    on.debugOutput = true;
    EXPECT_TRUE(inSection("FlagDebugOutput = 0\n", on).debugOutput);
}

TEST(ControlText, keeps_zero_for_a_key_without_equals) {
    const std::string text = open + "nGrad 5\n" + close;
    EXPECT_EQ(read(text).gradientIterations, 0);
    EXPECT_TRUE(effectOf(text, 2).surprising);
}

TEST(ControlText, keeps_counting_keys_in_comments_and_longer_words) {
    const std::string comment = open + "# nGrad = 9\n" + close;
    EXPECT_EQ(read(comment).gradientIterations, 9);
    EXPECT_TRUE(effectOf(comment, 2).surprising);
    const std::string longer = open + "m_nGradient = 8\n" + close;
    EXPECT_EQ(read(longer).gradientIterations, 8);
    EXPECT_TRUE(effectOf(longer, 2).surprising);
}

TEST(ControlText, numbers_end_at_the_first_unusable_character) {
    const std::string text = open + "\n\nnGrad = 2.9\nVolumeFilter = 0,5\nnGrad = abc\n" + close;
    EXPECT_EQ(inSection("nGrad = 2.9\n").gradientIterations, 2);
    EXPECT_TRUE(effectOf(text, 4).surprising);
    EXPECT_EQ(read(text).volumeFilter, 0.0);
    EXPECT_TRUE(effectOf(text, 5).surprising);
    EXPECT_TRUE(says(effectOf(text, 6), "gives 0"));
}

TEST(ControlText, remark_after_a_value_does_no_harm) {
    const std::string text = open + "nGrad = 5 iterations\r\n" + close;
    EXPECT_EQ(read(text).gradientIterations, 5);
    EXPECT_FALSE(effectOf(text, 2).surprising);
}

TEST(ControlText, gradient_method_is_cut_to_a_whole_number) {
    EXPECT_EQ(inSection("GradMethodMFT = 2.9\n").gradientMethod, 2);
    EXPECT_EQ(inSection("GradMethodMFT = -0.5\n").gradientMethod, 0);
    EXPECT_TRUE(effectOf(open + "GradMethodMFT = 2.9\n" + close, 2).surprising);
}

// The keys are looked for in the order nSmooth_beforeGrad, nSmooth_afterGrad, nGrad, ...
TEST(ControlText, two_keys_in_one_line_depend_on_the_order_of_the_search) {
    const Settings inOrder = inSection("\nnSmooth_beforeGrad = 5 nGrad = 7\n");
    EXPECT_EQ(inOrder.smoothBefore, 5);
    EXPECT_EQ(inOrder.gradientIterations, 7);
    // The cut for nSmooth_beforeGrad takes nGrad away, and its value.
    const std::string text = open + "\nnGrad = 5 nSmooth_beforeGrad = 7\n" + close;
    EXPECT_EQ(read(text).smoothBefore, 5);
    EXPECT_EQ(read(text).gradientIterations, 6);
    EXPECT_TRUE(says(effectOf(text, 3), "nGrad is not seen"));
}

// 250 blanks, "nGrad" over the limit of 254 characters: "...nGra" and "d = 9", no key in either.
TEST(ControlText, long_lines_are_read_in_pieces) {
    const std::string text = open + std::string(250, ' ') + "nGrad = 9\n" + close;
    const ControlReading reading = readControlText(text);
    EXPECT_EQ(reading.settings.gradientIterations, 6);
    ASSERT_EQ(reading.lines.size(), 4U);
    EXPECT_EQ(reading.lines[2].line, 2);
    EXPECT_EQ(reading.lines[2].piece, 2);
    EXPECT_TRUE(reading.lines[2].surprising);
    EXPECT_EQ(reading.lines[3].line, 3);
}

// A first line of 254 characters without its newline: the newline is the second line of the
// section, so a method on the next line comes too late.
TEST(ControlText, keeps_pieces_counting_as_lines_for_the_defaults) {
    const std::string text = open + std::string(254, '#') + "\nWeldlingAngleMethod = 2\n" + close;
    EXPECT_EQ(read(text).truncateAngle, 145.0);
}

TEST(ControlText, unclosed_section_is_read_to_the_end) {
    const ControlReading reading = readControlText(open + "nGrad = 9");
    EXPECT_EQ(reading.settings.gradientIterations, 9);
    EXPECT_TRUE(reading.sectionFound);
    EXPECT_FALSE(reading.sectionClosed);
    EXPECT_EQ(reading.warnings.size(), 1U);
}

TEST(ControlText, keeps_section_open_when_a_key_cuts_the_closing_line) {
    const std::string text = open + "[/WeldLinePlotCtrl] nGrad = 3\nnGrad = 8\n";
    EXPECT_EQ(read(text).gradientIterations, 8);
    EXPECT_TRUE(says(effectOf(text, 2), "does not close"));
    EXPECT_EQ(read(open + "nGrad = 3 [/WeldLinePlotCtrl]\nnGrad = 8\n").gradientIterations, 3);
}

TEST(ControlText, keys_outside_the_section_and_on_its_opening_line_are_ignored) {
    const std::string text = "nGrad = 8\n[WeldLinePlotCtrl] nGrad = 7\n" + close + "nGrad = 9\n";
    EXPECT_EQ(read(text).gradientIterations, 6);
    for (const int line : {1, 2, 4}) EXPECT_TRUE(effectOf(text, line).surprising) << line;
}

TEST(ControlText, keeps_defaults_of_the_first_section_for_a_second_one) {
    const Settings s = read(open + "\n" + close + open + "WeldlingAngleMethod = 2\n" + close);
    EXPECT_EQ(s.method, 2);
    EXPECT_EQ(s.truncateAngle, 145.0);
}

TEST(ControlText, misspelled_names_are_pointed_out) {
    const std::string text = open + "ngrad = 5\nWeldAngle = 3\n[/weldlineplotctrl]\n" + close;
    EXPECT_EQ(read(text).gradientIterations, 6);
    EXPECT_TRUE(says(effectOf(text, 2), "written nGrad"));
    EXPECT_TRUE(says(effectOf(text, 3), "no known key"));
    EXPECT_TRUE(says(effectOf(text, 4), "does not close"));
    EXPECT_TRUE(effectOf("[weldlineplotctrl]\n", 1).surprising);
}

TEST(ControlText, warns_of_settings_that_calculate_nothing) {
    EXPECT_EQ(readControlText(open + "WeldlingAngleMethod = 5\n" + close).warnings.size(), 1U);
    EXPECT_EQ(readControlText(open + "GradMethodMFT = 5\n" + close).warnings.size(), 1U);
}

TEST(ControlText, marks_the_lines_of_the_section) {
    const ControlReading reading = readControlText("a\n" + open + "b\n" + close + "c\n");
    std::vector<bool> in;
    for (const LineEffect& line : reading.lines) in.push_back(line.inSection);
    EXPECT_EQ(in, (std::vector<bool>{false, true, true, true, false}));
    EXPECT_EQ(reading.lines[2].text, "b");
}

TEST(ControlFile, missing_files_and_folders_are_refused_and_empty_ones_read) {
    const TemporaryFolder folder;
    EXPECT_THROW(readControlFile(folder.path("missing.cmp")), InputError);
    EXPECT_THROW(readControlFile(folder.path(".")), InputError);
    EXPECT_EQ(readControlFile(folder.write("empty.cmp", "")).settings, Settings{});
    EXPECT_EQ(
        readControlFile(folder.write("a.cmp", open + "nGrad = 3\n")).settings.gradientIterations,
        3);
}

TEST(DefaultSection, gives_the_settings_of_an_empty_section) {
    const ControlReading reading = readControlText(defaultSectionText());
    EXPECT_EQ(reading.settings, inSection(""));
    EXPECT_TRUE(reading.warnings.empty());
    EXPECT_TRUE(reading.sectionClosed);
    for (const LineEffect& line : reading.lines) EXPECT_FALSE(line.surprising) << line.text;
}

TEST(SectionFromOptions, puts_the_method_first) {
    EXPECT_EQ(sectionFromOptions({"nGrad=3", "WeldlingAngleMethod=2"}),
              open + "WeldlingAngleMethod = 2\nnGrad = 3\n" + close);
    EXPECT_EQ(sectionFromOptions({}), open + "WeldlingAngleMethod = 4\n" + close);
}

TEST(SectionFromOptions, reads_back_as_given) {
    const Settings s = read(sectionFromOptions(
        {"FlagDebugOutput=1", "nSmooth_beforeGrad=1", "nSmooth_afterGrad=3", "nGrad=8",
         "BoundaryAngle=60.5", "GradValueFilterPara=2", "VolumeFilter=0.1", "GradMethodMFT=2",
         "TruncateAngle=179", "WeldlingAngleMethod=40"}));
    EXPECT_EQ(s, (Settings{true, 4, 1, 3, 8, 179.0, 60.5, 2.0, 0.1, 2}));
}

TEST(SectionFromOptions, refuses_what_the_library_would_read_otherwise) {
    for (const char* option : {"nGrad",
                               "ngrad=3",
                               "Grad=3",
                               "=3",
                               "nGrad=",
                               "nGrad=2.9",
                               "nGrad=3x",
                               "nGrad=0",
                               "TruncateAngle=120",
                               "WeldlingAngleMethod=5",
                               "WeldlingAngleMethod=4.0",
                               "GradMethodMFT=0",
                               "GradMethodMFT=2.5",
                               "FlagDebugOutput=2",
                               "VolumeFilter=0,5",
                               "VolumeFilter=nan",
                               "VolumeFilter=1.5",
                               "BoundaryAngle=inf",
                               "nGrad=99999999999999999999",
                               "nGrad=1\nnSmooth_beforeGrad=2"})
        EXPECT_THROW(sectionFromOptions({option}), UsageError) << option;
    EXPECT_THROW(sectionFromOptions({"nGrad=3", "nGrad=4"}), UsageError);
}

TEST(SectionFromOptions, error_names_the_known_keys) {
    try {
        sectionFromOptions({"ngrad=3"});
        FAIL();
    } catch (const UsageError& error) {
        EXPECT_EQ(std::string(error.what()),
                  "setting 'ngrad' is unknown; known are FlagDebugOutput, WeldlingAngleMethod, "
                  "nSmooth_beforeGrad, nSmooth_afterGrad, nGrad, TruncateAngle, BoundaryAngle, "
                  "GradValueFilterPara, VolumeFilter, GradMethodMFT");
    }
}

TEST(Stages, by_method_and_gradient_method) {
    const auto stages = [](int method, int gradient) {
        Settings s;
        s.method = method;
        s.gradientMethod = gradient;
        return describeStages(stagesOf(s));
    };
    EXPECT_EQ(stages(4, 3),
              "upwind gradient; least-squares gradient (RBF on a singular mesh); "
              "angle method 4");
    EXPECT_EQ(stages(4, 2), "upwind gradient; RBF gradient; angle method 4");
    EXPECT_EQ(stages(4, 4), "upwind gradient; angle method 4");
    EXPECT_EQ(stages(4, 1), "default gradient; angle method 4");
    EXPECT_EQ(stages(4, 0), "no gradient; angle method 4");
    EXPECT_EQ(stages(2, 3), "default gradient; angle method 2");
    EXPECT_EQ(stages(5, 3), "default gradient; no meeting angle");
    EXPECT_EQ(stages(40, 3), "default gradient; no meeting angle");
}

}  // namespace weldline::test
