#include "Compare.h"

#include <algorithm>
#include <cmath>

#include "Comparison.h"
#include "Console.h"
#include "Outputs.h"
#include "ReadResult.h"
#include "base/AtomicFile.h"

namespace weldline {

namespace {

ResultToCompare readForComparing(const std::string& file, const LineOptions& options) {
    ResultModel model = readResult(file, options);
    const std::vector<Vec3>& points = model.mesh.points;
    ResultToCompare result{file, std::move(model.found), typicalCellSize(model.mesh),
                           points.front(), points.front()};
    for (const Vec3 p : points) {
        result.low = {std::min(result.low.x, p.x), std::min(result.low.y, p.y),
                      std::min(result.low.z, p.z)};
        result.high = {std::max(result.high.x, p.x), std::max(result.high.y, p.y),
                       std::max(result.high.z, p.z)};
    }
    return result;
}

constexpr const char* boxesDiffer =
    "' differ; lines are matched by place, so that both parts must lie in the same place and have "
    "the same unit of length";

// Another place or unit of length makes every line gone and new.
void tellWhereBoxesDiffer(const ResultToCompare& a, const ResultToCompare& b) {
    constexpr double sameBox = 0.1;  // of the diagonal
    const double apart = std::max(norm(a.low - b.low), norm(a.high - b.high));
    if (apart <= sameBox * norm(a.high - a.low)) return;
    writeMessage({"note: the boxes of '", a.file, "' and '", b.file, boxesDiffer});
}

}  // namespace

void compareResults(const CompareOptions& options) {
    checkJsonTarget(options.json, options.first);
    checkJsonTarget(options.json, options.second);
    Comparison comparison;
    {
        const StandardOutputAside aside;
        comparison.a = readForComparing(options.first, options.lines);
        comparison.b = readForComparing(options.second, options.lines);
    }
    const ResultToCompare& a = comparison.a;
    const ResultToCompare& b = comparison.b;
    comparison.lineOptions = options.lines;
    comparison.toleranceGiven = options.tolerance.has_value();
    comparison.tolerance = options.tolerance.value_or(2.0 * std::max(a.cellSize, b.cellSize));
    comparison.lines = compareLines({a.found.lines, a.found.shapes},
                                    {b.found.lines, b.found.shapes}, comparison.tolerance);
    tellWhereBoxesDiffer(a, b);
    if (!options.json.empty() && options.json != "-")
        writeWholeFile(options.json, comparisonJson(comparison));
    writeStandardOutput(options.json == "-"
                            ? comparisonJson(comparison)
                            : comparisonTable(comparison, standardOutputTakesStyle()));
}

}  // namespace weldline
