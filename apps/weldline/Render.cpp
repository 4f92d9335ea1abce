#include "Render.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>

#include "Console.h"
#include "Outputs.h"
#include "ReadResult.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "render/Picture.h"

namespace weldline {

namespace {

void checkName(const std::string& output) {
    if (std::filesystem::path(output).extension() != ".png")
        throw UsageError(output +
                         ": not a name for the picture; -o needs a file that ends in .png");
}

// "1 weld line", "3 weld lines"; none of them is not worth a word.
std::string counted(std::size_t count, const std::string& what) {
    if (count == 0) return {};
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string subtitleOf(const FoundLines& found) {
    const std::vector<WeldLine>& lines = found.lines.lines;
    const auto welds = static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(),
                      [](const WeldLine& line) { return line.kind == LineClass::Weld; }));
    std::string text = counted(welds, "weld line");
    const std::string melds = counted(lines.size() - welds, "meld line");
    if (!text.empty() && !melds.empty()) text += ", ";
    text += melds;
    if (text.empty()) text = "no weld lines";
    if (found.dropped.lines > 0)
        text += " (" + counted(static_cast<std::size_t>(found.dropped.lines), "smaller one") +
                " left out)";
    return text;
}

void append(std::vector<LineCurve>& to, const std::vector<LineCurve>& curves) {
    to.insert(to.end(), curves.begin(), curves.end());
}

void addLines(const FoundLines& found, PictureScene& scene) {
    std::set<int> shown;
    for (const WeldLine& line : found.lines.lines) shown.insert(line.id);
    for (const LineShape& shape : found.shapes) {
        if (!shown.contains(shape.id)) continue;
        if (shape.runsAlongSkin()) {
            append(scene.skinLines, shape.skin);
            append(scene.innerLines, shape.path);
        } else {
            append(scene.buriedLines, shape.path);
        }
    }
}

// Nothing where the melt reached no part of the skin.
std::optional<TimeBands> bandsOf(const Skin& skin, const RenderOptions& options) {
    double earliest = std::numeric_limits<double>::infinity();
    double latest = 0.0;
    for (const float time : skin.time) {
        if (time < 0.0F) continue;
        earliest = std::min(earliest, static_cast<double>(time));
        latest = std::max(latest, static_cast<double>(time));
    }
    if (!options.coloursTime || earliest > latest) return {};
    return options.bands ? evenBands(earliest, latest, *options.bands)
                         : roundBands(earliest, latest);
}

PictureScene sceneOf(const ResultModel& model, const RenderOptions& options) {
    PictureScene scene;
    scene.skin = skinOf(model.mesh, model.fillTime);
    addLines(model.found, scene);
    scene.bands = bandsOf(scene.skin, options);
    scene.title = std::filesystem::path(model.file).filename().string();
    scene.subtitle = subtitleOf(model.found);
    return scene;
}

// Without views: they may depend on the part. The size was checked with the command line.
PictureStyle styleOf(const RenderOptions& options) {
    PictureStyle style;
    const std::size_t cross = options.size.find('x');
    style.width = std::stoi(options.size.substr(0, cross));
    style.height = std::stoi(options.size.substr(cross + 1));
    for (const std::string& view : options.views) style.views.push_back(viewOf(view));
    style.background = options.background;
    style.seesThrough = options.seesThrough;
    return style;
}

std::string drawn(const PictureScene& scene, const PictureStyle& style, const std::string& output) {
    try {
        return pictureBytes(scene, style);
    } catch (const RunError& error) {
        throw RunError(output + ": " + error.what());
    }
}

}  // namespace

void renderResult(const RenderOptions& options) {
    checkName(options.output);
    PictureStyle style = styleOf(options);
    checkTarget(options.output, options.input);
    const ResultModel model = [&] {
        const StandardOutputAside aside;
        return readResult(options.input, options.lines);
    }();
    const PictureScene scene = sceneOf(model, options);
    if (style.views.empty()) style.views.push_back(defaultView(scene.skin.points));
    writeWholeFile(options.output, drawn(scene, style, options.output));
}

}  // namespace weldline
