#include "CompareArguments.h"

#include <CLI/CLI.hpp>
#include <cmath>

#include "HelpTexts.h"
#include "LineArguments.h"
#include "base/Errors.h"

namespace weldline {

void addCompare(CLI::App& app, CompareOptions& o) {
    auto* command = app.add_subcommand("compare", "Tell what became of the weld lines of a result");
    command->add_option("A", o.first, "A result that 'weldline analyze -o' wrote: .vtu or .pvtu")
        ->type_name("")
        ->required();
    command->add_option("B", o.second, "The result to compare with it, on any mesh")
        ->type_name("")
        ->required();
    command->add_option("--json", o.json, "Write the comparison as JSON; - for standard output")
        ->type_name("FILE|-");
    command
        ->add_option("--tolerance", o.tolerance,
                     "Lines that are farther apart have moved, in the data\n"
                     "set's unit [twice the typical size of a cell]")
        ->type_name("LENGTH");
    addLineOptions(*command, o.lines);
    command->footer(compareFooter);
}

void checkCompare(const CompareOptions& o) {
    checkLineOptions(o.lines);
    if (o.tolerance && !(*o.tolerance >= 0.0 && std::isfinite(*o.tolerance)))
        throw UsageError("--tolerance: not a length; give 0 or more, in the data set's unit");
}

}  // namespace weldline
