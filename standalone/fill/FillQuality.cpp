#include "FillQuality.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace weldline {

namespace {

std::vector<char> cellsAt(const FvMesh& mesh, const BoundaryGroups& groups, GroupKind kind) {
    std::vector<char> cells(static_cast<std::size_t>(mesh.cellCount()), 0);
    for (int b = 0; b < mesh.boundaryFaces(); ++b)
        if (groups.kinds[b] == kind) cells[mesh.owner[mesh.innerFaces + b]] = 1;
    return cells;
}

// The cells and those next to them.
std::vector<char> widened(const FvMesh& mesh, const std::vector<char>& cells) {
    std::vector<char> wide = cells;
    for (int f = 0; f < mesh.innerFaces; ++f) {
        if (cells[mesh.owner[f]] != 0) wide[mesh.neighbour[f]] = 1;
        if (cells[mesh.neighbour[f]] != 0) wide[mesh.owner[f]] = 1;
    }
    return wide;
}

int across(const FvMesh& mesh, int face, int cell) {
    return mesh.owner[face] == cell ? mesh.neighbour[face] : mesh.owner[face];
}

// Smallest and largest fill time of the reached cells up to two cells away from each cell, itself
// among them. On tetrahedra one step is not far enough: a cell has four neighbours only.
struct TimesAround {
    std::vector<float> smallest;
    std::vector<float> largest;

    explicit TimesAround(const std::vector<float>& fillTime)
        : smallest(fillTime), largest(fillTime) {
        std::replace(smallest.begin(), smallest.end(), 0.0F, std::numeric_limits<float>::max());
    }

    void widen(const FvMesh& mesh) {
        const TimesAround before = *this;
        for (int f = 0; f < mesh.innerFaces; ++f) {
            const int a = mesh.owner[f];
            const int b = mesh.neighbour[f];
            smallest[a] = std::min(smallest[a], before.smallest[b]);
            smallest[b] = std::min(smallest[b], before.smallest[a]);
            largest[a] = std::max(largest[a], before.largest[b]);
            largest[b] = std::max(largest[b], before.largest[a]);
        }
    }
};

void findExtremes(const FvMesh& mesh, const BoundaryGroups& groups,
                  const std::vector<float>& fillTime, FillQuality& quality) {
    const std::vector<char> nearInlet = widened(mesh, cellsAt(mesh, groups, GroupKind::Inlet));
    const std::vector<char> nearOutlet = widened(mesh, cellsAt(mesh, groups, GroupKind::Outlet));
    TimesAround around(fillTime);
    around.widen(mesh);
    around.widen(mesh);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const float time = fillTime[c];
        bool isLast = time > 0.0F && time == around.largest[c] && nearOutlet[c] == 0;
        bool isFirst = time > 0.0F && time == around.smallest[c] && nearInlet[c] == 0;
        bool hasNeighbour = false;
        for (const int face : mesh.cellFaces[c]) {
            if (face >= mesh.innerFaces) continue;
            const float other = fillTime[across(mesh, face, c)];
            hasNeighbour = true;
            isLast = isLast && other > 0.0F && other < time;
            isFirst = isFirst && (other == 0.0F || other > time);
        }
        if (hasNeighbour && isLast) quality.lateCells.push_back(c);
        if (hasNeighbour && isFirst) quality.earlyCells.push_back(c);
    }
}

// All cells that hang together with the first without melt between them.
std::vector<int> emptyAround(const FvMesh& mesh, const std::vector<float>& fillTime, int first,
                             std::vector<char>& seen) {
    std::vector<int> group{first};
    seen[first] = 1;
    for (std::size_t at = 0; at < group.size(); ++at)
        for (const int face : mesh.cellFaces[group[at]]) {
            if (face >= mesh.innerFaces) continue;
            const int other = across(mesh, face, group[at]);
            if (seen[other] != 0 || fillTime[other] > 0.0F) continue;
            seen[other] = 1;
            group.push_back(other);
        }
    return group;
}

void findPockets(const FvMesh& mesh, const BoundaryGroups& groups,
                 const std::vector<float>& fillTime, FillQuality& quality) {
    const std::vector<char> atOutlet = cellsAt(mesh, groups, GroupKind::Outlet);
    std::vector<char> seen(static_cast<std::size_t>(mesh.cellCount()), 0);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        if (seen[c] != 0 || fillTime[c] > 0.0F) continue;
        const std::vector<int> group = emptyAround(mesh, fillTime, c, seen);
        if (std::none_of(group.begin(), group.end(), [&](int cell) { return atOutlet[cell] != 0; }))
            quality.pockets.push_back({c, static_cast<int>(group.size())});
    }
    std::stable_sort(quality.pockets.begin(), quality.pockets.end(),
                     [](const auto& a, const auto& b) { return a.cells > b.cells; });
}

double cellTimeOf(const FvMesh& mesh, const std::vector<float>& fillTime) {
    std::vector<double> largest(static_cast<std::size_t>(mesh.cellCount()), 0.0);
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const int a = mesh.owner[f];
        const int b = mesh.neighbour[f];
        if (!(fillTime[a] > 0.0F && fillTime[b] > 0.0F)) continue;
        const double step = std::abs(static_cast<double>(fillTime[a]) - fillTime[b]);
        largest[a] = std::max(largest[a], step);
        largest[b] = std::max(largest[b], step);
    }
    std::vector<double> ofReached;
    for (int c = 0; c < mesh.cellCount(); ++c)
        if (fillTime[c] > 0.0F) ofReached.push_back(largest[c]);
    return quantile(std::move(ofReached), 0.5);
}

double medianTurnOf(const FvMesh& mesh, const std::vector<Vec3>& directions) {
    std::vector<double> turns;
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const Vec3 a = directions[mesh.owner[f]];
        const Vec3 b = directions[mesh.neighbour[f]];
        if (dot(a, a) == 0.0 || dot(b, b) == 0.0) continue;
        turns.push_back(std::acos(std::clamp(dot(a, b), -1.0, 1.0)) * 180.0 / std::numbers::pi);
    }
    return quantile(std::move(turns), 0.5);
}

}  // namespace

FillQuality qualityOf(const FvMesh& mesh, const BoundaryGroups& groups,
                      const std::vector<float>& fillTime, const std::vector<Vec3>& directions) {
    FillQuality quality;
    double volume = 0.0;
    for (int c = 0; c < mesh.cellCount(); ++c) {
        volume += mesh.cellVolume[c];
        if (fillTime[c] == 0.0F) continue;
        ++quality.reached;
        quality.filledVolume += mesh.cellVolume[c];
    }
    quality.filledVolume /= volume;
    findExtremes(mesh, groups, fillTime, quality);
    findPockets(mesh, groups, fillTime, quality);
    quality.cellTime = cellTimeOf(mesh, fillTime);
    quality.medianTurn = medianTurnOf(mesh, directions);
    return quality;
}

double quantile(std::vector<double> values, double share) {
    if (values.empty()) return 0.0;
    const auto at = values.begin() +
                    static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

}  // namespace weldline
