#include "Info.h"

#include "Console.h"
#include "Outputs.h"
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
    const DataSetInfo info = [&] {
        const StandardOutputAside aside;
        return describeDataSet(options.input, options.time);
    }();
    const auto groups = groupsByName(info, options.patterns);
    // The file first: when it cannot be written, nothing pretends that all went well.
    if (!options.json.empty() && options.json != "-")
        writeWholeFile(options.json, infoJson(info, groups));
    writeStandardOutput(options.json == "-" ? infoJson(info, groups)
                                            : infoTable(info, groups, standardOutputTakesStyle()));
}

}  // namespace weldline
