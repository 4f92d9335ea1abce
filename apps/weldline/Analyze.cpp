#include "Analyze.h"

#include <filesystem>
#include <memory>

#include "AutoGroups.h"
#include "Console.h"
#include "FindLines.h"
#include "LineCsv.h"
#include "Outputs.h"
#include "Progress.h"
#include "Reasons.h"
#include "RunControl.h"
#include "RunInput.h"
#include "Summary.h"
#include "SummaryJson.h"
#include "Tables.h"
#include "TemporaryFolder.h"
#include "WriteOutputs.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "base/ReadFile.h"
#include "bind/Analysis.h"
#include "bind/HostModel.h"
#include "comm/Agreement.h"
#include "io/WriteExodus.h"
#include "results/FlowDirection.h"

namespace weldline {

namespace {

std::unique_ptr<TemporaryFolder> makeFolder(const std::string& controlText) {
    auto folder = std::make_unique<TemporaryFolder>();
    writeWholeFile(folder->controlFile(), controlText);
    return folder;
}

HostOptions hostOptions(const AnalyzeOptions& options, const TemporaryFolder& folder,
                        const RunInput& input, const RunFillTime& fill) {
    HostOptions host;
    host.controlFile = folder.controlFile();
    host.meshFile = options.input;
    host.meshFileType = options.meshFileType;
    host.gradientSetSwitch = options.gradientSet == 1 ? 0.0 : 1.0;
    host.biInjection = fill.second;
    host.cellState = input.cellState;
    return host;
}

Summary startSummary(const AnalyzeOptions& options, const RunControl& control,
                     const Outputs& outputs, const DataPart& data) {
    Summary summary;
    summary.input = options.input;
    summary.field = data.fieldName;
    summary.time = data.time;
    summary.scale = options.scale;
    summary.settings = control.settings;
    summary.controlFile = control.file;
    summary.meshFileType = options.meshFileType;
    summary.gradientSetSwitch = options.gradientSet == 1 ? 0.0 : 1.0;
    summary.lineOptions = options.lineOptions;
    summary.failOn = options.failOn;
    summary.biField = options.biField;
    summary.cellState = options.cellState;
    summary.zeroTime = options.zeroTime;
    summary.trappedAir = options.trappedAir;
    summary.outputs = outputs;
    summary.remarks = control.remarks;
    return summary;
}

ResultFields resultFields(const RunInput& input, const std::vector<double>& angles,
                          const WeldLines& lines, std::vector<Vec3> directions) {
    const std::vector<double>& raw = input.fillTime();
    return {angles,
            lines.nodeLine,
            std::vector<float>(raw.begin(), raw.end()),
            std::move(directions),
            {},
            {}};
}

void append(std::vector<std::string>& list, const std::vector<std::string>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

void checkControlText(const std::string& file, const std::string& text) {
    std::string bytes;
    if (!readWholeFile(file, bytes) || bytes != text)
        failOnTemporary(file, "the settings of the run cannot be read back");
}

// The library goes on with its own settings when it cannot read these, and says so nowhere but on
// standard output.
RecordedRun calculate(const RankPart& part, HostModel& model, const RunControl& control,
                      const TemporaryFolder& folder, const StandardOutputAside& aside,
                      bool isRecorded) {
    agreeOnFailure(part.ranks, [&] { checkControlText(folder.controlFile(), control.text); });
    RecordedRun run =
        isRecorded ? recordWeldLine(model) : RecordedRun{runWeldLine(model, part), {}};
    agreeOnFailure(part.ranks, [&] {
        checkControlText(folder.controlFile(), control.text);
        if (aside.text().find("Fail to open") != std::string::npos)
            failOnTemporary(folder.controlFile(),
                            "the library could not read the settings of the run");
    });
    return run;
}

std::string standardOutputOf(const Summary& summary) {
    if (summary.outputs.json == "-") return summaryJson(summary);
    if (summary.outputs.csv == "-") return lineCsv(summary.weldLines);
    return summaryTable(summary, standardOutputTakesStyle());
}

void report(const Summary& summary) {
    for (const std::string& remark : summary.remarks) writeMessage({"note: ", remark});
    writeStandardOutput(standardOutputOf(summary));
}

// Errors of mesh and groups tell of cells, faces and patches; the user wants the file, too.
template <class Step>
auto namingFile(const std::string& file, Step step) {
    try {
        return step();
    } catch (const InputError& error) {
        throw InputError(file + ": " + error.what());
    }
}

BoundaryGroups assignGroups(const RankPart& part, const AnalyzeOptions& options, const FvMesh& mesh,
                            RunInput& input, Summary& summary) {
    std::vector<Patch>& patches = input.data.part.patches;
    GroupPatterns patterns = options.patterns;
    if (options.autoGroups)
        append(summary.remarks,
               autoGroupRemarks(makeAutoGroups(part, mesh, input.fillTime(), patches, patterns)));
    BoundaryGroups groups =
        together(part.ranks, [&] { return groupBoundaryFaces(mesh, patches, patterns); });
    addUpPatches(part.ranks, patches.size(), groups);
    return groups;
}

// Not every format of a result takes every cell.
void checkShapes(const std::string& result, const CellMesh& mesh) {
    if (isExodusName(result)) refusePolyhedra(result, mesh);
}

Summary run(Ranks& ranks, const AnalyzeOptions& options, Progress& progress) {
    // Refuse what cannot end well before the long work starts. The library reads its control text
    // from, and writes its trace to, a private folder of each rank, so that nothing half done is
    // ever seen and ranks may run on several machines.
    const RunControl control = prepareControl(ranks, options);
    const Outputs outputs = planOutputs(ranks, options, control);
    const auto folder = together(ranks, [&] { return makeFolder(control.text); });
    const auto aside =
        together(ranks, [&] { return std::make_unique<StandardOutputAside>(ranks.rank() == 0); });

    // 1. Read.
    progress.step("reading " + std::filesystem::path(options.input).filename().string());
    RunInput input =
        readRunInput(ranks, options, [&](const std::string& text) { progress.within(text); });
    MeshPart& own = input.data.part;
    agreeOnFailure(ranks, [&] { checkShapes(outputs.result, own.mesh); });
    Summary summary = startSummary(options, control, outputs, input.data);
    summary.ranks = ranks.size();
    append(summary.remarks, input.data.remarks);
    append(summary.remarks, seriesRemarks(input.data.series));

    // 2. Mesh.
    progress.step("building the mesh of " + std::to_string(input.data.cells) + " cells");
    FvMesh mesh = namingFile(
        options.input, [&] { return together(ranks, [&] { return buildFvMesh(own.mesh); }); });
    const MeshInterface interface =
        namingFile(options.input, [&] { return joinParts(ranks, own, mesh); });
    const RankPart part{ranks, interface, own.nodeNumber};

    // 3. Groups.
    progress.step("assigning the boundary");
    const BoundaryGroups groups = namingFile(
        options.input, [&] { return assignGroups(part, options, mesh, input, summary); });
    describeMesh(summary, ranks, input.data, mesh, groups);
    append(summary.remarks, groupRemarks(groups, options.patterns));

    // 4. Bind.
    progress.step("binding mesh and fill time");
    const RunFillTime fill = prepareRunFillTime(part, options, input, mesh, groups);
    summary.fill = fill.counts;
    append(summary.remarks, fillRemarks(fill.counts));
    const CellsAcross across = cellsAcross(part, fill.merged);
    append(summary.remarks, flatRemarks(ranks.sum(countFlatCells(mesh, fill.merged, across)),
                                        fill.counts, control.settings));
    HostModel model(mesh, groups, fill.first, hostOptions(options, *folder, input, fill), part);

    // 5. Calculate.
    progress.step("calculating the meeting angles of " + std::to_string(input.data.nodes) +
                  " nodes");
    const RecordedRun run = calculate(part, model, control, *folder, *aside, options.reasons);

    // 6. Results.
    progress.step("collecting the weld lines");
    std::vector<Vec3> directions = flowDirections(mesh, fill.merged, across);
    PatchPlaces patches = findPatchPlaces(ranks, mesh, own.patches, groups);
    FoundLines found =
        findLines(part, {mesh, patches, fill.merged, directions, run.angles, input.carried},
                  options.lineOptions);
    describeLines(summary, found);
    append(summary.remarks, resultRemarks(summary));

    // 7. Write.
    progress.step("writing");
    ResultFields fields = resultFields(input, run.angles, summary.weldLines, std::move(directions));
    fields.refusalReason = reasonsOf(options, control, mesh, fill.merged, input.cellState, run);
    agreeOnFailure(ranks, [&] {
        if (ranks.rank() == 0) fields.notes = {std::move(patches), runJson(summary)};
    });
    writeOutputs(ranks, summary, found, control, *folder, std::move(own), std::move(fields));
    return summary;
}

}  // namespace

ExitCode analyze(Ranks& ranks, const AnalyzeOptions& options) {
    Progress progress(7, ranks.rank() == 0);
    const Summary summary = run(ranks, options, progress);
    progress.finish();
    agreeOnFailure(ranks, [&] {
        if (ranks.rank() == 0) report(summary);  // 8. Report.
    });
    if (summary.failing.empty()) return Done;
    if (ranks.rank() == 0) writeMessage({failingText(summary)});
    return LinesRefused;
}

}  // namespace weldline
