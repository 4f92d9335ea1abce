#include "Info.h"

#include <algorithm>

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

// Nothing where names tell inlets and outlets, or where the data set holds no fill time.
std::vector<MadePatch> proposal(const InfoOptions& options,
                                const std::vector<BoundaryGroups::PatchSummary>& groups) {
    if (hasGroup(groups, GroupKind::Inlet) && hasGroup(groups, GroupKind::Outlet)) return {};
    try {
        ReadOptions read;
        read.time = options.time;
        DataSet data = readDataSet(options.input, read);
        const FvMesh mesh = buildFvMesh(data.mesh);
        UncutMesh uncut(mesh.pointCount());
        GroupPatterns patterns = options.patterns;
        return makeAutoGroups(uncut.part(), mesh, data.fillTime, data.patches, patterns);
    } catch (const InputError&) {
        // On purpose: what the data set holds can be told all the same.
        return {};
    }
}

}  // namespace

void showInfo(const InfoOptions& options) {
    checkJsonTarget(options.json, options.input);
    std::vector<BoundaryGroups::PatchSummary> groups;
    std::vector<MadePatch> proposed;
    const DataSetInfo info = [&] {
        const StandardOutputAside aside;
        DataSetInfo all = describeDataSet(options.input, options.time);
        groups = groupsByName(all, options.patterns);
        proposed = proposal(options, groups);
        return all;
    }();
    const std::string json = options.json.empty() ? "" : infoJson(info, groups, proposed);
    // The file first: when it cannot be written, nothing pretends that all went well.
    if (!options.json.empty() && options.json != "-") writeWholeFile(options.json, json);
    const bool style = standardOutputTakesStyle();
    writeStandardOutput(options.json == "-" ? json : infoTable(info, groups, proposed, style));
}

}  // namespace weldline
