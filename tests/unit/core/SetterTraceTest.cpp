#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Rig.h"

// What the setters, getMeetingAngle and the destructor write into the debug trace, and when.

namespace weldline::test {

namespace {

using Lines = std::vector<std::string>;

// A calculator whose trace file is open and holds only what follows the settings.
class SetterTrace : public ::testing::Test {
  protected:
    SetterTrace() {
        addBox(m_host, 2, 1, 1, 1.0);
        m_host.finish();
        m_calculator->setFlowData(m_host.gv(), m_host.mesh());
    }

    void openTrace() {
        m_host.setControl(section({"FlagDebugOutput = 1"}));
        m_calculator->readControlFile();
    }

    Lines linesAfterSettings() {
        std::fflush(nullptr);
        Lines lines = linesOf(TestHost::readFile(m_host.tracePath()));
        return lines.size() < 9 ? Lines{} : Lines(lines.begin() + 9, lines.end());
    }

    void callEverySetter() {
        int* list[] = {nullptr};
        int numbers[] = {0};
        float values[] = {0.0F};
        m_calculator->setPartitionInterface(m_host.partition());
        m_calculator->setKVRCom(m_host.communication(), m_host.collective());
        m_calculator->setMeshFileType(1);
        m_calculator->setCavityNodeConn(list);
        m_calculator->setWallFace20(list);
        m_calculator->setInletFace20(list);
        m_calculator->setOutletFace20(list);
        m_calculator->setSymmFace20(list);
        m_calculator->setCavityGlobalNode(numbers);
        m_calculator->setMapCTG2ZNL(list);
        m_calculator->setBiIMFlowData(values);
        m_calculator->setFlowData(m_host.gv(), m_host.mesh());
    }

    TestHost m_host;
    std::unique_ptr<CKVR3DWeldLine> m_calculator = std::make_unique<CKVR3DWeldLine>();
};

const Lines kSetterLines{"CKVR3DWeldLine::setPartitionInterface",
                         "CKVR3DWeldLine::setKVRCom",
                         "CKVR3DWeldLine::setMeshFileType",
                         "CKVR3DWeldLine::setCavityNodeConn",
                         "CKVR3DWeldLine::setWallFace20",
                         "CKVR3DWeldLine::setInletFace20",
                         "CKVR3DWeldLine::setOutletFace20",
                         "CKVR3DWeldLine::setSymmFace20",
                         "CKVR3DWeldLine::setCavityGlobalNode",
                         "CKVR3DWeldLine::setMapCTG2ZNL",
                         "CKVR3DWeldLine::setBiIMFlowData",
                         "CKVR3DWeldLine::InitialValue",
                         "CKVR3DWeldLine::setFlowData"};

}  // namespace

TEST_F(SetterTrace, every_setter_writes_its_line) {
    openTrace();
    callEverySetter();
    EXPECT_EQ(linesAfterSettings(), kSetterLines);
}

TEST_F(SetterTrace, nothing_is_written_before_the_control_file_asks_for_it) {
    callEverySetter();
    m_calculator->getMeetingAngle();
    EXPECT_FALSE(TestHost::fileExists(m_host.tracePath()));
}

TEST_F(SetterTrace, the_flag_alone_decides_not_the_open_file) {
    openTrace();
    m_calculator->m_FlagDebugOutput = false;
    callEverySetter();
    m_calculator->getMeetingAngle();
    EXPECT_EQ(linesAfterSettings(), Lines{});
}

TEST_F(SetterTrace, refused_lists_write_no_line) {
    openTrace();
    m_calculator->setCavityNodeConn(nullptr);
    m_calculator->setWallFace20(nullptr);
    m_calculator->setInletFace20(nullptr);
    m_calculator->setOutletFace20(nullptr);
    m_calculator->setSymmFace20(nullptr);
    m_calculator->setCavityGlobalNode(nullptr);
    m_calculator->setMapCTG2ZNL(nullptr);
    EXPECT_EQ(linesAfterSettings(), Lines{});
}

TEST_F(SetterTrace, stored_nulls_write_their_line) {
    openTrace();
    m_calculator->setPartitionInterface(nullptr);
    m_calculator->setKVRCom(nullptr, nullptr);
    m_calculator->setBiIMFlowData(nullptr);
    EXPECT_EQ(linesAfterSettings(),
              (Lines{"CKVR3DWeldLine::setPartitionInterface", "CKVR3DWeldLine::setKVRCom",
                     "CKVR3DWeldLine::setBiIMFlowData"}));
}

TEST_F(SetterTrace, lines_are_dropped_while_no_file_is_open) {
    m_calculator->m_FlagDebugOutput = true;
    callEverySetter();
    m_calculator->getMeetingAngle();
    EXPECT_FALSE(TestHost::fileExists(m_host.tracePath()));
}

// The setters ask for the flag only, getMeetingAngle for the master process as well.
TEST_F(SetterTrace, keeps_setters_writing_on_any_process) {
    openTrace();
    m_host.processNumber = 1;
    callEverySetter();
    m_calculator->getMeetingAngle();
    EXPECT_EQ(linesAfterSettings(), kSetterLines);
}

TEST_F(SetterTrace, get_meeting_angle_writes_on_the_master_process) {
    openTrace();
    m_calculator->getMeetingAngle();
    m_host.processNumber = -1;
    m_calculator->getMeetingAngle();
    m_host.processNumber = 0;
    m_calculator->getMeetingAngle();
    EXPECT_EQ(linesAfterSettings(),
              (Lines{"calWeldLine: getMeetingAngle", "calWeldLine: getMeetingAngle"}));
}

TEST_F(SetterTrace, destructor_writes_the_last_line_and_closes_the_file) {
    openTrace();
    m_calculator.reset();
    const std::string text = TestHost::readFile(m_host.tracePath());
    const std::string last = "calWeldLine: ~CKVR3DWeldLine...Done!!\n";
    ASSERT_GT(text.size(), last.size());
    EXPECT_EQ(linesAfterSettings(), (Lines{"calWeldLine: ~CKVR3DWeldLine...Done!!"}));
    EXPECT_EQ(text.substr(text.size() - last.size()), last);
}

TEST_F(SetterTrace, destructor_is_silent_without_flag_or_off_the_master_process) {
    openTrace();
    m_calculator->m_FlagDebugOutput = false;
    m_calculator.reset();
    EXPECT_EQ(linesAfterSettings(), Lines{});

    m_calculator = std::make_unique<CKVR3DWeldLine>();
    m_calculator->setFlowData(m_host.gv(), m_host.mesh());
    openTrace();
    m_host.processNumber = 2;
    m_calculator.reset();
    EXPECT_EQ(linesAfterSettings(), Lines{});
}

TEST_F(SetterTrace, destructor_without_open_file_writes_nothing) {
    m_calculator->m_FlagDebugOutput = true;
    m_calculator.reset();
    EXPECT_FALSE(TestHost::fileExists(m_host.tracePath()));
}

}  // namespace weldline::test
