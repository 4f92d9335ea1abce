#include "RunInput.h"

#include <algorithm>
#include <cmath>

#include "base/Errors.h"

namespace weldline {

namespace {

std::vector<double> readCellArray(const AnalyzeOptions& options, const std::string& name,
                                  int cells) {
    ReadOptions read;
    read.field = name;
    read.fieldGiven = true;
    read.time = options.time;
    DataSet data = readDataSet(options.input, read);
    if (static_cast<int>(data.fillTime.size()) != cells)
        throw InputError(options.input + ": array '" + name +
                         "' has another number of values than there are cells; give one per cell");
    return std::move(data.fillTime);
}

std::vector<int> readCellState(const AnalyzeOptions& options, int cells) {
    const std::vector<double> values = readCellArray(options, options.cellState, cells);
    std::vector<int> states(values.size());
    std::transform(values.begin(), values.end(), states.begin(), [&](double value) {
        if (!(std::abs(value) <= 1e9) || value != std::trunc(value))
            throw InputError(options.input + ": array '" + options.cellState + "' holds " +
                             std::to_string(value) + "; a cell state is a whole number");
        return static_cast<int>(value);
    });
    return states;
}

void addSecondInjection(RunFillTime& fill, FillTimeCounts second) {
    FillTimeCounts& counts = fill.counts;
    for (std::size_t c = 0; c < fill.merged.size(); ++c) {
        if (isReached(fill.first[c]) || !isReached(fill.second[c])) continue;
        fill.merged[c] = fill.second[c];
        ++counts.reached;
        --counts.notReached;
    }
    counts.marked = std::min(counts.marked, counts.notReached);
    counts.zeroNotReached = std::min(counts.zeroNotReached, counts.notReached);
    const bool firstHasTimes = counts.latest > 0.0;
    counts.earliest = firstHasTimes ? std::min(counts.earliest, second.earliest) : second.earliest;
    counts.latest = std::max(counts.latest, second.latest);
}

void refuseEmpty(const RunInput& input, const FillTimeCounts& counts) {
    if (counts.reached > 0) return;
    throw InputError(input.data.file + ": the melt reaches no cell in '" + input.data.fieldName +
                     "' (" + std::to_string(counts.zeroNotReached) + " cells are 0, " +
                     std::to_string(counts.marked) +
                     " are NaN, infinite or negative); choose the fill time with --field or "
                     "--time");
}

}  // namespace

RunInput readRunInput(const AnalyzeOptions& options) {
    RunInput input;
    ReadOptions read;
    read.fieldGiven = !options.field.empty();
    if (read.fieldGiven) read.field = options.field;
    read.time = options.time;
    input.data = readDataSet(options.input, read);
    const int cells = input.data.mesh.cellCount();
    if (!options.biField.empty()) input.biField = readCellArray(options, options.biField, cells);
    if (!options.cellState.empty()) input.cellState = readCellState(options, cells);
    return input;
}

RunFillTime prepareRunFillTime(const RunInput& input, const FvMesh& mesh,
                               const BoundaryGroups& groups, ZeroFillTime zero) {
    FillTime first = prepareFillTime(input.data.fillTime, mesh, groups, zero);
    RunFillTime fill;
    fill.first = std::move(first.values);
    fill.merged = fill.first;
    fill.counts = first.counts;
    if (!input.biField.empty()) {
        FillTime second = prepareFillTime(input.biField, mesh, groups, zero);
        fill.second = std::move(second.values);
        addSecondInjection(fill, second.counts);
    }
    refuseEmpty(input, fill.counts);
    return fill;
}

}  // namespace weldline
