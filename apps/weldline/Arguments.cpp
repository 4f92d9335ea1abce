#include "Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

#include "CheckArguments.h"
#include "CompareArguments.h"
#include "ExplainArguments.h"
#include "FillTimeArguments.h"
#include "HelpTexts.h"
#include "InputArguments.h"
#include "LineArguments.h"
#include "RenderArguments.h"
#include "RunArguments.h"
#include "base/Errors.h"
#include "io/DataSet.h"

namespace weldline {

namespace {

// Help without the notes that the library adds for itself ("REQUIRED", "Excludes: ...").
class HelpFormatter : public CLI::Formatter {
  public:
    HelpFormatter() { column_width(26); }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        const std::string value = option->get_default_str();
        return option->get_description() + (value.empty() ? "" : " [" + value + "]");
    }

    std::string make_help(const CLI::App* app, std::string name,
                          CLI::AppFormatMode mode) const override {
        std::string text = CLI::Formatter::make_help(app, name, mode);
        for (std::size_t at = 0; (at = text.find("\n\n\n", at)) != std::string::npos;)
            text.erase(at, 1);
        return text;
    }
};

void addResult(CLI::App& command, std::string& result) {
    command.add_option("RESULT", result, "What 'weldline analyze -o' wrote: .vtu or .pvtu")
        ->type_name("")
        ->required();
}

void addLineOutputs(CLI::App& command, AnalyzeOptions& o) {
    const std::string group = "Weld lines";
    command.add_option("--lines", o.lines, "Write the lines as polylines and surfaces")
        ->type_name("LINES.vtp")
        ->group(group);
    command.add_option("--csv", o.csv, "Write the table of the lines; - for standard output")
        ->type_name("FILE|-")
        ->group(group);
    addCarry(command, o.carry);
    command
        .add_option("--fail-on", o.failOn,
                    "End with exit code 10 if a line fulfils this rule,\n"
                    "for example 'angle<60 & length>5'")
        ->type_name("RULE")
        ->group(group);
}

void addAnalyze(CLI::App& app, AnalyzeOptions& o) {
    auto* command = app.add_subcommand("analyze", "Find the weld lines of a filling result");
    addInput(*command, o.input);
    command->add_option("-o,--output", o.output, "Write mesh, meeting angles and weld lines")
        ->type_name("RESULT.vtu|.pvtu|.exo");
    addJson(*command, o.json);
    command->add_option("--field", o.field, "Cell array with the fill time [FillTime or fillTime]")
        ->type_name("NAME");
    addTime(*command, o.time);
    addScale(*command, o.scale);
    addPatterns(*command, o.patterns);
    addAutoGroups(*command, o.autoGroups);
    addSettings(*command, o);
    addRunOptions(*command, o);
    addReasons(*command, o.reasons);
    addLineOptions(*command, o.lineOptions);
    addLineOutputs(*command, o);
    command->footer(analyzeFooter);
}

void addInfo(CLI::App& app, InfoOptions& o) {
    auto* command = app.add_subcommand("info", "Show what a data set holds, before any run");
    addInput(*command, o.input);
    addJson(*command, o.json);
    addTime(*command, o.time);
    addPatterns(*command, o.patterns);
    command->footer(infoFooter);
}

void addReport(CLI::App& app, ReportOptions& o) {
    auto* command = app.add_subcommand("report", "Show a result as one page for a browser");
    addResult(*command, o.input);
    command->add_option("-o,--output", o.output, "The page, one file")
        ->type_name("REPORT.html")
        ->required();
    command->add_option("--title", o.title, "Title of the page [name of the result]")
        ->type_name("TEXT");
    addLineOptions(*command, o.lines);
    addCarry(*command, o.carry);
    command->footer(reportFooter);
}

void addSettingsCommand(CLI::App& app, SettingsOptions& o) {
    auto* command =
        app.add_subcommand("settings", "Print a control file with the defaults, or explain one");
    command->add_option("--check", o.check, "Say what each line of a control file will really do")
        ->type_name("RUN.cmp");
    command->footer(settingsFooter);
}

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    while (!text.empty() && (text.back() == ' ' || text.back() == '.')) text.pop_back();
    return text;
}

void checkValues(const CLI::App& app, const Arguments& arguments) {
    checkLineOptions(arguments.analyze.lineOptions);
    checkLineOptions(arguments.report.lines);
    checkCompare(arguments.compare);
    checkFillTime(arguments.fillTime);
    checkRender(arguments.render);
    checkRule(arguments.analyze.failOn);
    checkScale(arguments.analyze.scale);
    for (const auto* command : app.get_subcommands())
        for (const auto* option : command->get_options())
            if (option->count() > 0 && option->get_expected_max() > 0 &&
                std::any_of(option->results().begin(), option->results().end(),
                            [](const std::string& value) { return value.empty(); }))
                throw UsageError(option->get_name() +
                                 ": the value is empty; give one or leave "
                                 "the option out");
}

// On purpose another way for the same stream: during a run its name leads to something else.
void nameStandardOutput(std::string& file) {
    if (file == "/dev/stdout" || file == "/dev/fd/1" || file == "/proc/self/fd/1") file = "-";
}

const std::map<std::string, Arguments::Command> commands{
    {"analyze", Arguments::Command::Analyze},   {"check", Arguments::Command::Check},
    {"compare", Arguments::Command::Compare},   {"explain", Arguments::Command::Explain},
    {"filltime", Arguments::Command::FillTime}, {"info", Arguments::Command::Info},
    {"render", Arguments::Command::Render},     {"report", Arguments::Command::Report},
    {"settings", Arguments::Command::Settings}};

}  // namespace

Arguments parseArguments(int argc, char** argv) {
    Arguments result;
    CLI::App app(programDescription, "weldline");
    app.set_version_flag("--version", "weldline " WELDLINE_VERSION, "Print the version and leave");
    app.set_help_flag("-h,--help", "Print this help and leave");
    app.require_subcommand(1);
    app.footer(programFooter);
    app.formatter(std::make_shared<HelpFormatter>());
    addAnalyze(app, result.analyze);
    addCheck(app, result.check);
    addCompare(app, result.compare);
    addExplain(app, result.explain);
    addFillTime(app, result.fillTime);
    addInfo(app, result.info);
    addRender(app, result.render);
    addReport(app, result.report);
    addSettingsCommand(app, result.settings);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        result.text = app.help();
        return result;
    } catch (const CLI::CallForVersion& version) {
        result.text = std::string(version.what()) + "\n";
        return result;
    } catch (const CLI::ParseError& error) {
        const auto given = app.get_subcommands();
        if (given.empty() && argc > 1) throw UsageError(oneLine(argv[1]) + noSuchCommand);
        const std::string name = given.empty() ? "" : " " + given.front()->get_name();
        throw UsageError(oneLine(error.what()) + "; see 'weldline" + name + " --help'");
    }
    checkValues(app, result);
    for (std::string* json : {&result.analyze.json, &result.check.json, &result.compare.json,
                              &result.explain.json, &result.info.json})
        nameStandardOutput(*json);
    for (std::string* input :
         {&result.analyze.input, &result.check.input, &result.fillTime.input, &result.info.input})
        *input = foamFileOf(*input);
    result.command = commands.at(app.get_subcommands().front()->get_name());
    return result;
}

}  // namespace weldline
