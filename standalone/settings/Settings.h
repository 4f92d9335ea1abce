#pragma once

#include <string>

namespace weldline {

// The settings of a run as the library holds them after it has read its control file. The initial
// values are those of a new handle, before any control file.
struct Settings {
    bool debugOutput = false;      // FlagDebugOutput
    int method = 4;                // WeldlingAngleMethod
    int smoothBefore = 2;          // nSmooth_beforeGrad
    int smoothAfter = 4;           // nSmooth_afterGrad
    int gradientIterations = 6;    // nGrad
    double truncateAngle = 135.0;  // TruncateAngle, degrees
    double boundaryAngle = -1.0;   // BoundaryAngle, degrees; negative: the method's own default
    double gradientFilter = 1.0;   // GradValueFilterPara
    double volumeFilter = 0.2;     // VolumeFilter
    int gradientMethod = 3;        // GradMethodMFT

    bool operator==(const Settings&) const = default;
};

// The nine lines that the library writes into its trace for these settings, one per setting but
// the debug flag: "m_WeldlingAngleMethod = 4\n" ... "m_GradMethodMFT = 3\n".
std::string settingsTrace(const Settings& settings);

// Which stages of the library a combination of settings runs.
enum class FirstGradient { None, Default, Upwind };
enum class SecondGradient {
    None,
    LeastSquaresOrRbf,  // least squares, RBF when some cell of the mesh is singular
    Rbf
};
struct Stages {
    FirstGradient first = FirstGradient::None;
    SecondGradient second = SecondGradient::None;
    int angleMethod = 0;  // 1 to 4; 0: no meeting angle is calculated, all nodes keep 0
};
Stages stagesOf(const Settings& settings);

// The stages in words, one line: "upwind gradient; least-squares gradient (RBF on a singular
// mesh); angle method 4".
std::string describeStages(const Stages& stages);

}  // namespace weldline
