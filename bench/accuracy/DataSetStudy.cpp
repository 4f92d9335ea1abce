// All schemes on a filling result of a flow solver, where nobody knows the true line.

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "Study.h"
#include "bind/FillTime.h"
#include "io/DataSet.h"
#include "results/WeldLines.h"

namespace weldline::accuracy {

namespace {

// Nodes at most three cells away from a cell that the melt has not reached.
std::vector<bool> nodesBesideEmptyCells(const FvMesh& mesh, const std::vector<float>& fillTime) {
    constexpr int layers = 3;
    std::vector<bool> marked(mesh.points.size(), false);
    for (int layer = 0; layer <= layers; ++layer) {
        std::vector<bool> next = marked;
        for (int c = 0; c < mesh.cellCount(); ++c) {
            const auto nodes = mesh.cellNodes[c];
            const auto isMarked = [&](int n) { return marked[n]; };
            const bool touched = layer == 0 ? !isReached(fillTime[c])
                                            : std::any_of(nodes.begin(), nodes.end(), isMarked);
            if (touched)
                for (const int n : nodes) next[n] = true;
        }
        marked = next;
    }
    return marked;
}

std::vector<std::string> resultRow(const Scheme& scheme, const FvMesh& mesh, const Run& run,
                                   const std::vector<float>& fillTime,
                                   const std::vector<bool>& besideEmpty) {
    const WeldLines lines = findWeldLines(mesh, run.angles, fillTime);
    std::vector<double> angles;
    int beside = 0;
    for (std::size_t n = 0; n < run.angles.size(); ++n) {
        if (!(run.angles[n] < 180.0)) continue;
        angles.push_back(reportedAngle(run.angles[n]));
        beside += besideEmpty[n] ? 1 : 0;
    }
    std::sort(angles.begin(), angles.end());
    std::vector<std::string> row{scheme.name, scheme.gradient, std::to_string(lines.weldNodes)};
    if (angles.empty()) {
        row.insert(row.end(), {"-", "0", "-", "-", "-"});
        return row;
    }
    const auto share = [&](std::size_t count) {
        return percent(static_cast<double>(count) / lines.weldNodes);
    };
    row.push_back(share(static_cast<std::size_t>(beside)));
    row.push_back(std::to_string(lines.lines.size()));
    row.push_back(share(lines.lines.front().nodes.size()));
    row.push_back(fixed(angles.front(), 1));
    row.push_back(fixed(angles[angles.size() / 2], 0));
    return row;
}

}  // namespace

void studyDataSet(const Runner& runner, Document& document, const std::string& file) {
    const std::string name = std::filesystem::path(file).stem().string();
    std::cerr << name << "\n";
    const DataSet data = readDataSet(file, {});
    const FvMesh mesh = buildFvMesh(data.mesh);
    const BoundaryGroups groups = groupBoundaryFaces(mesh, data.patches, {});
    const FillTime fill = prepareFillTime(data.fillTime, mesh, groups);
    const std::vector<bool> besideEmpty = nodesBesideEmptyCells(mesh, fill.values);
    Table table({"scheme", "gradient", "weld nodes", "beside empty cells", "components",
                 "in the largest", "smallest angle", "median angle"});
    for (const Scheme& scheme : comparedSchemes())
        table.add(resultRow(scheme, mesh, runner.run(mesh, groups, fill.values, scheme),
                            fill.values, besideEmpty));
    document.put("data-" + name, std::to_string(mesh.cellCount()) + " cells, of which " +
                                     std::to_string(fill.counts.notReached) + " empty; " +
                                     std::to_string(mesh.pointCount()) + " nodes.\n\n" +
                                     table.markdown());
}

}  // namespace weldline::accuracy
