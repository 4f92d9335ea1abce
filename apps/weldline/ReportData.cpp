#include "ReportData.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>

#include "JsonParts.h"
#include "RunNotes.h"
#include "Summary.h"
#include "mesh/MeshQuality.h"
#include "results/Skin.h"

namespace weldline {

namespace {

constexpr double kBinWidth = 5.0;  // degrees
constexpr int kBins = 36;

static_assert(std::endian::native == std::endian::little, "the page reads little-endian values");

std::string base64(const void* from, std::size_t size) {
    constexpr const char* signs =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto* bytes = static_cast<const unsigned char*>(from);
    std::string text;
    text.reserve((size + 2) / 3 * 4);
    for (std::size_t i = 0; i < size; i += 3) {
        const std::size_t left = size - i;
        const unsigned group = static_cast<unsigned>(bytes[i]) << 16U |
                               (left > 1 ? static_cast<unsigned>(bytes[i + 1]) << 8U : 0U) |
                               (left > 2 ? static_cast<unsigned>(bytes[i + 2]) : 0U);
        text += signs[group >> 18U];
        text += signs[group >> 12U & 63U];
        text += left > 1 ? signs[group >> 6U & 63U] : '=';
        text += left > 2 ? signs[group & 63U] : '=';
    }
    return text;
}

template <class Value>
std::string packed(const std::vector<Value>& values) {
    return base64(values.data(), values.size() * sizeof(Value));
}

template <std::size_t size>
std::string packed(const std::vector<std::array<int, size>>& rows) {
    std::vector<std::uint32_t> values;
    values.reserve(size * rows.size());
    for (const auto& row : rows) values.insert(values.end(), row.begin(), row.end());
    return packed(values);
}

std::string packedPoints(const std::vector<Vec3>& points, Vec3 origin) {
    std::vector<float> values;
    values.reserve(3 * points.size());
    for (const Vec3 point : points) {
        const Vec3 x = point - origin;
        for (const double part : {x.x, x.y, x.z}) values.push_back(static_cast<float>(part));
    }
    return packed(values);
}

std::string packedFloats(const std::vector<double>& values) {
    return packed(std::vector<float>(values.begin(), values.end()));
}

Json skinJson(const ResultModel& model, Vec3 origin) {
    const Skin skin = skinOf(model.mesh, model.fillTime);
    return {{"origin", vector(origin)},
            {"points", packedPoints(skin.points, origin)},
            {"triangles", packed(skin.triangles)},
            {"time", packed(skin.time)},
            {"edges", packed(skin.edges)}};
}

// The curves on the skin, and those through the part where the skin shows too little of the line.
Json curvesJson(const LineShape& shape, Vec3 origin) {
    Json curves = Json::array();
    std::vector<LineCurve> all = shape.skin;
    if (!shape.runsAlongSkin()) all.insert(all.end(), shape.path.begin(), shape.path.end());
    for (const LineCurve& curve : all) {
        LineCurve drawn = curve;
        if (curve.isClosed) {
            drawn.points.push_back(curve.points.front());
            drawn.angle.push_back(curve.angle.front());
            drawn.time.push_back(curve.time.front());
        }
        if (drawn.points.size() < 2) continue;
        curves.push_back({{"points", packedPoints(drawn.points, origin)},
                          {"angle", packedFloats(drawn.angle)},
                          {"time", packedFloats(drawn.time)}});
    }
    return curves;
}

Json lineJson(const WeldLine& line, const LineShape& shape, Vec3 origin) {
    Json carried = Json::array();
    for (const CarriedValue& value : line.carried)
        carried.push_back({{"name", value.name},
                           {"smallest", number(value.smallest)},
                           {"mean", number(value.mean)},
                           {"largest", number(value.largest)}});
    return {{"id", line.id},
            {"class", nameOf(line.kind)},
            {"length", number(line.length)},
            {"nodes", line.nodeCount},
            {"smallestAngle", number(line.smallestAngle)},
            {"meanAngle", number(line.meanAngle)},
            {"firstTime", number(line.firstTime)},
            {"lastTime", number(line.lastTime)},
            {"low", vector(line.low)},
            {"high", vector(line.high)},
            {"centroid", vector(line.centroid)},
            {"patch", line.patch},
            {"carried", carried},
            {"polylines", curvesJson(shape, origin)}};
}

Json linesJson(const FoundLines& found, Vec3 origin) {
    std::map<int, const LineShape*> shapeOf;
    for (const LineShape& shape : found.shapes) shapeOf[shape.id] = &shape;
    Json lines = Json::array();
    for (const WeldLine& line : found.lines.lines)
        lines.push_back(lineJson(line, *shapeOf.at(line.id), origin));
    return lines;
}

bool staysInside(const FoundLines& found) {
    return std::any_of(found.shapes.begin(), found.shapes.end(), [&](const LineShape& shape) {
        const auto& lines = found.lines.lines;
        return !shape.runsAlongSkin() &&
               std::any_of(lines.begin(), lines.end(),
                           [&](const auto& line) { return line.id == shape.id; });
    });
}

Json histogramJson(const ResultModel& model) {
    std::array<long long, kBins> counts{};
    for (std::size_t n = 0; n < model.angles.size(); ++n) {
        if (model.found.lines.nodeLine[n] == 0) continue;
        const double bin = std::floor(reportedAngle(model.angles[n]) / kBinWidth);
        ++counts[static_cast<std::size_t>(std::min(bin, kBins - 1.0))];
    }
    Json edges = Json::array();
    for (int bin = 0; bin <= kBins; ++bin) edges.push_back(bin * kBinWidth);
    return {{"edges", edges}, {"counts", counts}};
}

std::string plainText(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.is_null() ? "" : value.dump();
}

// The settings of the run, where the result tells of it.
Json settingsJson(const Json& run, const LineOptions& options) {
    Json list = Json::array();
    const auto add = [&](const std::string& name, const Json& value) {
        const std::string text = plainText(value);
        if (!text.empty()) list.push_back({name, text});
    };
    if (run.contains("field")) add("fill time", run["field"]);
    add("units", unitsText(run.value("scale", 1.0)));
    const Json settings = run.value("settings", Json::object());
    for (const auto& [name, value] : settings.items()) add(name, value);
    if (run.contains("trappedAir")) add("trappedAir", run["trappedAir"]);
    add("limit", options.limit);
    add("weldLimit", options.weldLimit);
    add("minLength", options.filter.minLength);
    add("minNodes", options.filter.minNodes);
    return list;
}

Json meshJson(const ResultModel& model) {
    const MeshQuality quality = qualityOf(model.mesh);
    const auto rounded = [](double value) {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%.4g", value);
        return std::string(text.data());
    };
    long long reached = 0;
    double volume = 0.0;
    for (int c = 0; c < model.mesh.cellCount(); ++c) {
        volume += model.mesh.cellVolume[c];
        if (model.fillTime[c] > 0.0F) ++reached;
    }
    return Json::array(
        {{"cells", std::to_string(model.mesh.cellCount())},
         {"cells reached", std::to_string(reached)},
         {"nodes", std::to_string(model.mesh.pointCount())},
         {"inner faces", std::to_string(model.mesh.innerFaces)},
         {"boundary faces", std::to_string(model.mesh.boundaryFaces())},
         {"volume", rounded(volume)},
         {"non-orthogonality, mean", rounded(quality.meanNonOrthogonality) + " degrees"},
         {"non-orthogonality, worst", rounded(quality.worstNonOrthogonality) + " degrees"},
         {"volume ratio of neighbours, worst", rounded(quality.worstVolumeRatio)}});
}

Json droppedJson(const FoundLines& found, const LineOptions& options) {
    std::string reason;
    if (options.filter.minLength > 0.0)
        reason = "shorter than " + plainText(options.filter.minLength);
    if (options.filter.minNodes > 1)
        reason += (reason.empty() ? "" : " or ") + std::string("fewer nodes than ") +
                  std::to_string(options.filter.minNodes);
    return {{"lines", found.dropped.lines}, {"nodes", found.dropped.nodes}, {"reason", reason}};
}

Json remarksJson(const ResultModel& model) {
    Json remarks = Json::array();
    const auto cells = std::count(model.fillTime.begin(), model.fillTime.end(), 0.0F);
    if (cells > 0)
        remarks.push_back(std::to_string(cells) + (cells == 1 ? " cell is" : " cells are") +
                          " not reached by the melt; " +
                          (trappedAirOf(model.notes) == TrappedAir::Close
                               ? "gaps get times as if it had gone on, and weld lines there are a "
                                 "forecast"
                               : "no weld line is found between them, and lines beside them may "
                                 "lie wrong ('weldline analyze --trapped-air close')"));
    if (model.found.lines.undefinedNodes > 0)
        remarks.push_back(std::to_string(model.found.lines.undefinedNodes) +
                          " nodes have no defined angle and belong to no weld line");
    return remarks;
}

// What the result tells of its run; anybody may have changed the file.
Json runOf(const ResultNotes& notes) {
    const Json run = Json::parse(notes.run, nullptr, false);
    return run.is_object() ? run : Json::object();
}

std::string withoutTags(const std::string& json) {
    std::string text;
    text.reserve(json.size());
    for (const char sign : json) {
        if (sign == '<')
            text += "\\u003c";
        else
            text += sign;
    }
    return text;
}

}  // namespace

std::string reportData(const ResultModel& model, const LineOptions& options,
                       const std::string& title) {
    const Json run = runOf(model.notes);
    const Vec3 origin = model.mesh.points.front();
    const std::string name =
        title.empty() ? std::filesystem::path(model.file).filename().string() : title;
    const Json document{{"version", 1},
                        {"title", name},
                        {"program", "weldline " WELDLINE_VERSION},
                        {"units", {{"length", ""}, {"time", ""}}},
                        {"weldLimit", options.weldLimit},
                        {"skin", skinJson(model, origin)},
                        {"lines", linesJson(model.found, origin)},
                        {"linesThroughPart", staysInside(model.found)},
                        {"dropped", droppedJson(model.found, options)},
                        {"histogram", histogramJson(model)},
                        {"settings", settingsJson(run, options)},
                        {"mesh", meshJson(model)},
                        {"remarks", remarksJson(model)}};
    return withoutTags(document.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace weldline
