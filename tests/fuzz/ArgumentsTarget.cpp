// The command line: the lines of the input are the program's arguments. Reading them gives
// arguments, a text to show, or the error that ends the program with exit code 2; nothing else.
#include <algorithm>
#include <string>
#include <vector>

#include "../../apps/weldline/Arguments.h"
#include "Target.h"
#include "base/Errors.h"

namespace {

using namespace weldline;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines{"weldline"};
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        // An argument ends with its first null character.
        lines.emplace_back(text.substr(begin, end - begin).c_str());
        begin = end + 1;
    }
    return lines;
}

void checkAnalyze(const AnalyzeOptions& options) {
    fuzz::require(!options.input.empty(), "analyze has an input");
    fuzz::require(options.lineOptions.limit > 0.0 && options.lineOptions.limit <= 180.0,
                  "the angle is possible");
    fuzz::require(
        options.control.empty() || (options.set.empty() && !options.method && !options.gradient),
        "a control file stands alone");
    fuzz::require(!options.gradient || (*options.gradient >= 1 && *options.gradient <= 4),
                  "the gradient is one of four");
    fuzz::require(!options.gradientSet || *options.gradientSet == 1 || *options.gradientSet == 2,
                  "the gradient set is one of two");
}

void check(const Arguments& arguments) {
    switch (arguments.command) {
        case Arguments::Command::ShowText:
            return fuzz::require(!arguments.text.empty(), "there is a text to show");
        case Arguments::Command::Analyze:
            return checkAnalyze(arguments.analyze);
        case Arguments::Command::Check:
            return fuzz::require(!arguments.check.input.empty(), "check has an input");
        case Arguments::Command::Compare:
            return fuzz::require(
                !arguments.compare.first.empty() && !arguments.compare.second.empty(),
                "compare has two results");
        case Arguments::Command::Explain:
            return fuzz::require(
                arguments.explain.node.has_value() != arguments.explain.place.has_value(),
                "explain has a node or a place");
        case Arguments::Command::FillTime:
            return fuzz::require(
                arguments.fillTime.level > 0.0 && !arguments.fillTime.output.empty(),
                "filltime has a level and an output");
        case Arguments::Command::Info:
            return fuzz::require(!arguments.info.input.empty(), "info has an input");
        case Arguments::Command::Render:
            return fuzz::require(!arguments.render.output.empty(), "render has an output");
        case Arguments::Command::Report:
            return fuzz::require(!arguments.report.output.empty(), "report has an output");
        case Arguments::Command::Settings:
            return;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> words = linesOf({data, data + size});
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    const auto count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    try {
        check(parseArguments(count, arguments.data()));
    } catch (const UsageError& error) {
        const std::string message = error.what();
        fuzz::require(!message.empty() && message.find('\n') == std::string::npos,
                      "an error is one line");
    }
    return 0;
}
