#include "RunControl.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "Reasons.h"
#include "base/Errors.h"
#include "base/ReadFile.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"
#include "comm/Packing.h"
#include "settings/ControlSection.h"

namespace weldline {

namespace {

// On purpose the whole line: it marks the files that a later run may replace.
constexpr const char* ownFirstLine =
    "# Control file that 'weldline analyze' kept beside its result; the next run replaces it.";

std::string readBytes(const std::string& file) {
    std::error_code none;
    if (std::filesystem::is_directory(file, none))
        throw InputError(file + ": a folder; --control needs a control file");
    std::string bytes;
    if (!readWholeFile(file, bytes))
        throw InputError(file + ": the control file cannot be read (" +
                         std::generic_category().message(errno) +
                         "); give an existing, readable file");
    return bytes;
}

RunControl controlOfUser(const std::string& file) {
    const std::string name = std::filesystem::path(file).filename().string();
    if (name.find('.') == std::string::npos)
        throw UsageError(file + ": the name of a control file needs a '.'; rename it, for " +
                         "example to '" + (name.empty() ? "run" : name) + ".cmp'");
    RunControl control;
    control.file = file;
    control.text = readBytes(file);
    const ControlReading reading = readControlText(control.text);
    control.settings = reading.settings;
    if (stagesOf(reading.settings).angleMethod == 0)
        throw InputError(file + ": WeldlingAngleMethod is " +
                         std::to_string(reading.settings.method) +
                         ", which calculates nothing; it must be 1, 2, 3, 4 or 40");
    const std::string prefix = file + ": ";
    for (const std::string& warning : reading.warnings) control.remarks.push_back(prefix + warning);
    const auto surprising = std::count_if(reading.lines.begin(), reading.lines.end(),
                                          [](const LineEffect& line) { return line.surprising; });
    if (surprising > 0)
        control.remarks.push_back(prefix + std::to_string(surprising) +
                                  (surprising == 1 ? " line does" : " lines do") +
                                  " something else than it seems; see 'weldline settings --check'");
    return control;
}

RunControl controlOfOptions(const AnalyzeOptions& options) {
    std::vector<std::string> settings = options.set;
    if (options.method)
        settings.push_back("WeldlingAngleMethod=" + std::to_string(*options.method));
    if (options.gradient) settings.push_back("GradMethodMFT=" + std::to_string(*options.gradient));
    RunControl control;
    control.text = std::string(ownFirstLine) + "\n" + sectionFromOptions(settings);
    control.settings = readControlText(control.text).settings;
    if (control.settings.debugOutput && options.output.empty())
        throw UsageError(
            "setting FlagDebugOutput=1: the trace is kept beside the result, and there is none; "
            "add -o RESULT.vtu or give a control file with --control");
    return control;
}

}  // namespace

RunControl prepareControl(const AnalyzeOptions& options) {
    RunControl control =
        options.control.empty() ? controlOfOptions(options) : controlOfUser(options.control);
    const Stages stages = stagesOf(control.settings);
    if (options.gradient && stages.angleMethod != 4)
        control.remarks.push_back(
            "--gradient has no effect with method " + std::to_string(stages.angleMethod) +
            ", which always takes the default gradient; it belongs to method 4");
    if (options.gradientSet && (stages.angleMethod != 4 || stages.second == SecondGradient::None))
        control.remarks.push_back(
            "--gradient-set has no effect with these settings: there is one set of gradients only");
    return control;
}

RunControl prepareControl(Ranks& ranks, const AnalyzeOptions& options) {
    RunControl control =
        together(ranks, [&] { return ranks.rank() == 0 ? prepareControl(options) : RunControl{}; });
    agreeOnFailure(ranks, [&] {
        if (ranks.rank() == 0) checkReasons(options, control.settings, ranks.size());
    });
    Packer packer;
    packer.put(control.file).put(control.text).put(control.remarks);
    const Bytes message = broadcast(ranks, packer.take());
    Unpacker unpacker(message);
    unpacker.get(control.file);
    unpacker.get(control.text);
    unpacker.get(control.remarks);
    control.settings = readControlText(control.text).settings;
    return control;
}

bool isOwnControlFile(const std::string& file) {
    std::string bytes;
    if (!readWholeFile(file, bytes))
        throw InputError(file + ": the control file of an earlier run cannot be read (" +
                         std::generic_category().message(errno) +
                         "), so that it is not replaced; give the result another name");
    return bytes.starts_with(std::string(ownFirstLine) + "\n");
}

std::string traceNameFor(const std::string& controlFile) {
    constexpr std::string_view ending = "_KVRWDLineDebug.txt";
    std::string name = controlFile;
    return name.replace(name.rfind('.'), ending.size(), ending);
}

}  // namespace weldline
