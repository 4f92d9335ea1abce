#include "FillTime.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/Errors.h"

namespace weldline {

namespace {

// The library takes a value not below this as reached.
constexpr double reachedLimit = 1e-30;

enum class Kind : std::uint8_t { Marked, Zero, Positive };

Kind kindOf(double raw) {
    // Beyond single precision a value becomes infinite on its way to the library.
    if (!(raw >= 0.0) || raw > std::numeric_limits<float>::max()) return Kind::Marked;
    return raw <= reachedLimit ? Kind::Zero : Kind::Positive;
}

std::vector<Kind> kindsOf(const std::vector<double>& raw) {
    std::vector<Kind> kinds(raw.size());
    std::transform(raw.begin(), raw.end(), kinds.begin(), kindOf);
    return kinds;
}

FillTimeCounts countPositive(const std::vector<double>& raw, const std::vector<Kind>& kinds) {
    FillTimeCounts counts;
    for (std::size_t c = 0; c < raw.size(); ++c) {
        if (kinds[c] == Kind::Marked) ++counts.marked;
        if (kinds[c] != Kind::Positive) continue;
        counts.earliest = counts.reached == 0 ? raw[c] : std::min(counts.earliest, raw[c]);
        counts.latest = std::max(counts.latest, raw[c]);
        ++counts.reached;
    }
    return counts;
}

// Cells of value 0 that touch an inlet face, directly or through other cells of value 0.
std::vector<bool> zeroCellsAtInlets(const std::vector<Kind>& kinds, const FvMesh& mesh,
                                    const BoundaryGroups& groups) {
    std::vector<bool> found(kinds.size(), false);
    std::vector<int> open;
    const auto visit = [&](int cell) {
        if (kinds[cell] != Kind::Zero || found[cell]) return;
        found[cell] = true;
        open.push_back(cell);
    };
    for (int i = 0; i < mesh.boundaryFaces(); ++i)
        if (groups.kinds[i] == GroupKind::Inlet) visit(mesh.owner[mesh.innerFaces + i]);
    while (!open.empty()) {
        const int cell = open.back();
        open.pop_back();
        for (const int face : mesh.cellFaces[cell])
            if (face < mesh.innerFaces)
                visit(mesh.owner[face] == cell ? mesh.neighbour[face] : mesh.owner[face]);
    }
    return found;
}

std::vector<bool> filledZeroCells(const std::vector<Kind>& kinds, const FvMesh& mesh,
                                  const BoundaryGroups& groups, ZeroFillTime zero, bool hasMarks) {
    const bool all = zero == ZeroFillTime::Filled || (zero == ZeroFillTime::Automatic && hasMarks);
    const bool none = zero == ZeroFillTime::NotReached;
    if (!all && !none) return zeroCellsAtInlets(kinds, mesh, groups);
    std::vector<bool> filled(kinds.size());
    for (std::size_t c = 0; c < kinds.size(); ++c) filled[c] = all && kinds[c] == Kind::Zero;
    return filled;
}

}  // namespace

FillTime prepareFillTime(const std::vector<double>& raw, const FvMesh& mesh,
                         const BoundaryGroups& groups, ZeroFillTime zero) {
    if (static_cast<int>(raw.size()) != mesh.cellCount())
        throw InputError("the fill time has " + std::to_string(raw.size()) +
                         " values, but the mesh has " + std::to_string(mesh.cellCount()) +
                         " cells; one value per cell is needed");
    const std::vector<Kind> kinds = kindsOf(raw);
    FillTime result{std::vector<float>(raw.size(), 0.0F), countPositive(raw, kinds)};
    FillTimeCounts& counts = result.counts;
    const std::vector<bool> filled = filledZeroCells(kinds, mesh, groups, zero, counts.marked > 0);

    const double unit = counts.reached > 0 ? counts.earliest : 1.0;
    const auto startTime = static_cast<float>(std::max(1e-6 * unit, 2.0 * reachedLimit));
    for (std::size_t c = 0; c < raw.size(); ++c) {
        if (kinds[c] == Kind::Positive) result.values[c] = static_cast<float>(raw[c]);
        if (kinds[c] != Kind::Zero) continue;
        if (filled[c]) result.values[c] = startTime;
        ++(filled[c] ? counts.zeroFilled : counts.zeroNotReached);
    }
    counts.reached += counts.zeroFilled;
    counts.notReached = counts.marked + counts.zeroNotReached;
    return result;
}

}  // namespace weldline
