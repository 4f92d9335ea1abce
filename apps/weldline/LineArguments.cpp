#include "LineArguments.h"

#include <CLI/CLI.hpp>
#include <cmath>

#include "base/Errors.h"
#include "results/LineRule.h"

namespace weldline {

namespace {

void checkAngle(const char* option, double angle) {
    if (!(angle > 0.0 && angle <= 180.0))
        throw UsageError(std::string(option) +
                         ": not an angle that nodes can have; give more than 0 and at most 180 "
                         "degrees");
}

}  // namespace

void addLineOptions(CLI::App& command, LineOptions& o) {
    const std::string group = "Weld lines";
    command
        .add_option("--limit", o.limit, "Weld lines are nodes below this meeting angle,\ndegrees")
        ->type_name("DEG")
        ->capture_default_str()
        ->group(group);
    command
        .add_option("--weld-limit", o.weldLimit,
                    "Lines whose mean angle is below this are weld lines,\nthe others meld lines")
        ->type_name("DEG")
        ->capture_default_str()
        ->group(group);
    command.add_option("--min-length", o.filter.minLength, "Leave out shorter lines")
        ->type_name("LENGTH")
        ->capture_default_str()
        ->group(group);
    command.add_option("--min-nodes", o.filter.minNodes, "Leave out lines of fewer nodes")
        ->type_name("N")
        ->capture_default_str()
        ->group(group);
}

void addCarry(CLI::App& command, std::vector<std::string>& names) {
    command
        .add_option("--carry", names,
                    "Give the lines the values of this cell or point array;\n"
                    "can be given several times")
        ->type_name("NAME")
        ->group("Weld lines")
        ->allow_extra_args(false);
}

void checkLineOptions(const LineOptions& o) {
    checkAngle("--limit", o.limit);
    checkAngle("--weld-limit", o.weldLimit);
    if (!(o.filter.minLength >= 0.0 && std::isfinite(o.filter.minLength)))
        throw UsageError("--min-length: not a length; give 0 or more, in the data set's unit");
    if (o.filter.minNodes < 1)
        throw UsageError("--min-nodes: a line has one node at least; give 1 or more");
}

void checkRule(const std::string& rule) {
    if (rule.empty()) return;
    try {
        const LineRule understood(rule);
    } catch (const UsageError& error) {
        throw UsageError(std::string("--fail-on: ") + error.what());
    }
}

}  // namespace weldline
