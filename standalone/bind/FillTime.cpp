#include "FillTime.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/Errors.h"
#include "comm/Agreement.h"

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

void addUp(Ranks& ranks, FillTimeCounts& counts) {
    constexpr double never = std::numeric_limits<double>::max();
    const double earliest = -ranks.maximum(counts.reached > 0 ? -counts.earliest : -never);
    counts.reached = ranks.sum(counts.reached);
    counts.marked = ranks.sum(counts.marked);
    counts.earliest = counts.reached > 0 ? earliest : 0.0;
    counts.latest = ranks.maximum(counts.latest);
}

// Cells of value 0 that touch an inlet face, directly or through other cells of value 0. Each rank
// goes as far as it gets and then looks what its neighbours have found, until nobody gets further.
class ZeroCellsAtInlets {
  public:
    ZeroCellsAtInlets(const std::vector<Kind>& kinds, const FvMesh& mesh)
        : m_kinds(kinds), m_mesh(mesh), m_found(kinds.size(), 0) {}

    std::vector<char> find(const RankPart& part, const BoundaryGroups& groups) {
        for (int i = 0; i < m_mesh.boundaryFaces(); ++i)
            if (groups.kinds[i] == GroupKind::Inlet) visit(m_mesh.owner[m_mesh.innerFaces + i]);
        while (part.ranks.sum(static_cast<std::int64_t>(m_open.size())) > 0) {
            spread();
            const std::vector<char> halo = haloValues(part.ranks, part.interface, m_found);
            for (int i = 0; i < m_mesh.interfaceFaces; ++i)
                if (halo[part.interface.haloOfFace[i]] != 0)
                    visit(m_mesh.owner[m_mesh.firstInterfaceFace() + i]);
        }
        return std::move(m_found);
    }

  private:
    void visit(int cell) {
        if (m_kinds[cell] != Kind::Zero || m_found[cell] != 0) return;
        m_found[cell] = 1;
        m_open.push_back(cell);
    }

    void spread() {
        while (!m_open.empty()) {
            const int cell = m_open.back();
            m_open.pop_back();
            for (const int face : m_mesh.cellFaces[cell])
                if (face < m_mesh.innerFaces)
                    visit(m_mesh.owner[face] == cell ? m_mesh.neighbour[face] : m_mesh.owner[face]);
        }
    }

    const std::vector<Kind>& m_kinds;
    const FvMesh& m_mesh;
    std::vector<char> m_found;
    std::vector<int> m_open;
};

void checkSize(std::size_t values, int cells) {
    if (static_cast<int>(values) != cells)
        throw InputError("the fill time has " + std::to_string(values) +
                         " values, but the mesh has " + std::to_string(cells) +
                         " cells; one value per cell is needed");
}

}  // namespace

FillTime prepareFillTime(const std::vector<double>& raw, const FvMesh& mesh,
                         const BoundaryGroups& groups, ZeroFillTime zero) {
    UncutMesh uncut;
    return prepareFillTime(uncut.part(), raw, mesh, groups, zero);
}

FillTime prepareFillTime(const RankPart& part, const std::vector<double>& raw, const FvMesh& mesh,
                         const BoundaryGroups& groups, ZeroFillTime zero) {
    Ranks& ranks = part.ranks;
    agreeOnFailure(ranks, [&] { checkSize(raw.size(), mesh.cellCount()); });
    const std::vector<Kind> kinds = kindsOf(raw);
    FillTime result{std::vector<float>(raw.size(), 0.0F), countPositive(raw, kinds)};
    FillTimeCounts& counts = result.counts;
    addUp(ranks, counts);
    const bool asksInlets = zero == ZeroFillTime::Automatic && counts.marked == 0;
    const bool fillsAll = !asksInlets && zero != ZeroFillTime::NotReached;
    const std::vector<char> filled = asksInlets ? ZeroCellsAtInlets(kinds, mesh).find(part, groups)
                                                : std::vector<char>(raw.size(), fillsAll ? 1 : 0);

    const double unit = counts.reached > 0 ? counts.earliest : 1.0;
    const auto startTime = static_cast<float>(std::max(1e-6 * unit, 2.0 * reachedLimit));
    for (std::size_t c = 0; c < raw.size(); ++c) {
        if (kinds[c] == Kind::Positive) result.values[c] = static_cast<float>(raw[c]);
        if (kinds[c] != Kind::Zero) continue;
        if (filled[c] != 0) result.values[c] = startTime;
        ++(filled[c] != 0 ? counts.zeroFilled : counts.zeroNotReached);
    }
    counts.zeroFilled = ranks.sum(counts.zeroFilled);
    counts.zeroNotReached = ranks.sum(counts.zeroNotReached);
    counts.reached += counts.zeroFilled;
    counts.notReached = counts.marked + counts.zeroNotReached;
    return result;
}

}  // namespace weldline
