#include "RenderArguments.h"

#include <CLI/CLI.hpp>
#include <map>

#include "HelpTexts.h"
#include "LineArguments.h"
#include "base/Errors.h"

namespace weldline {

namespace {

constexpr int kSmallestSide = 16;
constexpr int kLargestSide = 16384;

// "1600x1000"; each side out of range counts as not understood, too.
std::string sizeProblem(const std::string& text) {
    std::string problem = "'" + text +
                          "' is no size; give WIDTHxHEIGHT in pixels, each from 16 to 16384, "
                          "for example 1600x1000";
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) return problem;
    for (const std::string& side : {text.substr(0, cross), text.substr(cross + 1)}) {
        if (side.empty() || side.size() > 5 ||
            side.find_first_not_of("0123456789") != std::string::npos)
            return problem;
        const int pixels = std::stoi(side);
        if (pixels < kSmallestSide || pixels > kLargestSide) return problem;
    }
    return {};
}

void addLook(CLI::App& command, RenderOptions& o) {
    const std::map<std::string, bool> colours{{"time", true}, {"none", false}};
    const std::map<std::string, Background> backgrounds{{"light", Background::Light},
                                                        {"dark", Background::Dark},
                                                        {"transparent", Background::Transparent}};
    command
        .add_option("--view", o.views,
                    "iso, +x, -x, +y, -y, +z, -z, or where the viewer stands,\n"
                    "in degrees; can be given several times, for several\n"
                    "views in one picture [the broad side of the part]")
        ->type_name("VIEW|AZIMUTH,ELEVATION")
        ->allow_extra_args(false);
    command.add_option("--size", o.size, "Size of the picture in pixels")
        ->type_name("WxH")
        ->check(CLI::Validator(sizeProblem, ""))
        ->capture_default_str();
    command
        .add_option("--colour-by", o.coloursTime,
                    "Colour of the part: time (of filling) or none [time]")
        ->type_name("WHAT")
        ->transform(CLI::CheckedTransformer(colours).description(""));
    command.add_option("--bands", o.bands, "Number of bands of fill time [bands of a round width]")
        ->type_name("N");
    command.add_option("--background", o.background, "light, dark or transparent [light]")
        ->type_name("KIND")
        ->transform(CLI::CheckedTransformer(backgrounds).description(""));
    command.add_flag("--through", o.seesThrough,
                     "Let lines shine through the part, also those within it");
}

}  // namespace

void addRender(CLI::App& app, RenderOptions& o) {
    auto* command = app.add_subcommand("render", "Draw a result with its weld lines as a picture");
    command->add_option("RESULT", o.input, "A result that 'weldline analyze -o' wrote")
        ->type_name("")
        ->required();
    command->add_option("-o,--output", o.output, "Write the picture")
        ->type_name("PICTURE.png")
        ->required();
    addLook(*command, o);
    addLineOptions(*command, o.lines);
    command->footer(renderFooter);
}

void checkRender(const RenderOptions& o) {
    checkLineOptions(o.lines);
    constexpr int most = 256;
    if (o.bands && (*o.bands < 1 || *o.bands > most))
        throw UsageError("--bands: not a number of bands; give 1 to 256");
}

}  // namespace weldline
