#include <filesystem>

#include "Player.h"

namespace weldline::reference {

CasePaths::CasePaths(const CaseParameters& parameters, const std::string& side)
    : folder(side), noControlPath(parameters.path == 4) {
    switch (parameters.path) {
        case 1:  // Without a dot the trace replaces the control file.
            control = folder + "/run";
            trace = control;
            break;
        case 2:  // The last dot stands in the folder's name.
            control = folder + "/job.d/run";
            trace = folder + "/job_KVRWDLineDebug.txt";
            break;
        case 3:  // Only nineteen characters from the last dot on are replaced.
            control = folder + "/run.control-file-of-this-run";
            trace = folder + "/run_KVRWDLineDebug.txtthis-run";
            break;
        case 6:
        case 7:
            for (int i = parameters.path == 6 ? 3 : 5; i > 0; --i) {
                control += std::string(i == 1 ? 180 : 200, static_cast<char>('a' + i)) + "/";
            }
            control = folder + "/" + control + std::string(60, 'r') + ".cmp";
            trace = control.substr(0, control.size() - 4) + "_KVRWDLineDebug.txt";
            trace = trace.substr(0, 1023);  // All that the field can hold.
            break;
        default:
            control = folder + "/run.cmp";
            trace = folder + "/run_KVRWDLineDebug.txt";
            break;
    }
}

void CasePaths::prepare(const CaseParameters& parameters) const {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    if (parameters.path >= 6) {
        std::filesystem::create_directories(std::filesystem::path(control).parent_path());
    }
    if (parameters.path == 2) std::filesystem::create_directory(folder + "/job.d");
    if (parameters.path == 5) std::filesystem::create_directory(control);
    if (parameters.debugBlocked == 1) std::filesystem::create_directory(trace);
}

void CasePaths::writeControl(const CaseParameters& parameters, const std::string& text) const {
    if (parameters.control != 0 && parameters.path != 5) {
        writeFile(control, text);
    }
}

}  // namespace weldline::reference
