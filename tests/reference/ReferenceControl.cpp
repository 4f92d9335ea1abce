// The control file and the debug trace file.
#include <climits>
#include <cstdlib>

#include "Reference.h"

namespace weldline::reference {

namespace {

constexpr int lineSize = 255;

bool contains(const std::string& line, const char* text) {
    return line.find(text) != std::string::npos;
}

// If the line holds the key, the line becomes the text after its first "=" less one blank.
bool takeKey(std::string& line, const char* key) {
    if (!contains(line, key)) {
        return false;
    }
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) {
        line = line.substr(equals + 1);
        if (!line.empty() && line[0] == ' ') {
            line = line.substr(1);
        }
    }
    return true;
}

// Truncation toward zero; what does not fit an int gives the smallest one.
int truncated(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) {
        return static_cast<int>(value);
    }
    return INT_MIN;
}

}  // namespace

int Reference::readControlFile() {
    std::FILE* file = nullptr;
    if (m_pControlFilePath != nullptr) {
        file = std::fopen(m_pControlFilePath, "r");
    }
    if (file == nullptr) {
        met(Event::controlMissing);
        std::printf("Fail to open *.cmp file in WeldLine Calculation! \n");
    } else {
        m_bMethod40 = 0;
        m_nDefaultPass = 0;
        readLines(file);
        std::fclose(file);
    }
    if (m_FlagDebugOutput) {
        if (isMaster()) {
            openDebugFile();
        }
        traceSettings();
    }
    return 0;
}

void Reference::readLines(std::FILE* file) {
    char buffer[lineSize];
    while (std::fgets(buffer, lineSize, file) != nullptr) {
        if (contains(buffer, "[WeldLinePlotCtrl]")) {
            if (!readSection(file)) {
                met(Event::sectionUnclosed);
                return;
            }
        }
        if (std::feof(file)) {
            return;
        }
    }
}

// Whether the section was closed.
bool Reference::readSection(std::FILE* file) {
    char buffer[lineSize];
    while (std::fgets(buffer, lineSize, file) != nullptr) {
        std::string line = buffer;
        if (takeKey(line, "FlagDebugOutput")) {
            if (std::atoi(line.c_str()) == 1) {
                m_FlagDebugOutput = true;
            }
        }
        if (takeKey(line, "WeldlingAngleMethod")) {
            m_WeldlingAngleMethod = std::atoi(line.c_str());
        }
        if (m_nDefaultPass < 2) {
            applyMethodDefaults();
            m_nDefaultPass = m_nDefaultPass + 1;
        }
        readKeys(line);
        if (contains(line, "[/WeldLinePlotCtrl]")) {
            return true;
        }
    }
    return false;
}

void Reference::applyMethodDefaults() {
    if (m_WeldlingAngleMethod == 2) {
        m_TruncateAngle = 135.0;
        m_nSmooth_afterGrad = 4;
    } else if (m_WeldlingAngleMethod == 4) {
        m_TruncateAngle = 145.0;
        m_nSmooth_afterGrad = m_bMethod40 == 1 ? 4 : 20;
    } else if (m_WeldlingAngleMethod == 40) {
        met(Event::method40);
        m_TruncateAngle = 145.0;
        m_nSmooth_afterGrad = 4;
        m_bMethod40 = 1;
        m_WeldlingAngleMethod = 4;
    } else {
        m_TruncateAngle = 135.0;
        m_nSmooth_afterGrad = 20;
    }
}

void Reference::readKeys(std::string& line) {
    if (takeKey(line, "nSmooth_beforeGrad")) m_nSmooth_beforeGrad = std::atoi(line.c_str());
    if (takeKey(line, "nSmooth_afterGrad")) m_nSmooth_afterGrad = std::atoi(line.c_str());
    if (takeKey(line, "nGrad")) m_nGrad = std::atoi(line.c_str());
    // On purpose: the value on the line is not read.
    if (takeKey(line, "TruncateAngle")) m_TruncateAngle = 179.0;
    if (takeKey(line, "BoundaryAngle")) m_BoundaryAngle = std::atof(line.c_str());
    if (takeKey(line, "GradValueFilterPara")) m_GradValueFilterPara = std::atof(line.c_str());
    if (takeKey(line, "VolumeFilter")) m_Volume_Filter = std::atof(line.c_str());
    if (takeKey(line, "GradMethodMFT")) m_GradMethodMFT = truncated(std::atof(line.c_str()));
}

void Reference::openDebugFile() {
    std::string name = m_pControlFilePath == nullptr ? "" : m_pControlFilePath;
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos) {
        name.replace(dot, 19, "_KVRWDLineDebug.txt");
    }
    m_DebugFileName = name.substr(0, 1023);
    if (m_pDebugFile != nullptr) {
        std::fclose(m_pDebugFile);
    }
    m_pDebugFile = std::fopen(m_DebugFileName.c_str(), "w");
    if (m_pDebugFile != nullptr) {
        met(Event::traceOpened);
    }
}

void Reference::traceSettings() {
    if (m_pDebugFile == nullptr || !isMaster()) {
        return;
    }
    std::fprintf(m_pDebugFile, "m_WeldlingAngleMethod = %d\n", m_WeldlingAngleMethod);
    std::fprintf(m_pDebugFile, "m_nSmooth_beforeGrad = %d\n", m_nSmooth_beforeGrad);
    std::fprintf(m_pDebugFile, "m_nSmooth_afterGrad = %d\n", m_nSmooth_afterGrad);
    std::fprintf(m_pDebugFile, "m_nGrad = %d\n", m_nGrad);
    std::fprintf(m_pDebugFile, "m_TruncateAngle = %f\n", m_TruncateAngle);
    std::fprintf(m_pDebugFile, "m_BoundaryAngle = %f\n", m_BoundaryAngle);
    std::fprintf(m_pDebugFile, "m_GradValueFilterPara = %f\n", m_GradValueFilterPara);
    std::fprintf(m_pDebugFile, "m_Volume_Filter = %f\n", m_Volume_Filter);
    std::fprintf(m_pDebugFile, "m_GradMethodMFT = %d\n", m_GradMethodMFT);
}

}  // namespace weldline::reference
