#include "RunInput.h"

#include <algorithm>
#include <cmath>

#include "base/Errors.h"
#include "comm/Agreement.h"

namespace weldline {

namespace {

std::vector<int> cellStates(const AnalyzeOptions& options, const std::vector<double>& values) {
    std::vector<int> states(values.size());
    std::transform(values.begin(), values.end(), states.begin(), [&](double value) {
        if (!(std::abs(value) <= 1e9) || value != std::trunc(value))
            throw InputError(options.input + ": array '" + options.cellState + "' holds " +
                             std::to_string(value) + "; a cell state is a whole number");
        return static_cast<int>(value);
    });
    return states;
}

void addSecondInjection(Ranks& ranks, RunFillTime& fill, FillTimeCounts second) {
    FillTimeCounts& counts = fill.counts;
    std::int64_t gained = 0;
    for (std::size_t c = 0; c < fill.merged.size(); ++c) {
        if (isReached(fill.first[c]) || !isReached(fill.second[c])) continue;
        fill.merged[c] = fill.second[c];
        ++gained;
    }
    gained = ranks.sum(gained);
    counts.reached += gained;
    counts.notReached -= gained;
    counts.marked = std::min(counts.marked, counts.notReached);
    counts.zeroNotReached = std::min(counts.zeroNotReached, counts.notReached);
    const bool firstHasTimes = counts.latest > 0.0;
    counts.earliest = firstHasTimes ? std::min(counts.earliest, second.earliest) : second.earliest;
    counts.latest = std::max(counts.latest, second.latest);
}

void refuseEmpty(const std::string& file, const std::string& field, const FillTimeCounts& counts) {
    if (counts.reached > 0) return;
    throw InputError(file + ": the melt reaches no cell in '" + field + "' (" +
                     std::to_string(counts.zeroNotReached) + " cells are 0, " +
                     std::to_string(counts.marked) +
                     " are NaN, infinite or negative); choose the fill time with --field or "
                     "--time");
}

// What closes a gap counts as the first injection.
void closeGaps(const RankPart& part, const FvMesh& mesh, RunFillTime& fill) {
    const std::vector<float> before = fill.merged;
    fill.counts.closed = closeTrappedAir(part, mesh, fill.merged);
    for (std::size_t c = 0; c < before.size(); ++c)
        if (!isReached(before[c])) fill.first[c] = fill.merged[c];
}

}  // namespace

RunInput readRunInput(Ranks& ranks, const AnalyzeOptions& options,
                      const std::function<void(const std::string&)>& tell) {
    ReadOptions read;
    read.fieldGiven = !options.field.empty();
    if (read.fieldGiven) read.field = options.field;
    read.time = options.time;
    read.scale = options.scale;
    if (!read.fieldGiven) read.series.use = SeriesOptions::Use::WhereNoFillTime;
    read.series.progress = tell;
    for (const std::string& name : {options.biField, options.cellState})
        if (!name.empty()) read.cellArrays.push_back(name);
    read.carried = options.carry;
    RunInput input;
    input.data = readPart(ranks, options.input, read);
    // Taken from the end, in the opposite order.
    auto& fields = input.data.part.cellFields;
    for (std::size_t c = options.carry.size(); c-- > 0;) {
        input.carried.insert(input.carried.begin(), {options.carry[c], std::move(fields.back())});
        fields.pop_back();
    }
    agreeOnFailure(ranks, [&] {
        if (!options.cellState.empty()) input.cellState = cellStates(options, fields.back());
    });
    if (!options.cellState.empty()) fields.pop_back();
    if (!options.biField.empty()) {
        input.hasBiField = true;
        input.biField = std::move(fields.back());
        fields.pop_back();
    }
    return input;
}

RunFillTime prepareRunFillTime(const RankPart& part, const AnalyzeOptions& options,
                               const RunInput& input, const FvMesh& mesh,
                               const BoundaryGroups& groups) {
    FillTime first = prepareFillTime(part, input.fillTime(), mesh, groups, options.zeroTime);
    RunFillTime fill;
    fill.first = std::move(first.values);
    fill.merged = fill.first;
    fill.counts = first.counts;
    // On purpose by the option: a rank without cells has no values either way.
    if (input.hasBiField) {
        FillTime second = prepareFillTime(part, input.biField, mesh, groups, options.zeroTime);
        fill.second = std::move(second.values);
        addSecondInjection(part.ranks, fill, second.counts);
    }
    agreeOnFailure(part.ranks,
                   [&] { refuseEmpty(options.input, input.data.fieldName, fill.counts); });
    if (options.trappedAir == TrappedAir::Close) closeGaps(part, mesh, fill);
    return fill;
}

CellsAcross cellsAcross(const RankPart& part, const std::vector<float>& fillTime) {
    const std::vector<float> halo = haloValues(part.ranks, part.interface, fillTime);
    CellsAcross across;
    across.lambda = part.interface.lambda;
    for (const int cell : part.interface.haloOfFace)
        across.fillTime.push_back(halo[static_cast<std::size_t>(cell)]);
    return across;
}

}  // namespace weldline
