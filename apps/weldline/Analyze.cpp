#include "Analyze.h"

#include <filesystem>
#include <memory>
#include <string_view>

#include "Console.h"
#include "Outputs.h"
#include "Progress.h"
#include "RunControl.h"
#include "RunInput.h"
#include "Summary.h"
#include "SummaryJson.h"
#include "Tables.h"
#include "TemporaryFolder.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "base/ReadFile.h"
#include "base/SignalsHeld.h"
#include "bind/Analysis.h"
#include "bind/HostModel.h"
#include "io/WriteResult.h"
#include "results/FlowDirection.h"

namespace weldline {

namespace {

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
                     const Outputs& outputs, const DataSet& data) {
    Summary summary;
    summary.input = options.input;
    summary.field = data.fieldName;
    summary.time = data.time;
    summary.settings = control.settings;
    summary.controlFile = control.file;
    summary.meshFileType = options.meshFileType;
    summary.gradientSetSwitch = options.gradientSet == 1 ? 0.0 : 1.0;
    summary.maxAngle = options.maxAngle;
    summary.biField = options.biField;
    summary.cellState = options.cellState;
    summary.outputs = outputs;
    summary.remarks = control.remarks;
    return summary;
}

ResultFields resultFields(const RunInput& input, const FvMesh& mesh, const RunFillTime& fill,
                          const std::vector<double>& angles, const WeldLines& lines) {
    const auto& raw = input.data.fillTime;
    return {angles, lines.nodeLine, std::vector<float>(raw.begin(), raw.end()),
            flowDirections(mesh, fill.merged)};
}

void append(std::vector<std::string>& list, const std::vector<std::string>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

[[noreturn]] void failOnTemporary(const std::string& file, const std::string& what) {
    throw RunError(file + ": " + what +
                   "; let the environment variable TMPDIR name a folder with free space");
}

void checkControlText(const std::string& file, const std::string& text) {
    std::string bytes;
    if (!readWholeFile(file, bytes) || bytes != text)
        failOnTemporary(file, "the settings of the run cannot be read back");
}

// The library goes on with its own settings when it cannot read these, and says so nowhere but on
// standard output.
std::vector<double> calculate(HostModel& model, const RunControl& control,
                              const TemporaryFolder& folder, const StandardOutputAside& aside) {
    checkControlText(folder.controlFile(), control.text);
    std::vector<double> angles = runWeldLine(model);
    checkControlText(folder.controlFile(), control.text);
    if (aside.text().find("Fail to open") != std::string::npos)
        failOnTemporary(folder.controlFile(), "the library could not read the settings of the run");
    return angles;
}

// The library says nothing about a trace that it could not write; a whole one ends with the line
// of the last thing it does.
std::string wholeTrace(const std::string& file) {
    constexpr std::string_view end = "calWeldLine: ~CKVR3DWeldLine...Done!!\n";
    std::string trace;
    if (!readWholeFile(file, trace) || !trace.ends_with(end))
        failOnTemporary(file, "the trace of the calculation could not be written");
    return trace;
}

// All files are complete on the disk before the first takes its place, so that a full disk leaves
// nothing of this run. Signals wait until the last has its place.
void writeOutputs(const Summary& summary, const RunControl& control, const TemporaryFolder& folder,
                  const CellMesh& mesh, const ResultFields& fields) {
    const Outputs& outputs = summary.outputs;
    std::vector<std::unique_ptr<AtomicFile>> files;
    const auto prepare = [&](const std::string& file, const std::string& bytes) {
        if (file.empty()) return;
        files.push_back(std::make_unique<AtomicFile>(file));
        files.back()->write(bytes);
    };
    if (!outputs.result.empty()) prepare(outputs.result, resultBytes(outputs.result, mesh, fields));
    prepare(outputs.control, control.text);
    if (!outputs.trace.empty()) prepare(outputs.trace, wholeTrace(folder.traceFile()));
    if (outputs.json != "-" && !outputs.json.empty()) prepare(outputs.json, summaryJson(summary));
    for (const auto& file : files) file->finish();
    const SignalsHeld held;
    for (const auto& file : files) file->commit();
}

void report(const Summary& summary) {
    for (const std::string& remark : summary.remarks) writeMessage({"note: ", remark});
    writeStandardOutput(summary.outputs.json == "-"
                            ? summaryJson(summary)
                            : summaryTable(summary, standardOutputTakesStyle()));
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

Summary run(const AnalyzeOptions& options, Progress& progress) {
    // Refuse what cannot end well before the long work starts. The library reads its control text
    // from, and writes its trace to, a private folder, so that nothing half done is ever seen.
    const RunControl control = prepareControl(options);
    const Outputs outputs = planOutputs(options, control);
    const TemporaryFolder folder;
    writeWholeFile(folder.controlFile(), control.text);
    const StandardOutputAside aside;

    // 1. Read.
    progress.step("reading " + std::filesystem::path(options.input).filename().string());
    const RunInput input = readRunInput(options);
    Summary summary = startSummary(options, control, outputs, input.data);
    append(summary.remarks, input.data.remarks);

    // 2. Mesh.
    progress.step("building the mesh of " + std::to_string(input.data.mesh.cellCount()) + " cells");
    const FvMesh mesh = namingFile(options.input, [&] { return buildFvMesh(input.data.mesh); });

    // 3. Groups.
    progress.step("assigning the boundary");
    const BoundaryGroups groups = namingFile(options.input, [&] {
        return groupBoundaryFaces(mesh, input.data.patches, options.patterns);
    });
    describeMesh(summary, input.data.mesh, mesh, groups);
    append(summary.remarks, groupRemarks(groups, options.patterns));

    // 4. Bind.
    progress.step("binding mesh and fill time");
    const RunFillTime fill = prepareRunFillTime(input, mesh, groups, options.zeroTime);
    summary.fill = fill.counts;
    append(summary.remarks, fillRemarks(fill.counts));
    append(summary.remarks,
           flatRemarks(countFlatCells(mesh, fill.merged), fill.counts, control.settings));
    HostModel model(mesh, groups, fill.first, hostOptions(options, folder, input, fill));

    // 5. Calculate.
    progress.step("calculating the meeting angles of " + std::to_string(mesh.pointCount()) +
                  " nodes");
    const std::vector<double> angles = calculate(model, control, folder, aside);

    // 6. Results.
    progress.step("collecting the weld lines");
    summary.weldLines = findWeldLines(mesh, angles, fill.merged, options.maxAngle);
    append(summary.remarks, resultRemarks(summary.weldLines));

    // 7. Write.
    progress.step("writing");
    writeOutputs(summary, control, folder, input.data.mesh,
                 resultFields(input, mesh, fill, angles, summary.weldLines));
    return summary;
}

}  // namespace

void analyze(const AnalyzeOptions& options) {
    Progress progress(7);
    const Summary summary = run(options, progress);
    progress.finish();
    report(summary);  // 8. Report.
}

}  // namespace weldline
