#include "Comparison.h"
#include "JsonParts.h"

namespace weldline {

namespace {

Json resultJson(const ResultToCompare& result) {
    return {{"file", result.file},
            {"lines", result.found.lines.lines.size()},
            {"droppedLines", result.found.dropped.lines},
            {"cellSize", number(result.cellSize)}};
}

Json countsJson(const std::vector<ComparedLine>& lines) {
    Json counts = Json::object();
    for (const LineFate fate :
         {LineFate::Same, LineFate::Changed, LineFate::Moved, LineFate::Gone, LineFate::New})
        counts[nameOf(fate)] = 0;
    for (const ComparedLine& line : lines) {
        Json& count = counts[nameOf(line.fate)];
        count = count.get<int>() + 1;
    }
    return counts;
}

Json lineJson(const WeldLine* line) {
    if (line == nullptr) return {};
    return {{"id", line->id},
            {"class", nameOf(line->kind)},
            {"nodes", line->nodeCount},
            {"length", number(line->length)},
            {"smallestAngle", number(line->smallestAngle)},
            {"meanAngle", number(line->meanAngle)},
            {"centroid", vector(line->centroid)}};
}

Json changesJson(const ComparedLine& line) {
    Json changes = Json::array();
    if (line.angleChanged) changes.push_back("angle");
    if (line.lengthChanged) changes.push_back("length");
    if (line.classChanged) changes.push_back("class");
    return changes;
}

}  // namespace

std::string comparisonJson(const Comparison& c) {
    Json lines = Json::array();
    for (const ComparedLine& line : c.lines)
        lines.push_back({{"fate", nameOf(line.fate)},
                         {"a", lineJson(line.before)},
                         {"b", lineJson(line.after)},
                         {"distance", number(line.distance)},
                         {"changes", changesJson(line)}});
    const Json options{{"tolerance", number(c.tolerance)},
                       {"limit", number(c.lineOptions.limit)},
                       {"weldLimit", number(c.lineOptions.weldLimit)},
                       {"minLength", number(c.lineOptions.filter.minLength)},
                       {"minNodes", c.lineOptions.filter.minNodes}};
    return dumped(Json{{"schema", "weldline-comparison/1"},
                       {"program", programJson()},
                       {"a", resultJson(c.a)},
                       {"b", resultJson(c.b)},
                       {"options", options},
                       {"counts", countsJson(c.lines)},
                       {"lines", lines}});
}

}  // namespace weldline
