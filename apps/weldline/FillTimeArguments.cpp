#include "FillTimeArguments.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>

#include "base/Errors.h"

namespace weldline {

namespace {

constexpr const char* fillTimeFooter =
    "Examples:\n"
    "  weldline filltime case -o filltime.vtu\n"
    "      OpenFOAM case, by its folder or a .foam file in it, whole or decomposed\n"
    "  weldline filltime run.pvd -o filltime.vtu --field alpha.melt\n"
    "      which array holds the phase fraction, where several could\n"
    "  weldline analyze filltime.vtu -o result.vtu\n"
    "\n"
    "A cell is reached at the first upward crossing of the level, linear in time\n"
    "between the two written times around it; NaN where it never is. The command\n"
    "'weldline analyze' does the same by itself where a data set holds no fill time.\n"
    "The times go through memory one by one. Patches and their names are kept.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

}  // namespace

void addFillTime(CLI::App& app, FillTimeOptions& o) {
    auto* command = app.add_subcommand("filltime", "Make a fill time from phase fractions");
    command
        ->add_option("CASE", o.input,
                     "Phase fraction over time: OpenFOAM case (folder or\n"
                     ".foam), .pvd, CGNS .cgns, EnSight .case,\nExodus .e, .ex2, .exo, gmsh .msh")
        ->type_name("")
        ->required();
    command->add_option("-o,--output", o.output, "Write mesh, fill time and patches")
        ->type_name("FILLTIME.vtu")
        ->required();
    command
        ->add_option("--field", o.field,
                     "Cell array with the phase fraction [the only one\nnamed alpha...]")
        ->type_name("NAME");
    command->add_option("--level", o.level, "Phase fraction at which a cell counts as reached")
        ->type_name("VALUE")
        ->capture_default_str();
    command->footer(fillTimeFooter);
}

void checkFillTime(const FillTimeOptions& o) {
    if (!(o.level > 0.0 && std::isfinite(o.level)))
        throw UsageError("--level: not a phase fraction; give a number above 0, such as 0.5");
    if (!o.output.empty() && std::filesystem::path(o.output).extension() != ".vtu")
        throw UsageError(o.output +
                         ": not a name for the fill time; -o needs a file that ends in .vtu");
}

}  // namespace weldline
