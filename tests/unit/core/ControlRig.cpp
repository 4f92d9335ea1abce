#include "ControlRig.h"

#include <cstdio>
#include <ostream>

namespace weldline::test {

std::ostream& operator<<(std::ostream& stream, const Settings& s) {
    return stream << "debug " << s.debug << ", method " << s.method << ", smoothing "
                  << s.smoothBefore << "/" << s.smoothAfter << ", iterations "
                  << s.gradientIterations << ", truncate " << s.truncateAngle << ", boundary "
                  << s.boundaryAngle << ", filters " << s.gradientFilter << "/" << s.volumeFilter
                  << ", gradient method " << s.gradientMethod;
}

Settings settingsOf(const CKVR3DWeldLine& c) {
    return {c.m_FlagDebugOutput,
            c.m_WeldlingAngleMethod,
            c.m_nSmooth_beforeGrad,
            c.m_nSmooth_afterGrad,
            c.m_nGrad,
            c.m_TruncateAngle,
            c.m_BoundaryAngle,
            c.m_GradValueFilterPara,
            c.m_Volume_Filter,
            c.m_GradMethodMFT};
}

Settings afterDefaults() {
    Settings settings;
    settings.truncateAngle = 145.0;
    settings.smoothAfter = 20;
    return settings;
}

ControlRig::ControlRig() {
    calculator.m_pGV = host.gv();
    calculator.m_pControlFilePath = host.gv()->m_pControlFilePath;
}

void ControlRig::read(const std::string& text) {
    host.setControl(text);
    const std::string output =
        standardOutputOf([&] { EXPECT_EQ(calculator.readControlFile(), 0); });
    EXPECT_EQ(output, "");
}

std::vector<std::string> ControlRig::traceLines() const {
    std::fflush(nullptr);
    return linesOf(TestHost::readFile(host.tracePath()));
}

}  // namespace weldline::test
