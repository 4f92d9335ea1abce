#include "Explain.h"

#include <cmath>

#include "Console.h"
#include "Explanation.h"
#include "Outputs.h"
#include "ReadResult.h"
#include "RunNotes.h"
#include "TemporaryFolder.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "bind/Analysis.h"
#include "bind/HostModel.h"
#include "results/PatchPlaces.h"
#include "settings/ControlSection.h"

namespace weldline {

namespace {

// A result that is to be explained, with its run.
struct ResultToExplain {
    DataSet data;
    RunNotes notes;
    FvMesh mesh;

    const std::vector<double>& angles() const { return data.pointFields[0]; }
    const std::vector<double>& lines() const { return data.pointFields[1]; }
};

void checkRun(const std::string& file, const RunNotes& notes) {
    const int method = stagesOf(notes.settings).angleMethod;
    if (!canExplain(method))
        throw InputError(file + ": made with angle method " + std::to_string(method) +
                         ", which explain does not know; it knows methods 1, 2 and 4");
    if (!notes.biField.empty())
        throw InputError(file + ": made with --bi-field " + notes.biField +
                         ", whose values the result does not hold; explain needs a result of one "
                         "injection");
}

ResultToExplain read(const std::string& file) {
    ResultToExplain result;
    ReadOptions options;
    options.pointArrays = {"WeldLine"};
    result.data = readResultData(file, std::move(options));
    result.notes = readRunNotes(file, result.data.notes);
    checkRun(file, result.notes);
    try {
        result.mesh = buildFvMesh(result.data.mesh);
    } catch (const InputError& error) {
        throw InputError(file + ": " + error.what());
    }
    return result;
}

int chosenNode(const ExplainOptions& options, const FvMesh& mesh) {
    if (options.place) return nearestNode(mesh, *options.place);
    if (*options.node >= mesh.pointCount())
        throw UsageError("--node " + std::to_string(*options.node) + ": '" + options.input +
                         "' has nodes 0 to " + std::to_string(mesh.pointCount() - 1));
    return static_cast<int>(*options.node);
}

struct Calculated {
    std::vector<double> angles;  // per node
    LibraryFields fields;
};

// The run of the result once more, with what the library calculates on the way.
Calculated calculate(const std::string& file, const ResultToExplain& result,
                     const BoundaryGroups& groups) {
    const RunNotes& notes = result.notes;
    std::vector<float> fillTime =
        prepareFillTime(result.data.fillTime, result.mesh, groups, notes.zeroTime).values;
    if (notes.trappedAir == TrappedAir::Close)
        closeTrappedAir(UncutMesh().part(), result.mesh, fillTime);
    const std::string control = [&] {
        try {
            return sectionFromSettings(notes.settings);
        } catch (const InputError& error) {
            throw InputError(file + ": " + error.what());
        }
    }();
    const TemporaryFolder folder;
    writeWholeFile(folder.controlFile(), control);
    HostOptions host;
    host.controlFile = folder.controlFile();
    host.meshFile = file;
    host.meshFileType = notes.meshFileType;
    host.gradientSetSwitch = notes.gradientSetSwitch;
    HostModel model(result.mesh, groups, fillTime, std::move(host));
    RecordedRun run = recordWeldLine(model);
    const bool secondSet = notes.gradientSetSwitch == 1.0;
    return {std::move(run.angles), libraryFields(run.arrays, fillTime, notes.settings, secondSet)};
}

// Anybody may have changed the file.
int lineNumber(double stored) {
    return stored >= 1.0 && stored <= 1e9 ? static_cast<int>(stored) : 0;
}

bool isSame(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// Why the result may hold other angles than the calculation gives now.
std::string differenceRemark(const Explanation& e, const RunNotes& notes) {
    const std::string nodes = std::to_string(e.differingNodes) + " of " + std::to_string(e.nodes) +
                              " nodes have another angle in the result; ";
    if (!notes.cellState.empty())
        return nodes + "its run kept nodes free of weld lines by the cell state '" +
               notes.cellState + "', which the result does not hold";
    return nodes + "it was made by several processes, by another version, or changed since";
}

Explanation explain(const ExplainOptions& options) {
    const StandardOutputAside aside;
    const ResultToExplain result = read(options.input);
    const int node = chosenNode(options, result.mesh);
    const PlacedGroups placed =
        groupsAt(result.mesh, result.data.notes.patches, result.notes.groupOfPatch);
    const Calculated calculated = calculate(options.input, result, placed.groups);
    Explanation e;
    e.file = options.input;
    e.nodes = result.mesh.pointCount();
    e.settings = result.notes.settings;
    e.storedAngle = result.angles()[static_cast<std::size_t>(node)];
    e.line = lineNumber(result.lines()[static_cast<std::size_t>(node)]);
    const NodeExplainer explainer(result.mesh, calculated.fields, e.settings,
                                  result.notes.meshFileType);
    e.node = explainer.explain(node, calculated.angles[static_cast<std::size_t>(node)]);
    for (std::size_t n = 0; n < calculated.angles.size(); ++n)
        if (!isSame(calculated.angles[n], result.angles()[n])) ++e.differingNodes;
    if (placed.lost > 0)
        e.remarks.push_back(std::to_string(placed.lost) +
                            " patch faces of the run lie on no boundary face of the result and "
                            "are taken as walls");
    if (e.differingNodes > 0) e.remarks.push_back(differenceRemark(e, result.notes));
    return e;
}

}  // namespace

void explainResult(const ExplainOptions& options) {
    checkJsonTarget(options.json, options.input);
    const Explanation explanation = explain(options);
    if (!options.json.empty() && options.json != "-")
        writeWholeFile(options.json, explanationJson(explanation));
    for (const std::string& remark : explanation.remarks) writeMessage({"note: ", remark});
    writeStandardOutput(options.json == "-"
                            ? explanationJson(explanation)
                            : explanationTable(explanation, standardOutputTakesStyle()));
}

}  // namespace weldline
