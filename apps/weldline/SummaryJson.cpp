#include "SummaryJson.h"

#include <array>
#include <filesystem>

#include "JsonParts.h"
#include "RunNotes.h"

namespace weldline {

namespace {

Json box(Vec3 low, Vec3 high) {
    return {{"low", vector(low)}, {"high", vector(high)}};
}

Json patchesJson(const std::vector<BoundaryGroups::PatchSummary>& patches) {
    Json list = Json::array();
    for (const auto& patch : patches)
        list.push_back(
            {{"name", patch.name}, {"group", nameOf(patch.kind)}, {"faces", patch.faces}});
    return list;
}

Json proposedJson(const std::vector<MadePatch>& proposed) {
    Json list = Json::array();
    for (const MadePatch& made : proposed) {
        Json from = Json::array();
        for (const MadePatch::Source& source : made.from)
            from.push_back({{"name", source.patch}, {"faces", source.faces}});
        list.push_back({{"group", nameOf(made.kind)},
                        {"faces", made.faces},
                        {"box", box(made.low, made.high)},
                        {"patches", from}});
    }
    return list;
}

// Where the fill time comes from that the proposal rests on.
Json proposedFromJson(const Proposal& proposal) {
    if (proposal.patches.empty()) return {};
    Json series;
    if (proposal.series)
        series = {{"times", proposal.series->steps},
                  {"largestStep", number(proposal.series->largestStep)},
                  {"level", number(proposal.series->level)}};
    return {{"field", proposal.field}, {"series", series}};
}

Json meshJson(const Summary& s) {
    Json kinds = Json::object();
    for (const auto& kind : s.kinds) kinds[kind.name] = kind.cells;
    std::array<long long, 4> faces{};
    for (const auto& patch : s.patches) faces[static_cast<std::size_t>(patch.kind)] += patch.faces;
    Json groups = Json::object();
    for (const GroupKind kind :
         {GroupKind::Wall, GroupKind::Inlet, GroupKind::Outlet, GroupKind::Symmetry})
        groups[nameOf(kind)] = faces[static_cast<std::size_t>(kind)];
    return {{"cells", s.cells},
            {"cellsByKind", kinds},
            {"nodes", s.nodes},
            {"innerFaces", s.innerFaces},
            {"boundaryFaces", s.boundaryFaces},
            {"groups", groups},
            {"patches", patchesJson(s.patches)},
            {"volume", number(s.volume)},
            {"box", box(s.low, s.high)}};
}

Json settingsJson(const Summary& s) {
    const Settings& t = s.settings;
    return {{"WeldlingAngleMethod", t.method},
            {"nSmooth_beforeGrad", t.smoothBefore},
            {"nSmooth_afterGrad", t.smoothAfter},
            {"nGrad", t.gradientIterations},
            {"TruncateAngle", number(t.truncateAngle)},
            {"BoundaryAngle", number(t.boundaryAngle)},
            {"GradValueFilterPara", number(t.gradientFilter)},
            {"VolumeFilter", number(t.volumeFilter)},
            {"GradMethodMFT", t.gradientMethod},
            {"FlagDebugOutput", t.debugOutput ? 1 : 0},
            {"stages", describeStages(stagesOf(t))},
            {"controlFile", textOrNull(s.controlFile)},
            {"meshFileType", s.meshFileType},
            {"gradientSetSwitch", number(s.gradientSetSwitch)},
            {"limit", number(s.lineOptions.limit)},
            {"weldLimit", number(s.lineOptions.weldLimit)},
            {"minLength", number(s.lineOptions.filter.minLength)},
            {"minNodes", s.lineOptions.filter.minNodes},
            {"failOn", textOrNull(s.failOn)}};
}

Json countsJson(const Summary& s) {
    return {{"reachedCells", s.fill.reached},
            {"unreachedCells", s.fill.notReached},
            {"markedCells", s.fill.marked},
            {"cellsFilledAtZero", s.fill.zeroFilled},
            {"closedCells", s.fill.closed},
            {"weldNodes", s.weldLines.weldNodes},
            {"undefinedNodes", s.weldLines.undefinedNodes},
            {"components", s.weldLines.lines.size()},
            {"droppedLines", s.dropped.lines},
            {"droppedNodes", s.dropped.nodes}};
}

Json carriedJson(const WeldLine& line) {
    Json fields = Json::object();
    for (const CarriedValue& value : line.carried)
        fields[value.name] = {{"smallest", number(value.smallest)},
                              {"mean", number(value.mean)},
                              {"largest", number(value.largest)}};
    return fields;
}

Json patchJson(const WeldLine& line) {
    if (line.patch.empty()) return {};
    return {{"name", line.patch}, {"distance", number(line.patchDistance)}};
}

Json componentsJson(const WeldLines& lines) {
    Json list = Json::array();
    for (const WeldLine& line : lines.lines)
        list.push_back({{"id", line.id},
                        {"class", nameOf(line.kind)},
                        {"nodes", line.nodeCount},
                        {"length", number(line.length)},
                        {"branchLength", number(line.branchLength)},
                        {"skinLength", number(line.skinLength)},
                        {"smallestAngle", number(line.smallestAngle)},
                        {"meanAngle", number(line.meanAngle)},
                        {"box", box(line.low, line.high)},
                        {"centroid", vector(line.centroid)},
                        {"formationTime",
                         {{"first", number(line.firstTime)}, {"last", number(line.lastTime)}}},
                        {"nearestPatch", patchJson(line)},
                        {"carried", carriedJson(line)}});
    return list;
}

Json outputsJson(const Outputs& outputs) {
    return {{"result", textOrNull(outputs.result)},   {"json", textOrNull(outputs.json)},
            {"control", textOrNull(outputs.control)}, {"trace", textOrNull(outputs.trace)},
            {"lines", textOrNull(outputs.lines)},     {"csv", textOrNull(outputs.csv)}};
}

}  // namespace

std::string runJson(const Summary& s) {
    Json settings = settingsJson(s);
    for (const char* name :
         {"controlFile", "limit", "weldLimit", "minLength", "minNodes", "failOn"})
        settings.erase(name);
    return dumped(Json{{"schema", "weldline-run/1"},
                       {"program", programJson()},
                       {"input", std::filesystem::path(s.input).filename().string()},
                       {"field", s.field},
                       {"time", s.time ? number(*s.time) : Json()},
                       {"scale", number(s.scale)},
                       {"mesh", meshJson(s)},
                       {"settings", settings},
                       {"zeroTime", nameOf(s.zeroTime)},
                       {"trappedAir", nameOf(s.trappedAir)},
                       {"biField", textOrNull(s.biField)},
                       {"cellState", textOrNull(s.cellState)}});
}

std::string summaryJson(const Summary& s) {
    const Json input{{"file", s.input},
                     {"field", s.field},
                     {"time", s.time ? number(*s.time) : Json()},
                     {"scale", number(s.scale)},
                     {"units", unitsText(s.scale)},
                     {"biField", textOrNull(s.biField)},
                     {"cellState", textOrNull(s.cellState)}};
    const Json fillTime{{"earliest", number(s.fill.earliest)}, {"latest", number(s.fill.latest)}};
    return dumped(Json{{"schema", "weldline-summary/1"},
                       {"program", programJson()},
                       {"ranks", s.ranks},
                       {"input", input},
                       {"mesh", meshJson(s)},
                       {"settings", settingsJson(s)},
                       {"counts", countsJson(s)},
                       {"fillTime", fillTime},
                       {"components", componentsJson(s.weldLines)},
                       {"failing", s.failing},
                       {"outputs", outputsJson(s.outputs)},
                       {"remarks", s.remarks}});
}

std::string infoJson(const DataSetInfo& info,
                     const std::vector<BoundaryGroups::PatchSummary>& groups,
                     const Proposal& proposal) {
    Json shapes = Json::object();
    for (const auto& shape : info.cellShapes) shapes[shape.name] = shape.count;
    Json blocks = Json::array();
    for (const auto& block : info.blocks)
        blocks.push_back({{"name", block.name}, {"cells", block.count}});
    Json arrays = Json::array();
    for (const auto& array : info.arrays)
        arrays.push_back({{"name", array.name},
                          {"where", array.where},
                          {"type", array.type},
                          {"components", array.components},
                          {"minimum", number(array.minimum)},
                          {"maximum", number(array.maximum)}});
    Json times = Json::array();
    for (const double time : info.times) times.push_back(number(time));
    return dumped(Json{{"schema", "weldline-info/1"},
                       {"program", programJson()},
                       {"file", info.file},
                       {"format", info.format},
                       {"points", info.points},
                       {"cells", info.cells},
                       {"cellShapes", shapes},
                       {"box", box(info.low, info.high)},
                       {"blocks", blocks},
                       {"patches", patchesJson(groups)},
                       {"proposed", proposedJson(proposal.patches)},
                       {"proposedFrom", proposedFromJson(proposal)},
                       {"arrays", arrays},
                       {"times", times}});
}

}  // namespace weldline
