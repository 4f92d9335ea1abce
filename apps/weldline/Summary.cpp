#include "Summary.h"

#include <algorithm>
#include <array>

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

}  // namespace

std::string nameOf(GroupKind kind) {
    constexpr std::array<const char*, 4> names{"wall", "inlet", "outlet", "symmetry"};
    return names[static_cast<std::size_t>(kind)];
}

void describeMesh(Summary& summary, const CellMesh& cells, const FvMesh& mesh,
                  const BoundaryGroups& groups) {
    std::array<long long, kindNames.size()> counts{};
    for (const CellKind kind : cells.kinds) ++counts[static_cast<std::size_t>(kind)];
    for (std::size_t k = 0; k < counts.size(); ++k)
        if (counts[k] > 0) summary.kinds.push_back({kindNames[k], counts[k]});
    summary.cells = mesh.cellCount();
    summary.nodes = mesh.pointCount();
    summary.innerFaces = mesh.innerFaces;
    summary.boundaryFaces = mesh.boundaryFaces();
    for (const double volume : mesh.cellVolume) summary.volume += volume;
    summary.low = summary.high = mesh.points.front();
    for (const Vec3 p : mesh.points) {
        summary.low = {std::min(summary.low.x, p.x), std::min(summary.low.y, p.y),
                       std::min(summary.low.z, p.z)};
        summary.high = {std::max(summary.high.x, p.x), std::max(summary.high.y, p.y),
                        std::max(summary.high.z, p.z)};
    }
    summary.patches = groups.patches;
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

std::vector<std::string> fillRemarks(const FillTimeCounts& counts) {
    std::vector<std::string> remarks;
    if (counts.notReached > 0)
        remarks.push_back(cellsAre(counts.notReached) + " not reached by the melt" +
                          (counts.marked > 0 ? " (" + std::to_string(counts.marked) +
                                                   " NaN, infinite or negative)"
                                             : "") +
                          "; no weld line is found between them");
    if (counts.zeroFilled > 0)
        remarks.push_back(cellsAre(counts.zeroFilled) +
                          " filled at time 0 and get a small positive time");
    return remarks;
}

// A tenth of the part without flow is more than the dead corners of a real filling.
std::vector<std::string> flatRemarks(int flatCells, const FillTimeCounts& counts,
                                     const Settings& settings) {
    const bool hasFlatLimit = stagesOf(settings).first == FirstGradient::Upwind;
    if (!hasFlatLimit || flatCells <= counts.reached / 10) return {};
    return {
        "in " + counted(flatCells, "cell", "cells") +
        " the fill time rises by less than 0.001 per unit of length, which the gradient takes as "
        "no flow; give lengths in a larger unit, such as metres"};
}

std::vector<std::string> resultRemarks(const WeldLines& lines) {
    if (lines.undefinedNodes == 0) return {};
    return {counted(lines.undefinedNodes, "node has", "nodes have") +
            " no defined angle (NaN) and belong to no weld line"};
}

}  // namespace weldline
