#include "Check.h"

#include <algorithm>
#include <filesystem>

#include "CheckFindings.h"
#include "Console.h"
#include "Outputs.h"
#include "Progress.h"
#include "Summary.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "bind/FillTime.h"
#include "io/DataSet.h"
#include "mesh/WallLayers.h"
#include "results/FlowDirection.h"

namespace weldline {

namespace {

DataSet readInput(const CheckOptions& options, Progress& progress) {
    const StandardOutputAside aside;
    ReadOptions read;
    read.fieldGiven = !options.field.empty();
    if (read.fieldGiven) read.field = options.field;
    read.time = options.time;
    if (!read.fieldGiven) read.series.use = SeriesOptions::Use::WhereNoFillTime;
    read.series.progress = [&](const std::string& text) { progress.within(text); };
    return readDataSet(options.input, read);
}

CheckedInput lookAt(const CheckOptions& options, const DataSet& data) {
    try {
        const FvMesh mesh = buildFvMesh(data.mesh);
        const BoundaryGroups groups = groupBoundaryFaces(mesh, data.patches, options.patterns);
        const FillTime fill = prepareFillTime(data.fillTime, mesh, groups);
        if (fill.counts.reached == 0)
            throw InputError("the melt reaches no cell in '" + data.fieldName + "'");
        CheckedInput input;
        input.file = options.input;
        input.field = data.series ? data.series->field : data.fieldName;
        input.cells = mesh.cellCount();
        input.mesh = qualityOf(mesh);
        input.fill = qualityOf(mesh, groups, fill.values, flowDirections(mesh, fill.values));
        input.layers = layersBehindWalls(mesh, groups);
        input.series = data.series;
        input.hasOutlets = std::find(groups.kinds.begin(), groups.kinds.end(), GroupKind::Outlet) !=
                           groups.kinds.end();
        if (!input.fill.pockets.empty())
            input.largestPocket = mesh.cellCentre[input.fill.pockets.front().cell];
        const auto& late = input.fill.lateCells;
        const auto latest = std::max_element(late.begin(), late.end(), [&](int a, int b) {
            return fill.values[a] < fill.values[b];
        });
        if (latest != late.end()) input.latest = mesh.cellCentre[*latest];
        return input;
    } catch (const InputError& error) {
        throw InputError(options.input + ": " + error.what());
    }
}

}  // namespace

void checkInput(const CheckOptions& options) {
    checkJsonTarget(options.json, options.input);
    Progress progress(2, true);
    progress.step("reading " + std::filesystem::path(options.input).filename().string());
    const DataSet data = readInput(options, progress);
    progress.step("looking at mesh and fill time");
    const CheckedInput input = lookAt(options, data);
    const std::vector<Finding> findings = findingsOf(input);
    progress.finish();
    for (const auto& remarks : {data.remarks, seriesRemarks(data.series)})
        for (const std::string& remark : remarks) writeMessage({"note: ", remark});
    if (!options.json.empty() && options.json != "-")
        writeWholeFile(options.json, findingsJson(input, findings));
    writeStandardOutput(options.json == "-"
                            ? findingsJson(input, findings)
                            : findingsTable(input, findings, standardOutputTakesStyle()));
}

}  // namespace weldline
