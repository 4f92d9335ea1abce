#include "InputArguments.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdlib>

#include "base/Errors.h"

namespace weldline {

namespace {

// "latest" or a number, as the readers understand it.
std::string timeProblem(const std::string& text) {
    if (text == "latest") return {};
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    const bool whole = end != text.c_str() && *end == '\0';
    return whole && std::isfinite(value) ? std::string{}
                                         : "'" + text + "' is neither 'latest' nor a number";
}

constexpr const char* boundaryGroups =
    "Boundary groups (regular expressions on patch names; the others are wall)";

}  // namespace

void addInput(CLI::App& command, std::string& input) {
    command
        .add_option("INPUT", input,
                    "Filling result: .vtu, .pvtu, .vtk, .vtm, .pvd,\n"
                    "CGNS .cgns, EnSight .case, Exodus .e, .ex2, .exo,\n"
                    "gmsh .msh, or an OpenFOAM case (folder or .foam)")
        ->type_name("")
        ->required();
}

void addTime(CLI::App& command, std::string& time) {
    command.add_option("--time", time, "Time of the data set")
        ->type_name("T|latest")
        ->check(timeProblem)
        ->capture_default_str();
}

void addScale(CLI::App& command, double& scale) {
    command
        .add_option("--scale", scale,
                    "Multiply lengths by this; 0.001 makes metres of\nmillimetres")
        ->type_name("FACTOR")
        ->capture_default_str();
}

void checkScale(double scale) {
    if (!(scale > 0.0 && std::isfinite(scale)))
        throw UsageError("--scale: not a factor; give a number above 0, such as 0.001");
}

void addPatterns(CLI::App& command, GroupPatterns& patterns) {
    const auto add = [&](const char* name, std::string& pattern, const char* text) {
        command.add_option(name, pattern, text)
            ->type_name("RE")
            ->capture_default_str()
            ->group(boundaryGroups);
    };
    add("--inlet", patterns.inlet, "Patches where melt enters");
    add("--outlet", patterns.outlet, "Patches where air leaves");
    add("--symmetry", patterns.symmetry, "Patches on a symmetry plane");
}

void addAutoGroups(CLI::App& command, bool& autoGroups) {
    command
        .add_flag("--auto-groups", autoGroups,
                  "Where no patch name tells inlets or outlets, take\n"
                  "walls that fill first as inlets, walls where the\n"
                  "front runs out as outlets")
        ->group(boundaryGroups);
}

void addJson(CLI::App& command, std::string& json) {
    command.add_option("--json", json, "Write the summary as JSON; - for standard output")
        ->type_name("FILE|-");
}

}  // namespace weldline
