#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bind/FillTime.h"
#include "bind/TrappedAir.h"
#include "mesh/BoundaryGroups.h"
#include "render/Background.h"
#include "results/LineDetails.h"

namespace weldline {

// What the user asked for on the command line.

// From node angles to weld lines.
struct LineOptions {
    double limit = 180.0;  // weld nodes have a smaller angle; degrees
    double weldLimit = kWeldLimit;
    LineFilter filter;
};

struct AnalyzeOptions {
    std::string input;
    std::string output;  // .vtu or .pvtu; empty: none
    std::string lines;   // .vtp; empty: none
    std::string csv;     // file, "-" for standard output; empty: none
    std::string json;    // file, "-" for standard output; empty: none
    std::string field;   // empty: the usual names
    std::string time = "latest";
    double scale = 1.0;  // of lengths
    GroupPatterns patterns;
    bool autoGroups = false;  // walls that fill first are inlets where no patch name tells them

    std::string control;             // the user's own control file; empty: one is made
    std::vector<std::string> set;    // KEY=VALUE
    std::optional<int> method;       // 1 to 4, 40
    std::optional<int> gradient;     // GradMethodMFT
    std::optional<int> gradientSet;  // 1 or 2
    std::string biField;             // cell array of the second injection; empty: none
    std::string cellState;           // integer cell array; empty: none
    int meshFileType = 0;
    ZeroFillTime zeroTime = ZeroFillTime::Automatic;
    TrappedAir trappedAir = TrappedAir::Keep;
    LineOptions lineOptions;
    bool reasons = false;            // the result tells why nodes have no smaller angle
    std::vector<std::string> carry;  // cell or point arrays whose values the lines get
    std::string failOn;              // rule on lines that makes the run fail; empty: none
};

struct FillTimeOptions {
    std::string input;
    std::string output;  // .vtu
    std::string field;   // phase fraction; empty: the only one named alpha...
    double level = 0.5;
};

struct InfoOptions {
    std::string input;
    std::string time = "latest";
    std::string json;
    GroupPatterns patterns;
};

struct CheckOptions {
    std::string input;
    std::string field;  // empty: the usual names
    std::string time = "latest";
    std::string json;
    GroupPatterns patterns;
};

struct CompareOptions {
    std::string first;  // results of analyze
    std::string second;
    std::string json;
    std::optional<double> tolerance;  // missing: follows from the meshes
    LineOptions lines;
};

struct ExplainOptions {
    std::string input;              // a result of analyze
    std::optional<long long> node;  // 0-based
    std::optional<Vec3> place;      // where no node is given: the nearest node
    std::string json;
};

struct RenderOptions {
    std::string input;               // a result of analyze
    std::string output;              // .png
    std::vector<std::string> views;  // none: the usual view of the part
    std::string size = "1600x1000";
    bool coloursTime = true;
    std::optional<int> bands;  // missing: bands of a round width
    Background background = Background::Light;
    bool seesThrough = false;
    LineOptions lines;
};

struct ReportOptions {
    std::string input;   // a result of analyze
    std::string output;  // .html
    std::string title;   // empty: the name of the result
    LineOptions lines;
    std::vector<std::string> carry;
};

struct SettingsOptions {
    std::string check;  // control file to explain; empty: print the default section
};

struct Arguments {
    enum class Command {
        ShowText,
        Analyze,
        Check,
        Compare,
        Explain,
        FillTime,
        Info,
        Render,
        Report,
        Settings
    };
    Command command = Command::ShowText;
    std::string text;  // help or version, for ShowText
    AnalyzeOptions analyze;
    CheckOptions check;
    CompareOptions compare;
    ExplainOptions explain;
    FillTimeOptions fillTime;
    InfoOptions info;
    RenderOptions render;
    ReportOptions report;
    SettingsOptions settings;
};

// Reads the command line. Throws UsageError with one line.
Arguments parseArguments(int argc, char** argv);

}  // namespace weldline
