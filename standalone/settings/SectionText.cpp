#include "ControlSection.h"
#include "KeyRule.h"
#include "base/Errors.h"

namespace weldline {

namespace {

constexpr const char* openingLine = "[WeldLinePlotCtrl]\n";
constexpr const char* closingLine = "[/WeldLinePlotCtrl]\n";

// Values of a key that mean something, for options; a control file may give any.
struct Range {
    double low;
    double high;
    const char* text;
};

Range rangeOf(std::string_view key) {
    if (key == "FlagDebugOutput") return {0.0, 1.0, "0 or 1"};
    if (key == "WeldlingAngleMethod") return {1.0, 4.0, "1, 2, 3, 4 or 40"};
    if (key == "nSmooth_beforeGrad" || key == "nSmooth_afterGrad")
        return {0.0, 1e6, "a whole number from 0 to 1000000"};
    if (key == "nGrad") return {1.0, 1e6, "a whole number from 1 to 1000000"};
    if (key == "BoundaryAngle")
        return {-1e6, 180.0, "degrees up to 180; a negative value means the method's own default"};
    if (key == "GradValueFilterPara") return {0.0, 1e30, "a number from 0"};
    if (key == "VolumeFilter") return {0.0, 1.0, "a number from 0 to 1"};
    return {1.0, 4.0, "1, 2, 3 or 4"};  // GradMethodMFT
}

const Key* findKey(std::string_view name) {
    for (const Key& key : knownKeys())
        if (key.name == name) return &key;
    return nullptr;
}

struct Option {
    const Key* key;
    std::string value;
};

Option parseOption(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        throw UsageError("setting '" + text + "': give it as KEY=VALUE");
    const std::string name = trimmed(text.substr(0, equals));
    const Key* key = findKey(name);
    if (key == nullptr)
        throw UsageError("setting '" + name + "' is unknown; known are " + knownKeyNames());
    return {key, trimmed(text.substr(equals + 1))};
}

bool isWholeNumber(const Key& key) {
    return key.kind != KeyKind::Real;
}

void checkOption(const Option& option) {
    const std::string name(option.key->name);
    if (option.key->kind == KeyKind::FixedTruncation) {
        if (option.value == "179") return;
        throw UsageError("setting TruncateAngle=" + option.value +
                         ": the library knows no other value than 179; choose the weld lines to "
                         "show by their angle after the run");
    }
    const LeadingNumber number =
        isWholeNumber(*option.key) ? leadingInteger(option.value) : leadingReal(option.value);
    const Range range = rangeOf(name);
    const bool inRange = number.value >= range.low && number.value <= range.high;
    const bool method40 = name == "WeldlingAngleMethod" && option.value == "40";
    // A value that needs more than one line piece could not be read whole.
    const bool readWhole = number.usable && number.rest.empty() && option.value.size() < 100;
    if (!readWhole || (!inRange && !method40))
        throw UsageError("setting " + name + "=" + option.value + ": the value must be " +
                         range.text);
}

}  // namespace

std::string defaultSectionText() {
    return std::string(
               "# Settings of the weld-line analysis. Comments stand up here: in the section a\n"
               "# line counts as soon as it mentions a key.\n"
               "#\n"
               "# WeldlingAngleMethod  first line, because its defaults come only there:\n"
               "#                      1 cells around a node, 2 faces around a node, 3 both,\n"
               "#                      4 converging flow (default), 40 as 4 with less smoothing\n"
               "# FlagDebugOutput      1: write a trace beside this file\n"
               "# nSmooth_beforeGrad   smoothing passes of the fill time\n"
               "# nGrad                iterations of the gradient (methods 1 to 3)\n"
               "# BoundaryAngle        cone around the flow direction, degrees; -1: the method's "
               "own\n"
               "# GradValueFilterPara  factor on the smallest gradient that counts (methods 1 to "
               "3)\n"
               "# VolumeFilter         smallest volume ratio of two cells (methods 1 to 3)\n"
               "# GradMethodMFT        gradient of method 4: 1 as methods 1 to 3, 2 upwind and "
               "RBF,\n"
               "#                      3 upwind and least squares (default), 4 upwind alone\n"
               "# Left out on purpose, because they come with the method:\n"
               "# nSmooth_afterGrad    smoothing passes of the gradient: 20 in methods 1, 3 and "
               "4,\n"
               "#                      4 in methods 2 and 40\n"
               "# TruncateAngle        limit of the meeting angle: 145 degrees in method 4, 135 "
               "in\n"
               "#                      the others; any value given here makes it 179\n") +
           openingLine +
           "WeldlingAngleMethod = 4\n"
           "FlagDebugOutput = 0\n"
           "nSmooth_beforeGrad = 2\n"
           "nGrad = 6\n"
           "BoundaryAngle = -1\n"
           "GradValueFilterPara = 1\n"
           "VolumeFilter = 0.2\n"
           "GradMethodMFT = 3\n" +
           closingLine;
}

std::string sectionFromOptions(const std::vector<std::string>& keyValues) {
    const Key* method = findKey("WeldlingAngleMethod");
    std::vector<Option> options{{method, "4"}};  // the method always stands, and stands first
    std::vector<const Key*> given;
    for (const std::string& text : keyValues) {
        const Option option = parseOption(text);
        checkOption(option);
        for (const Key* key : given)
            if (key == option.key)
                throw UsageError("setting " + std::string(key->name) + " is given twice");
        given.push_back(option.key);
        if (option.key == method)
            options.front() = option;
        else
            options.push_back(option);
    }
    std::string text = openingLine;
    for (const Option& option : options)
        text += std::string(option.key->name) + " = " + option.value + "\n";
    return text + closingLine;
}

}  // namespace weldline
