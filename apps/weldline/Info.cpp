#include "Info.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "AutoGroups.h"
#include "Console.h"
#include "Outputs.h"
#include "SummaryJson.h"
#include "Tables.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "io/DataSet.h"

namespace weldline {

namespace {

// The group of each patch depends on its name alone, so that no mesh is needed.
std::vector<BoundaryGroups::PatchSummary> groupsByName(const DataSetInfo& info,
                                                       const GroupPatterns& patterns) {
    std::vector<Patch> patches;
    for (const auto& patch : info.patches) patches.push_back({patch.name, {}});
    auto groups = groupBoundaryFaces(FvMesh{}, patches, patterns).patches;
    groups.resize(info.patches.size());
    for (std::size_t i = 0; i < groups.size(); ++i) groups[i].faces = info.patches[i].count;
    return groups;
}

bool hasGroup(const std::vector<BoundaryGroups::PatchSummary>& patches, GroupKind kind) {
    return std::any_of(patches.begin(), patches.end(),
                       [&](const auto& patch) { return patch.kind == kind; });
}

bool hasFillTime(const DataSetInfo& info) {
    return std::any_of(info.arrays.begin(), info.arrays.end(), [](const auto& array) {
        return array.where == "cells" && (array.name == "FillTime" || array.name == "fillTime");
    });
}

// Whether a mesh can be built: volume cells of linear shapes, perhaps beside surfaces and lines.
bool hasLinearShapes(const DataSetInfo& info) {
    constexpr std::array<std::string_view, 8> volumes{
        "Tetra", "Pyramid",         "Wedge",          "Hexahedron",
        "Voxel", "PentagonalPrism", "HexagonalPrism", "Polyhedron"};
    constexpr std::array<std::string_view, 8> others{
        "Vertex", "Line", "PolyLine", "Triangle", "Polygon", "Pixel", "Quad", "TriangleStrip"};
    const auto isIn = [](const auto& names) {
        return [&names](const auto& shape) {
            return std::find(names.begin(), names.end(), shape.name) != names.end();
        };
    };
    const auto& shapes = info.cellShapes;
    return std::any_of(shapes.begin(), shapes.end(), isIn(volumes)) &&
           std::all_of(shapes.begin(), shapes.end(), [&](const auto& shape) {
               return isIn(volumes)(shape) || isIn(others)(shape);
           });
}

struct Proposal {
    std::vector<MadePatch> patches;
    std::string obstacle;  // why there are none; empty: nothing to tell
};

// Nothing where names tell inlets and outlets, or where the data set holds no fill time.
Proposal proposal(const InfoOptions& options, const DataSetInfo& info,
                  const std::vector<BoundaryGroups::PatchSummary>& groups) {
    const bool namesTell =
        hasGroup(groups, GroupKind::Inlet) && hasGroup(groups, GroupKind::Outlet);
    if (namesTell || !hasFillTime(info) || !hasLinearShapes(info)) return {};
    ReadOptions read;
    read.time = options.time;
    DataSet data = readDataSet(options.input, read);
    try {
        const FvMesh mesh = buildFvMesh(data.mesh);
        UncutMesh uncut(mesh.pointCount());
        GroupPatterns patterns = options.patterns;
        return {makeAutoGroups(uncut.part(), mesh, data.fillTime, data.patches, patterns), ""};
    } catch (const InputError& error) {
        // On purpose no failure: what the data set holds can be told all the same.
        return {{}, error.what()};
    }
}

}  // namespace

void showInfo(const InfoOptions& options) {
    checkJsonTarget(options.json, options.input);
    std::vector<BoundaryGroups::PatchSummary> groups;
    Proposal proposed;
    const DataSetInfo info = [&] {
        const StandardOutputAside aside;
        DataSetInfo all = describeDataSet(options.input, options.time);
        groups = groupsByName(all, options.patterns);
        proposed = proposal(options, all, groups);
        return all;
    }();
    if (!proposed.obstacle.empty())
        writeMessage({"note: inlets and outlets cannot be proposed: ", proposed.obstacle});
    const std::string json = options.json.empty() ? "" : infoJson(info, groups, proposed.patches);
    // The file first: when it cannot be written, nothing pretends that all went well.
    if (!options.json.empty() && options.json != "-") writeWholeFile(options.json, json);
    const bool style = standardOutputTakesStyle();
    writeStandardOutput(options.json == "-" ? json
                                            : infoTable(info, groups, proposed.patches, style));
}

}  // namespace weldline
