#pragma once

#include <gtest/gtest.h>

#include <iosfwd>
#include <string>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "Rig.h"
#include "TestHost.h"

namespace weldline::test {

// What the control file decides, with the values of a fresh calculator.
struct Settings {
    bool debug = false;
    int method = 4;
    int smoothBefore = 2;
    int smoothAfter = 4;
    int gradientIterations = 6;
    double truncateAngle = 135.0;
    double boundaryAngle = -1.0;
    double gradientFilter = 1.0;
    double volumeFilter = 0.2;
    int gradientMethod = 3;

    bool operator==(const Settings&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Settings& settings);

Settings settingsOf(const CKVR3DWeldLine& calculator);

// The settings after a section that names nothing and lasts two lines or more.
Settings afterDefaults();

// A calculator that knows its solver object and no mesh: enough to read control files.
class ControlRig : public ::testing::Test {
  protected:
    ControlRig();

    void read(const std::string& text);  // a run's reading of a control file with this text
    void readLines(const std::vector<std::string>& lines) { read(section(lines)); }
    Settings settings() const { return settingsOf(calculator); }
    std::vector<std::string> traceLines() const;

    TestHost host;
    CKVR3DWeldLine calculator;
};

}  // namespace weldline::test
