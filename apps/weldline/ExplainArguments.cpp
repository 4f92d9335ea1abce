#include "ExplainArguments.h"

#include <CLI/CLI.hpp>
#include <array>
#include <cmath>
#include <cstdlib>

#include "HelpTexts.h"
#include "base/Errors.h"

namespace weldline {

namespace {

std::string nodeProblem(const std::string& text) {
    return text.starts_with('-') ? "'" + text + "' is no node; they count from 0" : std::string{};
}

// "X,Y,Z" with or without blanks.
std::optional<Vec3> placeOf(const std::string& text) {
    std::array<double, 3> x{};
    const char* at = text.c_str();
    for (std::size_t i = 0; i < x.size(); ++i) {
        char* end = nullptr;
        x[i] = std::strtod(at, &end);
        const char behind = i + 1 < x.size() ? ',' : '\0';
        if (end == at || *end != behind || !std::isfinite(x[i])) return std::nullopt;
        at = end + 1;
    }
    return Vec3{x[0], x[1], x[2]};
}

}  // namespace

void addReasons(CLI::App& command, bool& reasons) {
    command
        .add_flag("--reasons", reasons,
                  "Add the point array RefusalReason to the result: why\n"
                  "a node has no smaller angle; 'docs/explain.md'")
        ->group("Further options of a run");
}

void addExplain(CLI::App& app, ExplainOptions& o) {
    auto* command = app.add_subcommand("explain", "Tell why a node has its meeting angle");
    command->add_option("RESULT", o.input, "What 'weldline analyze -o' wrote: .vtu or .pvtu")
        ->type_name("")
        ->required();
    auto* node = command->add_option("--node", o.node, "The node, counted from 0")
                     ->type_name("N")
                     ->check(nodeProblem);
    auto* place = command
                      ->add_option_function<std::string>(
                          "--at",
                          [&o](const std::string& text) {
                              o.place = placeOf(text);
                              if (!o.place)
                                  throw CLI::ValidationError(
                                      "--at", "'" + text +
                                                  "' is no place; give three numbers, for example "
                                                  "0.5,0,-0.02");
                          },
                          "The node that is nearest to this place")
                      ->type_name("X,Y,Z");
    node->excludes(place);
    command->add_option("--json", o.json, "Write the explanation as JSON; - for standard output")
        ->type_name("FILE|-");
    command->callback([&o] {
        if (!o.node && !o.place)
            throw CLI::ValidationError("explain", "which node? give --node N or --at X,Y,Z");
    });
    command->footer(explainFooter);
}

}  // namespace weldline
