#include "RunArguments.h"

#include <CLI/CLI.hpp>
#include <map>

namespace weldline {

void addSettings(CLI::App& command, AnalyzeOptions& o) {
    const std::string group = "Settings";
    auto* control = command.add_option("--control", o.control, "Use this control file as it is")
                        ->type_name("RUN.cmp")
                        ->group(group);
    auto* set = command
                    .add_option("--set", o.set,
                                "One setting, can be given several times;\n"
                                "'weldline settings' lists the keys")
                    ->type_name("KEY=VALUE")
                    ->group(group)
                    ->allow_extra_args(false);
    auto* method = command
                       .add_option("--method", o.method,
                                   "Angle method: 1 cell loop, 2 face loop,\n"
                                   "3 hybrid, 4 RBF, 40 as 4 with less smoothing [4]")
                       ->type_name("N")
                       ->group(group)
                       ->check(CLI::IsMember({1, 2, 3, 4, 40}).description(""));
    const std::map<std::string, int> schemes{
        {"default", 1}, {"rbf", 2}, {"auto", 3}, {"upwind", 4}};
    auto* gradient = command
                         .add_option("--gradient", o.gradient,
                                     "Gradient of method 4: default, rbf, upwind, or auto\n"
                                     "(least squares; RBF on a singular mesh) [auto]")
                         ->type_name("NAME")
                         ->group(group)
                         ->transform(CLI::CheckedTransformer(schemes).description(""));
    // On purpose: a control file is used as it is or not at all. Lines that the program adds to a
    // user's file could change the meaning of the lines around them.
    control->excludes(set)->excludes(method)->excludes(gradient);
}

void addRunOptions(CLI::App& command, AnalyzeOptions& o) {
    const std::string group = "Further options of a run";
    const std::map<std::string, int> sets{{"first", 1}, {"second", 2}};
    const std::map<std::string, ZeroFillTime> zeros{{"auto", ZeroFillTime::Automatic},
                                                    {"filled", ZeroFillTime::Filled},
                                                    {"unreached", ZeroFillTime::NotReached}};
    const std::map<std::string, TrappedAir> gaps{{"keep", TrappedAir::Keep},
                                                 {"close", TrappedAir::Close}};
    command
        .add_option("--gradient-set", o.gradientSet,
                    "Gradients that method 4 compares: first (upwind) or\nsecond, where there is "
                    "one [second]")
        ->type_name("SET")
        ->group(group)
        ->transform(CLI::CheckedTransformer(sets).description(""));
    command
        .add_option("--bi-field", o.biField,
                    "Cell array with the fill time of a second injection,\n"
                    "used where the first did not arrive")
        ->type_name("NAME")
        ->group(group);
    command
        .add_option("--cell-state", o.cellState,
                    "Integer cell array; cells with 1 or more, or -1,\n"
                    "keep their nodes free of weld lines")
        ->type_name("NAME")
        ->group(group);
    command
        .add_option("--mesh-file-type", o.meshFileType,
                    "Kind of mesh file; 2 selects other boundary angles\nin methods 1 and 2")
        ->type_name("N")
        ->capture_default_str()
        ->group(group);
    command
        .add_option("--zero-time", o.zeroTime,
                    "What a fill time of 0 means: filled, unreached,\n"
                    "or auto (decided from the data set) [auto]")
        ->type_name("MEANING")
        ->group(group)
        ->transform(CLI::CheckedTransformer(zeros).description(""));
    command
        .add_option("--trapped-air", o.trappedAir,
                    "Cells that the melt never reached: keep (empty), or\n"
                    "close (as if it had gone on into them) [keep]")
        ->type_name("WAY")
        ->group(group)
        ->transform(CLI::CheckedTransformer(gaps).description(""));
}

}  // namespace weldline
