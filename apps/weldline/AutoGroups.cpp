#include "AutoGroups.h"

#include <limits>

#include "RunInput.h"
#include "Summary.h"
#include "base/ShortNumber.h"
#include "comm/Agreement.h"
#include "results/FlowDirection.h"

namespace weldline {

namespace {

// A fill time of 0 tells nothing here: whether it means "at the start" is decided by the inlets.
std::vector<float> timesAboveZero(const std::vector<double>& raw) {
    std::vector<float> times;
    times.reserve(raw.size());
    for (const double time : raw)
        times.push_back(time > 0.0 && time <= std::numeric_limits<float>::max()
                            ? static_cast<float>(time)
                            : 0.0F);
    return times;
}

}  // namespace

std::vector<MadePatch> makeAutoGroups(const RankPart& part, const FvMesh& mesh,
                                      const std::vector<double>& fillTime,
                                      std::vector<Patch>& patches, GroupPatterns& patterns) {
    const BoundaryGroups groups =
        together(part.ranks, [&] { return groupBoundaryFaces(mesh, patches, patterns); });
    const std::vector<float> times = timesAboveZero(fillTime);
    const std::vector<Vec3> directions = flowDirections(mesh, times, cellsAcross(part, times));
    const Openings openings = findOpenings(part, mesh, groups, times, directions);
    return makePatches(part.ranks, mesh, openings, patches, patterns);
}

std::string describe(const MadePatch& made) {
    std::string text = std::to_string(made.faces) + (made.faces == 1 ? " face" : " faces") +
                       (made.kind == GroupKind::Outlet ? " where the front runs out"
                        : made.faces == 1              ? " that fills first"
                                                       : " that fill first");
    std::string from;
    for (const MadePatch::Source& source : made.from)
        from += (from.empty() ? "" : ", ") + std::to_string(source.faces) + " of '" + source.patch +
                "'";
    if (!from.empty()) text += " (" + from + ")";
    const auto range = [](double low, double high) {
        return shortNumber(low) + " to " + shortNumber(high);
    };
    return text + ", x " + range(made.low.x, made.high.x) + ", y " +
           range(made.low.y, made.high.y) + ", z " + range(made.low.z, made.high.z);
}

std::vector<std::string> autoGroupRemarks(const std::vector<MadePatch>& made) {
    if (made.empty())
        return {
            "--auto-groups changes nothing: inlets and outlets have names, or no wall fills "
            "first and the front runs out nowhere"};
    std::vector<std::string> remarks;
    remarks.reserve(made.size());
    for (const MadePatch& patch : made)
        remarks.push_back("taken as " + nameOf(patch.kind) + " by --auto-groups, as patch '" +
                          patch.name + "': " + describe(patch));
    return remarks;
}

}  // namespace weldline
