#include "CheckArguments.h"

#include <CLI/CLI.hpp>

#include "InputArguments.h"

namespace weldline {

namespace {

constexpr const char* checkFooter =
    "Examples:\n"
    "  weldline check part.vtu\n"
    "  weldline check case --json - | jq '.findings[] | select(.level == \"look\")'\n"
    "\n"
    "Looks at what a result depends on: the mesh, the share that is filled, trapped\n"
    "air, noise of the fill time, layers through the thickness, and the steps of a\n"
    "series of phase fractions. A finding with '!' is worth a look; it is no error.\n"
    "\n"
    "Exit codes: 0 done, 1 failed while running, 2 wrong usage, 3 unusable input.\n";

}  // namespace

void addCheck(CLI::App& app, CheckOptions& o) {
    auto* command = app.add_subcommand("check", "Tell how far a filling result can be trusted");
    addInput(*command, o.input);
    addJson(*command, o.json);
    command->add_option("--field", o.field, "Cell array with the fill time [FillTime or fillTime]")
        ->type_name("NAME");
    addTime(*command, o.time);
    addPatterns(*command, o.patterns);
    command->footer(checkFooter);
}

}  // namespace weldline
