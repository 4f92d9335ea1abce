#include "Summary.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/ShortNumber.h"
#include "comm/Messages.h"
#include "results/LineRule.h"

namespace weldline {

namespace {

constexpr std::array<const char*, 5> kindNames{"tetrahedra", "pyramids", "wedges", "hexahedra",
                                               "polyhedra"};

std::string counted(long long number, const std::string& one, const std::string& many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

std::string cellsAre(long long number) {
    return counted(number, "cell is", "cells are");
}

// Always in the order of the ranks.
double sumByRank(Ranks& ranks, double value) {
    double sum = 0.0;
    for (const Bytes& message : gatherToAll(ranks, toBytes(std::vector{value})))
        sum += fromBytes<double>(message).front();
    return sum;
}

void describeBox(Summary& summary, Ranks& ranks, const std::vector<Vec3>& points) {
    constexpr double far = std::numeric_limits<double>::max();
    Vec3 low{far, far, far};
    Vec3 high{-far, -far, -far};
    for (const Vec3 p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    summary.low = {-ranks.maximum(-low.x), -ranks.maximum(-low.y), -ranks.maximum(-low.z)};
    summary.high = {ranks.maximum(high.x), ranks.maximum(high.y), ranks.maximum(high.z)};
}

std::string gapRemark(const FillTimeCounts& counts) {
    const std::string marked =
        counts.marked > 0 ? " (" + std::to_string(counts.marked) + " NaN, infinite or negative)"
                          : "";
    const std::string gaps = cellsAre(counts.notReached) + " not reached by the melt" + marked;
    if (counts.closed == 0)
        return gaps +
               "; no weld line is found between them, and lines beside them may lie wrong: "
               "'--trapped-air close' closes such gaps";
    const std::string closed =
        counts.closed == counts.notReached ? "they" : std::to_string(counts.closed) + " of them";
    return gaps + "; " + closed +
           " get a time as if the melt had gone on, and weld lines there are a forecast";
}

}  // namespace

std::string nameOf(GroupKind kind) {
    constexpr std::array<const char*, 4> names{"wall", "inlet", "outlet", "symmetry"};
    return names[static_cast<std::size_t>(kind)];
}

void describeMesh(Summary& summary, Ranks& ranks, const DataPart& data, const FvMesh& mesh,
                  const BoundaryGroups& groups) {
    std::array<std::int64_t, kindNames.size()> counts{};
    for (const CellKind kind : data.part.mesh.kinds) ++counts[static_cast<std::size_t>(kind)];
    for (std::size_t k = 0; k < counts.size(); ++k) {
        const std::int64_t cells = ranks.sum(counts[k]);
        if (cells > 0) summary.kinds.push_back({kindNames[k], cells});
    }
    summary.cells = data.cells;
    summary.nodes = data.nodes;
    summary.innerFaces = ranks.sum(mesh.innerFaces) + ranks.sum(mesh.interfaceFaces) / 2;
    summary.boundaryFaces = ranks.sum(mesh.boundaryFaces());
    double volume = 0.0;
    for (const double cell : mesh.cellVolume) volume += cell;
    summary.volume = sumByRank(ranks, volume);
    describeBox(summary, ranks, mesh.points);
    summary.patches = groups.patches;
}

void addUpPatches(Ranks& ranks, std::size_t named, BoundaryGroups& groups) {
    std::int64_t without = 0;
    for (std::size_t p = named; p < groups.patches.size(); ++p) without += groups.patches[p].faces;
    groups.patches.resize(named);
    for (auto& patch : groups.patches) patch.faces = ranks.sum(patch.faces);
    without = ranks.sum(without);
    if (without > 0) groups.patches.push_back({"(no patch)", GroupKind::Wall, without});
}

std::vector<std::string> groupRemarks(const BoundaryGroups& groups, const GroupPatterns& patterns) {
    if (!groups.fromDataSet)
        return {"the data set has no patches, so every boundary face is taken as wall"};
    std::vector<std::string> remarks;
    const auto& patches = groups.patches;
    if (std::none_of(patches.begin(), patches.end(),
                     [](const auto& patch) { return patch.kind == GroupKind::Inlet; }))
        remarks.push_back("no patch name matches '" + patterns.inlet +
                          "', so there is no inlet; name it with --inlet");
    if (!patches.empty() && patches.back().name == "(no patch)" && patches.back().faces > 0)
        remarks.push_back(counted(patches.back().faces, "boundary face is", "boundary faces are") +
                          " in no patch and taken as wall");
    return remarks;
}

std::string describe(const SeriesFill& series) {
    return "made from '" + series.field + "' at " + std::to_string(series.steps) +
           " times, up to " + shortNumber(series.largestStep) + " apart (first crossing of " +
           shortNumber(series.level) + ")";
}

std::vector<std::string> seriesRemarks(const std::optional<SeriesFill>& series) {
    if (!series) return {};
    std::vector<std::string> remarks{"the data set holds no fill time; it is " + describe(*series)};
    if (series->atStart > 0)
        remarks.push_back(cellsAre(series->atStart) + " full at the first time");
    if (series->emptied > 0)
        remarks.push_back(counted(series->emptied, "cell empties", "cells empty") +
                          " again after the melt came; the first crossing counts");
    return remarks;
}

std::vector<std::string> fillRemarks(const FillTimeCounts& counts) {
    std::vector<std::string> remarks;
    if (counts.notReached > 0) remarks.push_back(gapRemark(counts));
    if (counts.zeroFilled > 0)
        remarks.push_back(cellsAre(counts.zeroFilled) +
                          " filled at time 0 and get a small positive time");
    return remarks;
}

// A tenth of the part without flow is more than the dead corners of a real filling.
std::vector<std::string> flatRemarks(std::int64_t flatCells, const FillTimeCounts& counts,
                                     const Settings& settings) {
    const bool hasFlatLimit = stagesOf(settings).first == FirstGradient::Upwind;
    if (!hasFlatLimit || flatCells <= counts.reached / 10) return {};
    return {
        "in " + counted(flatCells, "cell", "cells") +
        " the fill time rises by less than 0.001 per unit of length, which the gradient takes as "
        "no flow; give lengths in a larger unit, such as metres (--scale)"};
}

std::vector<std::string> resultRemarks(const Summary& summary) {
    std::vector<std::string> remarks;
    if (summary.weldLines.undefinedNodes > 0)
        remarks.push_back(counted(summary.weldLines.undefinedNodes, "node has", "nodes have") +
                          " no defined angle (NaN) and belong to no weld line");
    if (summary.dropped.lines > 0)
        remarks.push_back(counted(summary.dropped.lines, "line", "lines") + " with " +
                          counted(summary.dropped.nodes, "node", "nodes") +
                          " in all left out, below --min-length or --min-nodes");
    return remarks;
}

void describeLines(Summary& summary, FoundLines& found) {
    summary.weldLines = std::move(found.lines);
    summary.dropped = found.dropped;
    if (summary.failOn.empty()) return;
    const LineRule rule(summary.failOn);
    for (const WeldLine& line : summary.weldLines.lines)
        if (rule.holdsFor(line)) summary.failing.push_back(line.id);
}

std::string unitsText(double scale) {
    return scale == 1.0 ? "lengths and times as in the data set"
                        : "lengths of the data set times " + shortNumber(scale) +
                              ", times as in the data set";
}

std::string failingText(const Summary& summary) {
    std::string ids;
    for (const int id : summary.failing) ids += (ids.empty() ? "" : ", ") + std::to_string(id);
    return summary.input + ": '" + summary.failOn + "' holds for " +
           (summary.failing.size() == 1 ? "weld line " : "weld lines ") + ids;
}

}  // namespace weldline
