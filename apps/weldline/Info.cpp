#include "Info.h"

#include <filesystem>

#include "Console.h"
#include "Outputs.h"
#include "Progress.h"
#include "Proposal.h"
#include "SummaryJson.h"
#include "Tables.h"
#include "base/AtomicFile.h"
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

}  // namespace

void showInfo(const InfoOptions& options) {
    checkJsonTarget(options.json, options.input);
    std::vector<BoundaryGroups::PatchSummary> groups;
    Proposal proposal;
    Progress progress(2, true);
    progress.step("reading " + std::filesystem::path(options.input).filename().string());
    const DataSetInfo info = [&] {
        const StandardOutputAside aside;
        DataSetInfo all = describeDataSet(options.input, options.time);
        groups = groupsByName(all, options.patterns);
        proposal = proposeGroups(options, all, groups, progress);
        return all;
    }();
    progress.finish();
    for (const std::string& remark : info.remarks) writeMessage({"note: ", remark});
    if (!proposal.obstacle.empty())
        writeMessage({"note: inlets and outlets cannot be proposed: ", proposal.obstacle});
    const std::string json = options.json.empty() ? "" : infoJson(info, groups, proposal);
    // The file first: when it cannot be written, nothing pretends that all went well.
    if (!options.json.empty() && options.json != "-") writeWholeFile(options.json, json);
    const bool style = standardOutputTakesStyle();
    writeStandardOutput(options.json == "-" ? json : infoTable(info, groups, proposal, style));
}

}  // namespace weldline
