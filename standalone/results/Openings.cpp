#include "Openings.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>
#include <utility>

#include "FrontApproach.h"
#include "mesh/NodeSets.h"

namespace weldline {

namespace {

constexpr double firstShare = 0.05;
constexpr double lastShare = 0.25;
constexpr double slowestShare = 1.1;     // of the lower quartile
constexpr double leastCosine = 0.70711;  // a flow along a diagonal stays out

struct Span {
    double first = 0.0;
    double last = 0.0;
};

Span spanOf(Ranks& ranks, const std::vector<float>& fillTime) {
    constexpr double none = std::numeric_limits<float>::max();
    Span span{none, 0.0};
    for (const float time : fillTime) {
        if (time <= 0.0F) continue;
        span.first = std::min<double>(span.first, time);
        span.last = std::max<double>(span.last, time);
    }
    return {-ranks.maximum(-span.first), ranks.maximum(span.last)};
}

bool hasKind(Ranks& ranks, const BoundaryGroups& groups, GroupKind kind) {
    const auto faces = std::count(groups.kinds.begin(), groups.kinds.end(), kind);
    return ranks.sum(static_cast<std::int64_t>(faces)) > 0;
}

// The walls of a cell that the flow meets at less than 45 degrees from the normal.
void addSteepWalls(const FvMesh& mesh, const BoundaryGroups& groups, int cell, Vec3 flow,
                   std::vector<int>& walls) {
    for (const int face : mesh.cellFaces[cell]) {
        const int b = face - mesh.innerFaces;
        if (b < 0 || b >= mesh.boundaryFaces() || groups.kinds[b] != GroupKind::Wall) continue;
        const Vec3 area = mesh.faceArea[face];
        if (dot(area, flow) > leastCosine * norm(area)) walls.push_back(b);
    }
}

// Finds faces by their nodes.
class FaceSet {
  public:
    FaceSet(const FvMesh& mesh, const std::vector<int>& faces) : m_mesh(mesh) {
        for (const int b : faces) m_faces.push_back({nodeSetKey(nodesOf(b)), b});
        std::sort(m_faces.begin(), m_faces.end());
    }

    bool has(std::span<const int> nodes) const {
        const std::uint64_t key = nodeSetKey(nodes);
        for (auto at = std::lower_bound(m_faces.begin(), m_faces.end(), std::pair{key, 0});
             at != m_faces.end() && at->first == key; ++at)
            if (sameNodeSet(nodesOf(at->second), nodes)) return true;
        return false;
    }

  private:
    std::span<const int> nodesOf(int b) const { return m_mesh.faceNodes[m_mesh.innerFaces + b]; }

    const FvMesh& m_mesh;
    std::vector<std::pair<std::uint64_t, int>> m_faces;
};

// Takes the faces out of the patches and counts them.
std::vector<MadePatch::Source> takeOut(Ranks& ranks, const FvMesh& mesh,
                                       const std::vector<int>& faces, std::vector<Patch>& patches) {
    const FaceSet taken(mesh, faces);
    std::vector<MadePatch::Source> from;
    for (Patch& patch : patches) {
        Rows rest;
        for (int i = 0; i < patch.faces.count(); ++i)
            if (!taken.has(patch.faces[i])) rest.append(patch.faces[i]);
        const std::int64_t count = ranks.sum(std::int64_t{patch.faces.count() - rest.count()});
        if (count > 0) from.push_back({patch.name, count});
        patch.faces = std::move(rest);
    }
    return from;
}

void addBox(Ranks& ranks, const FvMesh& mesh, const std::vector<int>& faces, MadePatch& made) {
    constexpr double far = std::numeric_limits<double>::max();
    Vec3 low{far, far, far};
    Vec3 high{-far, -far, -far};
    for (const int b : faces) {
        const Vec3 p = mesh.faceCentre[mesh.innerFaces + b];
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    made.low = {-ranks.maximum(-low.x), -ranks.maximum(-low.y), -ranks.maximum(-low.z)};
    made.high = {ranks.maximum(high.x), ranks.maximum(high.y), ranks.maximum(high.z)};
}

std::vector<int> inletsIn(const FvMesh& mesh, const BoundaryGroups& groups,
                          const std::vector<float>& fillTime, const std::vector<Vec3>& directions,
                          Span span) {
    const double until = span.first + firstShare * (span.last - span.first);
    std::vector<int> inlets;
    for (int c = 0; c < mesh.cellCount(); ++c)
        if (fillTime[c] > 0.0F && fillTime[c] <= until)
            addSteepWalls(mesh, groups, c, -1.0 * directions[c], inlets);
    std::sort(inlets.begin(), inlets.end());
    return inlets;
}

std::vector<int> outletsIn(const RankPart& part, const FvMesh& mesh, const BoundaryGroups& groups,
                           const std::vector<float>& fillTime, Span span) {
    const FrontApproach approach = frontApproach(part, mesh, fillTime);
    const double slowest = slowestShare * lowerQuartile(part.ranks, approach.slowness);
    const double from = span.last - lastShare * (span.last - span.first);
    std::vector<int> outlets;
    for (int c = 0; c < mesh.cellCount(); ++c)
        if (fillTime[c] > 0.0F && fillTime[c] >= from && approach.slowness[c] <= slowest)
            addSteepWalls(mesh, groups, c, approach.direction[c], outlets);
    std::sort(outlets.begin(), outlets.end());
    return outlets;
}

}  // namespace

Openings findOpenings(const RankPart& part, const FvMesh& mesh, const BoundaryGroups& groups,
                      const std::vector<float>& fillTime, const std::vector<Vec3>& directions) {
    const Span span = spanOf(part.ranks, fillTime);
    Openings openings;
    if (!hasKind(part.ranks, groups, GroupKind::Inlet))
        openings.inlets = inletsIn(mesh, groups, fillTime, directions, span);
    if (!hasKind(part.ranks, groups, GroupKind::Outlet))
        openings.outlets = outletsIn(part, mesh, groups, fillTime, span);
    return openings;
}

std::vector<MadePatch> makePatches(Ranks& ranks, const FvMesh& mesh, const Openings& openings,
                                   std::vector<Patch>& patches, GroupPatterns& patterns) {
    std::vector<MadePatch> all;
    std::vector<Patch> more;
    const auto make = [&](const char* name, GroupKind kind, const std::vector<int>& faces,
                          std::string& pattern) {
        MadePatch made{name, kind, ranks.sum(static_cast<std::int64_t>(faces.size())), {}, {}, {}};
        if (made.faces == 0) return;
        made.from = takeOut(ranks, mesh, faces, patches);
        addBox(ranks, mesh, faces, made);
        Patch patch{name, {}};
        for (const int b : faces) patch.faces.append(mesh.faceNodes[mesh.innerFaces + b]);
        more.push_back(std::move(patch));
        pattern += std::string("|^") + name + "$";
        all.push_back(std::move(made));
    };
    make("filled first", GroupKind::Inlet, openings.inlets, patterns.inlet);
    make("front runs out", GroupKind::Outlet, openings.outlets, patterns.outlet);
    patches.insert(patches.end(), std::make_move_iterator(more.begin()),
                   std::make_move_iterator(more.end()));
    return all;
}

}  // namespace weldline
