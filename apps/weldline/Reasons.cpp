#include "Reasons.h"

#include "base/Errors.h"
#include "results/NodeReasons.h"

namespace weldline {

void checkReasons(const AnalyzeOptions& options, const Settings& settings, int ranks) {
    if (!options.reasons) return;
    if (options.output.empty())
        throw UsageError(
            "--reasons: the reasons stand in the result, and there is none; add -o "
            "RESULT.vtu");
    if (ranks > 1)
        throw UsageError(
            "--reasons: only one process can tell them; start the program without "
            "mpirun");
    const int method = stagesOf(settings).angleMethod;
    if (!canExplain(method))
        throw UsageError("--reasons: those of angle method " + std::to_string(method) +
                         " are not known; use method 1, 2 or 4");
}

std::vector<int> reasonsOf(const AnalyzeOptions& options, const RunControl& control,
                           const FvMesh& mesh, const std::vector<float>& fillTime,
                           const std::vector<int>& cellState, const RecordedRun& run) {
    if (!options.reasons) return {};
    const LibraryFields fields =
        libraryFields(run.arrays, fillTime, control.settings, options.gradientSet != 1);
    const NodeExplainer explainer(mesh, fields, control.settings, options.meshFileType);
    return nodeReasons(mesh, explainer, run.angles, cellState);
}

}  // namespace weldline
