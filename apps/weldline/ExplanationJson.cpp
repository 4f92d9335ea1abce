#include <array>

#include "Explanation.h"
#include "JsonParts.h"

namespace weldline {

namespace {

std::string nameOf(NodeVerdict verdict) {
    constexpr std::array<const char*, 5> names{"kept", "nothing meets", "above limit", "isolated",
                                               "different"};
    return names[static_cast<std::size_t>(verdict)];
}

Json cellsJson(const std::vector<CellAtNode>& cells) {
    Json list = Json::array();
    for (const CellAtNode& c : cells)
        list.push_back({{"cell", c.cell},
                        {"fillTime", number(c.fillTime)},
                        {"reached", c.fillTime > 0.0},
                        {"centre", vector(c.centre)},
                        {"gradient", vector(c.gradient)},
                        {"gradientLength", number(norm(c.gradient))},
                        {"flat", c.isFlat},
                        {"boundaryFaces", c.boundaryFaces}});
    return list;
}

Json refusalJson(const Judgement& judgement) {
    if (judgement.refusal == Refusal::None) return {};
    return {{"code", static_cast<int>(judgement.refusal)},
            {"test", nameOf(judgement.refusal)},
            {"cell", judgement.cell < 0 ? Json() : Json(judgement.cell)},
            {"value", number(judgement.value)},
            {"limit", number(judgement.limit)}};
}

Json pairsJson(const std::vector<PairAtNode>& pairs) {
    Json list = Json::array();
    for (const PairAtNode& pair : pairs)
        list.push_back({{"cells", {pair.a, pair.b}},
                        {"point", vector(pair.point)},
                        {"meetingAngle", number(180.0 - pair.judgement.angle)},
                        {"refusal", refusalJson(pair.judgement)},
                        {"kept", pair.isKept},
                        {"text", describe(pair)}});
    return list;
}

}  // namespace

std::string explanationJson(const Explanation& e) {
    const Json because{{"verdict", nameOf(e.node.verdict)}, {"text", describe(e.node)}};
    return dumped(Json{{"schema", "weldline-explanation/1"},
                       {"program", programJson()},
                       {"file", e.file},
                       {"node", e.node.node},
                       {"place", vector(e.node.place)},
                       {"angle", number(e.storedAngle)},
                       {"calculatedAngle", number(e.node.angle)},
                       {"line", e.line},
                       {"method", e.settings.method},
                       {"limit", number(e.node.limit)},
                       {"because", because},
                       {"cells", cellsJson(e.node.cells)},
                       {"pairs", pairsJson(e.node.pairs)},
                       {"differingNodes", e.differingNodes},
                       {"remarks", e.remarks}});
}

}  // namespace weldline
