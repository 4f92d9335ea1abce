#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "ControlRig.h"

// Where the debug trace file lies, when it is opened, and the settings that it begins with.

namespace weldline::test {

namespace {

// Moves into the directory of the control file for the time of a test, for relative paths.
class InDirectory {
  public:
    explicit InDirectory(const std::filesystem::path& directory)
        : m_former(std::filesystem::current_path()) {
        std::filesystem::current_path(directory);
    }
    InDirectory(const InDirectory&) = delete;
    InDirectory& operator=(const InDirectory&) = delete;
    ~InDirectory() { std::filesystem::current_path(m_former); }

  private:
    std::filesystem::path m_former;
};

const std::string kDefaultSettings =
    "m_WeldlingAngleMethod = 4\n"
    "m_nSmooth_beforeGrad = 2\n"
    "m_nSmooth_afterGrad = 20\n"
    "m_nGrad = 6\n"
    "m_TruncateAngle = 145.000000\n"
    "m_BoundaryAngle = -1.000000\n"
    "m_GradValueFilterPara = 1.000000\n"
    "m_Volume_Filter = 0.200000\n"
    "m_GradMethodMFT = 3\n";

}  // namespace

class DebugFile : public ControlRig {
  protected:
    // Reads a control file that asks for the trace, under a path within the host's directory.
    void traceUnder(const std::string& path) {
        m_path = path;
        calculator.m_pControlFilePath = m_path.c_str();
        TestHost writer;
        writer.setControlPath(m_path);
        writer.setControl(section({"FlagDebugOutput = 1"}));
        calculator.readControlFile();
        std::fflush(nullptr);
    }

    std::filesystem::path directory() const {
        return std::filesystem::path(host.controlPath()).parent_path();
    }

    std::string m_path;
};

TEST_F(DebugFile, is_not_opened_without_the_flag) {
    readLines({"", "", ""});
    EXPECT_EQ(calculator.m_pDebugFile, nullptr);
    EXPECT_FALSE(TestHost::fileExists(host.tracePath()));
}

TEST_F(DebugFile, begins_with_the_settings_in_force) {
    readLines({"FlagDebugOutput = 1"});
    std::fflush(nullptr);
    EXPECT_EQ(TestHost::readFile(host.tracePath()), kDefaultSettings);
    EXPECT_EQ(calculator.m_DebugFileName, host.tracePath());
}

TEST_F(DebugFile, writes_reals_with_six_decimals) {
    readLines({"FlagDebugOutput = 1", "WeldlingAngleMethod = -3", "nSmooth_beforeGrad = -10",
               "nSmooth_afterGrad = 0", "nGrad = 123456", "TruncateAngle = 1",
               "BoundaryAngle = 12.3456789", "GradValueFilterPara = 1e10",
               "VolumeFilter = 0.0000004", "GradMethodMFT = -2.9"});
    std::fflush(nullptr);
    EXPECT_EQ(TestHost::readFile(host.tracePath()),
              "m_WeldlingAngleMethod = -3\n"
              "m_nSmooth_beforeGrad = -10\n"
              "m_nSmooth_afterGrad = 0\n"
              "m_nGrad = 123456\n"
              "m_TruncateAngle = 179.000000\n"
              "m_BoundaryAngle = 12.345679\n"
              "m_GradValueFilterPara = 10000000000.000000\n"
              "m_Volume_Filter = 0.000000\n"
              "m_GradMethodMFT = -2\n");
}

TEST_F(DebugFile, replaces_a_short_ending_whole) {
    const InDirectory inDirectory(directory());
    traceUnder("run1.cmp");
    EXPECT_STREQ(calculator.m_DebugFileName, "run1_KVRWDLineDebug.txt");
    EXPECT_EQ(TestHost::readFile("run1_KVRWDLineDebug.txt"), kDefaultSettings);
}

TEST_F(DebugFile, takes_the_last_dot) {
    const InDirectory inDirectory(directory());
    traceUnder("run1.v2.cmp");
    EXPECT_STREQ(calculator.m_DebugFileName, "run1.v2_KVRWDLineDebug.txt");
    traceUnder("run1.");
    EXPECT_STREQ(calculator.m_DebugFileName, "run1_KVRWDLineDebug.txt");
}

// ".control_of_this_jo" is 19 characters long, the length of the new ending.
TEST_F(DebugFile, keeps_what_follows_the_19_replaced_characters) {
    const InDirectory inDirectory(directory());
    traceUnder("run1.control_of_this_job_2");
    EXPECT_STREQ(calculator.m_DebugFileName, "run1_KVRWDLineDebug.txtb_2");
    EXPECT_EQ(TestHost::readFile("run1_KVRWDLineDebug.txtb_2"), kDefaultSettings);
}

TEST_F(DebugFile, an_ending_of_19_characters_is_replaced_whole) {
    const InDirectory inDirectory(directory());
    traceUnder("run1.control_of_this_jo");
    EXPECT_STREQ(calculator.m_DebugFileName, "run1_KVRWDLineDebug.txt");
}

// The dot of a directory's name counts as well: ".d/run1" goes, and the trace lies beside job.d.
TEST_F(DebugFile, keeps_the_dot_of_a_directory_as_the_last_one) {
    const InDirectory inDirectory(directory());
    std::filesystem::create_directory("job.d");
    traceUnder("job.d/run1");
    EXPECT_STREQ(calculator.m_DebugFileName, "job_KVRWDLineDebug.txt");
    EXPECT_EQ(TestHost::readFile("job_KVRWDLineDebug.txt"), kDefaultSettings);
}

TEST_F(DebugFile, keeps_a_path_without_dot_so_the_trace_replaces_the_control_file) {
    const InDirectory inDirectory(directory());
    traceUnder("control");
    EXPECT_STREQ(calculator.m_DebugFileName, "control");
    EXPECT_EQ(TestHost::readFile("control"), kDefaultSettings);
}

// 1023 characters of name fit. The path names the same file as the directory's run.cmp.
TEST_F(DebugFile, a_longer_path_is_cut_and_terminated) {
    std::string path = directory().string();
    while (path.size() < 1100) path += "/.";
    traceUnder(path + "/run.cmp");
    EXPECT_EQ(std::strlen(calculator.m_DebugFileName), 1023U);
    EXPECT_EQ(calculator.m_DebugFileName, path.substr(0, 1023));
    EXPECT_TRUE(calculator.m_FlagDebugOutput);
    EXPECT_EQ(calculator.m_pReserved1, nullptr);
}

TEST_F(DebugFile, every_run_opens_it_anew_and_empties_it) {
    readLines({"FlagDebugOutput = 1"});
    calculator.setMeshFileType(1);
    readLines({"", ""});
    std::fflush(nullptr);
    EXPECT_EQ(TestHost::readFile(host.tracePath()), kDefaultSettings);
}

TEST_F(DebugFile, a_run_without_control_file_opens_it_anew_and_writes_the_settings) {
    readLines({"FlagDebugOutput = 1"});
    calculator.setMeshFileType(1);
    std::filesystem::remove(host.controlPath());
    standardOutputOf([&] { calculator.readControlFile(); });
    std::fflush(nullptr);
    EXPECT_EQ(TestHost::readFile(host.tracePath()), kDefaultSettings);
}

TEST_F(DebugFile, a_run_with_another_path_leaves_the_former_file_as_it_is) {
    const InDirectory inDirectory(directory());
    traceUnder("run1.cmp");
    calculator.setMeshFileType(1);
    traceUnder("run2.cmp");
    EXPECT_EQ(TestHost::readFile("run1_KVRWDLineDebug.txt"),
              kDefaultSettings + "CKVR3DWeldLine::setMeshFileType\n");
    EXPECT_EQ(TestHost::readFile("run2_KVRWDLineDebug.txt"), kDefaultSettings);
}

TEST_F(DebugFile, a_missing_path_with_the_flag_on_is_survived) {
    readLines({"FlagDebugOutput = 1"});
    calculator.m_pControlFilePath = nullptr;
    standardOutputOf([&] { EXPECT_EQ(calculator.readControlFile(), 0); });
    EXPECT_STREQ(calculator.m_DebugFileName, "");
    EXPECT_EQ(calculator.m_pDebugFile, nullptr);
    calculator.setMeshFileType(1);
}

TEST_F(DebugFile, stays_closed_when_it_cannot_be_opened) {
    std::filesystem::create_directory(host.tracePath());
    readLines({"FlagDebugOutput = 1"});
    EXPECT_TRUE(calculator.m_FlagDebugOutput);
    EXPECT_EQ(calculator.m_pDebugFile, nullptr);
    calculator.setMeshFileType(1);
    EXPECT_EQ(calculator.getMeetingAngle(), nullptr);
}

TEST_F(DebugFile, is_never_opened_by_another_process_than_the_master) {
    host.processNumber = 1;
    readLines({"FlagDebugOutput = 1"});
    EXPECT_TRUE(calculator.m_FlagDebugOutput);
    EXPECT_EQ(calculator.m_pDebugFile, nullptr);
    EXPECT_FALSE(TestHost::fileExists(host.tracePath()));
}

}  // namespace weldline::test
