#include <array>
#include <cstdio>

#include "ControlSection.h"
#include "base/Errors.h"

namespace weldline {

namespace {

std::string exact(double value) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.17g", value);
    return buffer.data();
}

}  // namespace

// The limit of the angle has no key of its own but for 179: it comes with the method that stands on
// the first two lines, and a method on a later line leaves it alone.
std::string sectionFromSettings(const Settings& s) {
    constexpr double limitOfMethod4 = 145.0;
    constexpr double limitByKey = 179.0;
    const std::string limitBringer = s.truncateAngle == limitOfMethod4
                                         ? "WeldlingAngleMethod = 4\n"
                                         : "WeldlingAngleMethod = 2\n";
    std::string text = "[WeldLinePlotCtrl]\n" + limitBringer + limitBringer;
    const auto add = [&](const char* key, const std::string& value) {
        text += std::string(key) + " = " + value + "\n";
    };
    add("WeldlingAngleMethod", std::to_string(s.method));
    add("nSmooth_beforeGrad", std::to_string(s.smoothBefore));
    add("nSmooth_afterGrad", std::to_string(s.smoothAfter));
    add("nGrad", std::to_string(s.gradientIterations));
    if (s.truncateAngle == limitByKey) add("TruncateAngle", exact(limitByKey));
    add("BoundaryAngle", exact(s.boundaryAngle));
    add("GradValueFilterPara", exact(s.gradientFilter));
    add("VolumeFilter", exact(s.volumeFilter));
    add("GradMethodMFT", std::to_string(s.gradientMethod));
    text += "[/WeldLinePlotCtrl]\n";
    Settings expected = s;
    expected.debugOutput = false;
    if (!(readControlText(text).settings == expected))
        throw InputError("no control file brings about a limit of " + exact(s.truncateAngle) +
                         " degrees and these settings");
    return text;
}

}  // namespace weldline
