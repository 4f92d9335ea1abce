#include "FrontApproach.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <tuple>

#include "bind/FillTime.h"

namespace weldline {

namespace {

constexpr int steps = 3;

// The earliest cell that is known from here.
struct Source {
    double time = std::numeric_limits<double>::infinity();
    Vec3 centre;
};

bool isBefore(const Source& a, const Source& b) {
    return std::tie(a.time, a.centre.x, a.centre.y, a.centre.z) <
           std::tie(b.time, b.centre.x, b.centre.y, b.centre.z);
}

std::vector<Source> cellsThemselves(const FvMesh& mesh, const std::vector<float>& fillTime) {
    std::vector<Source> sources(fillTime.size());
    for (std::size_t c = 0; c < sources.size(); ++c)
        if (isReached(fillTime[c])) sources[c] = {fillTime[c], mesh.cellCentre[c]};
    return sources;
}

// What the cells across the faces knew before. A minimum does not depend on their order.
std::vector<Source> oneStepOn(const RankPart& part, const FvMesh& mesh,
                              const std::vector<float>& fillTime,
                              const std::vector<Source>& before) {
    std::vector<Source> sources = before;
    const auto take = [&](int cell, const Source& source) {
        if (isReached(fillTime[cell]) && isBefore(source, sources[cell])) sources[cell] = source;
    };
    for (int f = 0; f < mesh.innerFaces; ++f) {
        take(mesh.owner[f], before[mesh.neighbour[f]]);
        take(mesh.neighbour[f], before[mesh.owner[f]]);
    }
    const std::vector<Source> halo = haloValues(part.ranks, part.interface, before);
    for (int i = 0; i < mesh.interfaceFaces; ++i)
        take(mesh.owner[mesh.firstInterfaceFace() + i], halo[part.interface.haloOfFace[i]]);
    return sources;
}

}  // namespace

FrontApproach frontApproach(const RankPart& part, const FvMesh& mesh,
                            const std::vector<float>& fillTime) {
    std::vector<Source> sources = cellsThemselves(mesh, fillTime);
    for (int step = 0; step < steps; ++step) sources = oneStepOn(part, mesh, fillTime, sources);
    FrontApproach approach{std::vector<Vec3>(sources.size()), std::vector<float>(sources.size())};
    for (std::size_t c = 0; c < sources.size(); ++c) {
        if (!(sources[c].time < fillTime[c])) continue;
        const Vec3 way = mesh.cellCentre[c] - sources[c].centre;
        const double slowness = (fillTime[c] - sources[c].time) / norm(way);
        if (!(slowness <= std::numeric_limits<float>::max())) continue;
        approach.direction[c] = (1.0 / norm(way)) * way;
        approach.slowness[c] = static_cast<float>(slowness);
    }
    return approach;
}

// Halves the range of bits, which for values above 0 have the order of the values. Counts come out
// the same on any number of ranks.
float lowerQuartile(Ranks& ranks, const std::vector<float>& values) {
    const auto countUpTo = [&](std::uint32_t bits) {
        const auto upTo = std::bit_cast<float>(bits);
        return ranks.sum(static_cast<std::int64_t>(std::count_if(
            values.begin(), values.end(), [&](float v) { return v > 0.0F && v <= upTo; })));
    };
    std::uint32_t low = 0;
    auto high = std::bit_cast<std::uint32_t>(std::numeric_limits<float>::max());
    const std::int64_t quarter = countUpTo(high) / 4;
    if (countUpTo(high) == 0) return 0.0F;
    while (low < high) {
        const std::uint32_t middle = low + (high - low) / 2;
        if (countUpTo(middle) > quarter)
            high = middle;
        else
            low = middle + 1;
    }
    return std::bit_cast<float>(high);
}

}  // namespace weldline
