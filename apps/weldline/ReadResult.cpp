#include "ReadResult.h"

#include <utility>

#include "RunNotes.h"
#include "base/Errors.h"
#include "bind/FillTime.h"
#include "results/FlowDirection.h"

namespace weldline {

namespace {

// Cells that were filled at time 0 count as not reached: which zeros these are follows from the
// inlet faces, and a result has none.
std::vector<float> reachedTimes(const RankPart& part, const std::vector<double>& raw,
                                const FvMesh& mesh) {
    BoundaryGroups walls;
    walls.kinds.assign(static_cast<std::size_t>(mesh.boundaryFaces()), GroupKind::Wall);
    return prepareFillTime(part, raw, mesh, walls, ZeroFillTime::NotReached).values;
}

}  // namespace

DataSet readResultData(const std::string& file, ReadOptions read) {
    read.pointArrays.insert(read.pointArrays.begin(), "MeetingAngle");
    try {
        return readDataSet(file, read);
    } catch (const InputError& error) {
        const std::string text = error.what();
        if (text.find("'MeetingAngle'") == std::string::npos) throw;
        throw InputError(text + "; give a result that 'weldline analyze' wrote");
    }
}

ResultModel readResult(const std::string& file, const LineOptions& options,
                       const std::vector<std::string>& carry) {
    ReadOptions read;
    read.carried = carry;
    DataSet data = readResultData(file, std::move(read));
    ResultModel model;
    model.file = file;
    try {
        model.mesh = buildFvMesh(data.mesh);
    } catch (const InputError& error) {
        throw InputError(file + ": " + error.what());
    }
    UncutMesh uncut(model.mesh.pointCount());
    const RankPart part = uncut.part();
    model.fillTime = reachedTimes(part, data.fillTime, model.mesh);
    model.angles = std::move(data.pointFields.front());
    model.notes = std::move(data.notes);
    std::vector<float> times = model.fillTime;
    if (trappedAirOf(model.notes) == TrappedAir::Close) closeTrappedAir(part, model.mesh, times);
    model.directions = flowDirections(model.mesh, times);
    std::vector<CarriedField> fields;
    for (std::size_t c = 0; c < carry.size(); ++c)
        fields.push_back({carry[c], std::move(data.carried[c])});
    model.found = findLines(
        part, {model.mesh, model.notes.patches, times, model.directions, model.angles, fields},
        options);
    return model;
}

}  // namespace weldline
