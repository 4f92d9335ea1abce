#include <gtest/gtest.h>

#include <cctype>
#include <random>

#include "BindBoxMesh.h"
#include "bind/Analysis.h"
#include "settings/ControlSection.h"

// The interpretation of control texts against the library itself, which writes its settings into
// its trace when the debug switch is on.

namespace weldline::test {

namespace {

class AgainstLibrary : public ::testing::Test {
  protected:
    // Compares the settings that the library traces for this text with the interpretation.
    void compare(const std::string& text) {
        SCOPED_TRACE(::testing::PrintToString(text));
        HostOptions options;
        options.controlFile = m_folder.write("case" + std::to_string(m_case) + ".cmp", text);
        HostModel model(m_mesh, m_groups, std::vector<float>(m_mesh.cellCount(), 1.0F), options);
        runWeldLine(model);
        const std::string trace = "case" + std::to_string(m_case) + "_KVRWDLineDebug.txt";
        ++m_case;
        const Settings settings = readControlText(text).settings;
        ASSERT_EQ(m_folder.has(trace), settings.debugOutput);
        if (!settings.debugOutput) return;
        const std::string expected = settingsTrace(settings);
        EXPECT_EQ(m_folder.read(trace).substr(0, expected.size()), expected);
    }

    // Switches the trace on in a last section, so that every text can be compared.
    void compareTraced(const std::string& text) {
        compare(text + "\n[WeldLinePlotCtrl]\nFlagDebugOutput = 1\n[/WeldLinePlotCtrl]\n");
    }

    FvMesh m_mesh = boxMesh(2, 2, 2);
    BoundaryGroups m_groups = boxGroups(m_mesh, "IWWWWW");
    TemporaryFolder m_folder;
    int m_case = 0;
};

const std::string open = "[WeldLinePlotCtrl]\n";
const std::string close = "[/WeldLinePlotCtrl]\n";

// Pieces of control texts, chosen to fall over every rule. All numbers stay small: they are numbers
// of passes over the mesh.
std::string randomText(std::mt19937& random) {
    static const std::vector<std::string> parts{"[WeldLinePlotCtrl]",
                                                "[/WeldLinePlotCtrl]",
                                                "[weldlineplotctrl]",
                                                "FlagDebugOutput",
                                                "WeldlingAngleMethod",
                                                "nSmooth_beforeGrad",
                                                "nSmooth_afterGrad",
                                                "nGrad",
                                                "TruncateAngle",
                                                "BoundaryAngle",
                                                "GradValueFilterPara",
                                                "VolumeFilter",
                                                "GradMethodMFT",
                                                " = ",
                                                "=",
                                                "=  ",
                                                " =\t",
                                                "\n",
                                                "\n",
                                                "\r\n",
                                                " ",
                                                "#",
                                                "1",
                                                "2",
                                                "3",
                                                "4",
                                                "40",
                                                "-1",
                                                "2.9",
                                                "0.5",
                                                "1e1",
                                                "abc",
                                                "",
                                                "0x3",
                                                "nan",
                                                "inf",
                                                "7 ",
                                                "+3",
                                                std::string(1, '\0')};
    std::uniform_int_distribution<std::size_t> part(0, parts.size() - 1);
    std::uniform_int_distribution<int> length(1, 60);
    std::string text = random() % 4 == 0 ? "" : open;
    for (int i = length(random); i > 0; --i) {
        // Two numbers in a row would make a large one.
        const std::string& next = parts[part(random)];
        text += next;
        if (!next.empty() && std::isalnum(static_cast<unsigned char>(next.back())) != 0)
            text += random() % 2 == 0 ? " " : "=";
        if (random() % 40 == 0) text += std::string(random() % 300, ' ');
        if (random() % 6 == 0) text += "\n";
    }
    return text;
}

}  // namespace

TEST_F(AgainstLibrary, handwritten_texts) {
    for (const std::string& text : {
             std::string(),
             open + close,
             open + "FlagDebugOutput = 1",
             open + "FlagDebugOutput = 1\n[/WeldLinePlotCtrl]",
             open + "WeldlingAngleMethod = 2\nFlagDebugOutput = 1\n" + close,
             open + "WeldlingAngleMethod = 40\nFlagDebugOutput = 1\n" + close,
             open + "FlagDebugOutput = 1\n\nWeldlingAngleMethod = 1\nTruncateAngle = 90\n" + close,
             open + "FlagDebugOutput = 1\nWeldlingAngleMethod = 99999999999\n" + close,
             open + "FlagDebugOutput = 1\nGradMethodMFT = 1e30\n" + close,
             open + "FlagDebugOutput = 1\nGradMethodMFT = -2147483648.5\n" + close,
             open + "FlagDebugOutput = 1\nGradMethodMFT = 2147483647.5\n" + close,
             open + "FlagDebugOutput=1nGrad=3\n" + close,
             open + "FlagDebugOutput = 1\nnGrad 5\n" + close,
             open + "FlagDebugOutput = 1\n" + std::string(254, ' ') + "nGrad = 3\n" + close,
             open + "FlagDebugOutput = 1\n" + std::string(250, ' ') + "nGrad = 3\n" + close,
             open + std::string(254, 'x') + "\nFlagDebugOutput = 1\nnSmooth_afterGrad=3\n" + close,
             defaultSectionText(),
             sectionFromOptions({"FlagDebugOutput=1", "nGrad=3", "WeldlingAngleMethod=3"}),
         }) {
        compare(text);
        compareTraced(text);
    }
}

TEST_F(AgainstLibrary, random_texts) {
    std::mt19937 random(20);
    for (int i = 0; i < 400 && !HasFailure(); ++i) {
        const std::string text = randomText(random);
        compare(text);
        compareTraced(text);
    }
}

// Text of every setting through every option, as the program writes it.
TEST_F(AgainstLibrary, options) {
    for (const char* method : {"1", "2", "3", "4", "40"})
        for (const char* gradient : {"1", "2", "3", "4"})
            compare(
                sectionFromOptions({"FlagDebugOutput=1", std::string("GradMethodMFT=") + gradient,
                                    std::string("WeldlingAngleMethod=") + method}));
}

}  // namespace weldline::test
