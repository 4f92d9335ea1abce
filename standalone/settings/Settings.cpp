#include "Settings.h"

namespace weldline {

namespace {

std::string line(const char* name, int value) {
    return std::string("m_") + name + " = " + std::to_string(value) + "\n";
}

// std::to_string formats a double with "%f", as the library does.
std::string line(const char* name, double value) {
    return std::string("m_") + name + " = " + std::to_string(value) + "\n";
}

std::string describe(FirstGradient first) {
    switch (first) {
        case FirstGradient::None:
            return "no gradient";
        case FirstGradient::Default:
            return "default gradient";
        case FirstGradient::Upwind:
            return "upwind gradient";
    }
    return {};
}

std::string describe(SecondGradient second) {
    switch (second) {
        case SecondGradient::None:
            return {};
        case SecondGradient::LeastSquaresOrRbf:
            return "; least-squares gradient (RBF on a singular mesh)";
        case SecondGradient::Rbf:
            return "; RBF gradient";
    }
    return {};
}

}  // namespace

std::string settingsTrace(const Settings& s) {
    return line("WeldlingAngleMethod", s.method) + line("nSmooth_beforeGrad", s.smoothBefore) +
           line("nSmooth_afterGrad", s.smoothAfter) + line("nGrad", s.gradientIterations) +
           line("TruncateAngle", s.truncateAngle) + line("BoundaryAngle", s.boundaryAngle) +
           line("GradValueFilterPara", s.gradientFilter) + line("Volume_Filter", s.volumeFilter) +
           line("GradMethodMFT", s.gradientMethod);
}

Stages stagesOf(const Settings& settings) {
    const int angleMethod = settings.method >= 1 && settings.method <= 4 ? settings.method : 0;
    if (settings.method != 4) return {FirstGradient::Default, SecondGradient::None, angleMethod};
    switch (settings.gradientMethod) {
        case 1:
            return {FirstGradient::Default, SecondGradient::None, angleMethod};
        case 2:
            return {FirstGradient::Upwind, SecondGradient::Rbf, angleMethod};
        case 3:
            return {FirstGradient::Upwind, SecondGradient::LeastSquaresOrRbf, angleMethod};
        case 4:
            return {FirstGradient::Upwind, SecondGradient::None, angleMethod};
        default:
            return {FirstGradient::None, SecondGradient::None, angleMethod};
    }
}

std::string describeStages(const Stages& stages) {
    const std::string angle = stages.angleMethod == 0
                                  ? "no meeting angle"
                                  : "angle method " + std::to_string(stages.angleMethod);
    return describe(stages.first) + describe(stages.second) + "; " + angle;
}

}  // namespace weldline
