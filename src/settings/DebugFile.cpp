#include "DebugFile.h"

#include <cstddef>
#include <cstdio>
#include <string>

#include "Binding.h"
#include "CKVR3DWeldLine.h"
#include "Trace.h"

namespace weldline::core {

namespace {

// On purpose: as many characters as the ending has are replaced, so that what follows a longer
// "extension" stays; a path without "." stays as it is, and the control file itself is opened.
std::string debugPath(const char* controlPath) {
    const std::string ending = "_KVRWDLineDebug.txt";
    std::string path = controlPath == nullptr ? "" : controlPath;
    const std::size_t dot = path.rfind('.');
    if (dot != std::string::npos) path.replace(dot, ending.size(), ending);
    return path;
}

}  // namespace

void openDebugFile(CKVR3DWeldLine& r) {
    if (!r.m_FlagDebugOutput || !isMaster(r)) return;
    copyPath(debugPath(r.m_pControlFilePath).c_str(), r.m_DebugFileName);
    if (r.m_pDebugFile != nullptr) std::fclose(r.m_pDebugFile);
    r.m_pDebugFile = std::fopen(r.m_DebugFileName, "w");
}

void traceSettings(const CKVR3DWeldLine& r) {
    if (!isTracing(r)) return;
    FILE* file = r.m_pDebugFile;
    std::fprintf(file, "m_WeldlingAngleMethod = %d\n", r.m_WeldlingAngleMethod);
    std::fprintf(file, "m_nSmooth_beforeGrad = %d\n", r.m_nSmooth_beforeGrad);
    std::fprintf(file, "m_nSmooth_afterGrad = %d\n", r.m_nSmooth_afterGrad);
    std::fprintf(file, "m_nGrad = %d\n", r.m_nGrad);
    std::fprintf(file, "m_TruncateAngle = %f\n", r.m_TruncateAngle);
    std::fprintf(file, "m_BoundaryAngle = %f\n", r.m_BoundaryAngle);
    std::fprintf(file, "m_GradValueFilterPara = %f\n", r.m_GradValueFilterPara);
    std::fprintf(file, "m_Volume_Filter = %f\n", r.m_Volume_Filter);
    std::fprintf(file, "m_GradMethodMFT = %d\n", r.m_GradMethodMFT);
}

}  // namespace weldline::core
