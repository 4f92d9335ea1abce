// The library's section of the host's run control file:
//
//   [WeldLinePlotCtrl]
//   WeldlingAngleMethod = 4
//   ...
//   [/WeldLinePlotCtrl]
//
// Settings that no line gives keep the values they had. No value is tested for its range.

#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "CKVR3DWeldLine.h"
#include "DebugFile.h"

namespace {

constexpr int kLineBuffer = 255;  // longer lines are read in pieces that count as lines
constexpr int kDefaultPasses = 2;

bool contains(const std::string& line, const char* text) {
    return line.find(text) != std::string::npos;
}

// If the line mentions the key anywhere, a comment included, cuts the line down to what follows the
// first "=". On purpose: the keys tested later see the cut line. Blanks after the "=" may stay:
// atoi and atof skip them, and no key begins with one.
bool takeKey(std::string& line, const char* key) {
    if (!contains(line, key)) return false;
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) line.erase(0, equals + 1);
    return true;
}

void readInteger(std::string& line, const char* key, int& setting) {
    if (takeKey(line, key)) setting = std::atoi(line.c_str());
}

void readReal(std::string& line, const char* key, double& setting) {
    if (takeKey(line, key)) setting = std::atof(line.c_str());
}

// Truncation toward zero; the smallest int for what no int can hold.
int truncated(double value) {
    const bool fits =
        value > static_cast<double>(INT_MIN) - 1.0 && value < static_cast<double>(INT_MAX) + 1.0;
    return fits ? static_cast<int>(value) : INT_MIN;
}

void applyMethodDefaults(CKVR3DWeldLine& r) {
    if (r.m_WeldlingAngleMethod == 40) {
        r.m_bMethod40 = 1;
        r.m_WeldlingAngleMethod = 4;
    }
    const bool isMethod4 = r.m_WeldlingAngleMethod == 4;
    r.m_TruncateAngle = isMethod4 ? 145.0 : 135.0;
    const bool fewPasses = r.m_WeldlingAngleMethod == 2 || (isMethod4 && r.m_bMethod40 == 1);
    r.m_nSmooth_afterGrad = fewPasses ? 4 : 20;
}

// On purpose: the defaults come with the first two section lines of a read, whatever they hold,
// after the method key of the line and before its other keys. A method given later brings none.
void readSectionLine(CKVR3DWeldLine& r, std::string& line) {
    if (takeKey(line, "FlagDebugOutput") && std::atoi(line.c_str()) == 1) {
        r.m_FlagDebugOutput = true;
    }
    readInteger(line, "WeldlingAngleMethod", r.m_WeldlingAngleMethod);
    if (r.m_nDefaultPass < kDefaultPasses) {
        applyMethodDefaults(r);
        ++r.m_nDefaultPass;
    }
    readInteger(line, "nSmooth_beforeGrad", r.m_nSmooth_beforeGrad);
    readInteger(line, "nSmooth_afterGrad", r.m_nSmooth_afterGrad);
    readInteger(line, "nGrad", r.m_nGrad);
    // On purpose: whatever value the line gives.
    if (takeKey(line, "TruncateAngle")) r.m_TruncateAngle = 179.0;
    readReal(line, "BoundaryAngle", r.m_BoundaryAngle);
    readReal(line, "GradValueFilterPara", r.m_GradValueFilterPara);
    readReal(line, "VolumeFilter", r.m_Volume_Filter);
    if (takeKey(line, "GradMethodMFT")) r.m_GradMethodMFT = truncated(std::atof(line.c_str()));
}

struct Close {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, Close>;

File openForReading(const char* path) {
    return File(path == nullptr ? nullptr : std::fopen(path, "r"));
}

// False at the end of the file.
bool readLine(FILE* file, std::string& line) {
    char buffer[kLineBuffer];
    if (std::fgets(buffer, kLineBuffer, file) == nullptr) return false;
    line = buffer;
    return true;
}

// A section that is never closed ends with the file.
void readSection(CKVR3DWeldLine& r, FILE* file) {
    std::string line;
    while (readLine(file, line)) {
        readSectionLine(r, line);
        if (contains(line, "[/WeldLinePlotCtrl]")) return;
    }
}

void readSections(CKVR3DWeldLine& r, FILE* file) {
    std::string line;
    while (readLine(file, line)) {
        if (contains(line, "[WeldLinePlotCtrl]")) readSection(r, file);
    }
}

}  // namespace

int CKVR3DWeldLine::readControlFile() {
    if (const File file = openForReading(m_pControlFilePath)) {
        m_bMethod40 = 0;
        m_nDefaultPass = 0;
        readSections(*this, file.get());
    } else {
        std::printf("Fail to open *.cmp file in WeldLine Calculation! \n");
    }
    weldline::core::openDebugFile(*this);
    weldline::core::traceSettings(*this);
    return 0;
}
