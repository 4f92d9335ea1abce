#include "Proposal.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "AutoGroups.h"
#include "base/Errors.h"

namespace weldline {

namespace {

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

DataSet readFillTime(const InfoOptions& options, const Progress& progress) {
    ReadOptions read;
    read.time = options.time;
    read.series.use = SeriesOptions::Use::WhereNoFillTime;
    read.series.progress = [&](const std::string& text) { progress.within(text); };
    return readDataSet(options.input, read);
}

Proposal proposeFrom(DataSet data, GroupPatterns patterns) {
    const FvMesh mesh = buildFvMesh(data.mesh);
    UncutMesh uncut(mesh.pointCount());
    Proposal proposal;
    proposal.field = data.series ? data.series->field : data.fieldName;
    proposal.series = data.series;
    proposal.patches = makeAutoGroups(uncut.part(), mesh, data.fillTime, data.patches, patterns);
    return proposal;
}

Proposal none(const InputError& obstacle) {
    Proposal proposal;
    proposal.obstacle = obstacle.what();
    return proposal;
}

}  // namespace

// A series takes as long as its fill time, so that it is gone through only where names tell nothing
// at all. On purpose no failure where a series or a mesh is unusable: what the data set holds can
// be told all the same. A fill time is part of what it holds.
Proposal proposeGroups(const InfoOptions& options, const DataSetInfo& info,
                       const std::vector<BoundaryGroups::PatchSummary>& groups,
                       Progress& progress) {
    const bool hasInlet = hasGroup(groups, GroupKind::Inlet);
    const bool hasOutlet = hasGroup(groups, GroupKind::Outlet);
    const bool isStored = hasFillTime(info);
    const bool namesTell = isStored ? hasInlet && hasOutlet : hasInlet || hasOutlet;
    if (namesTell || !(isStored || info.hasSeries) || !hasLinearShapes(info)) return {};
    progress.step("looking for inlets and outlets");
    DataSet data;
    try {
        data = readFillTime(options, progress);
    } catch (const InputError& error) {
        if (isStored) throw;
        return none(error);
    }
    try {
        return proposeFrom(std::move(data), options.patterns);
    } catch (const InputError& error) {
        return none(error);
    }
}

}  // namespace weldline
