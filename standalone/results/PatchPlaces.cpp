#include "PatchPlaces.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "comm/Messages.h"

namespace weldline {

namespace {

struct PlacedFace {
    int patch = 0;
    Vec3 centre;
};

Vec3 meanCorner(const FvMesh& mesh, std::span<const int> face) {
    Vec3 sum;
    for (const int n : face) sum = sum + mesh.points[n];
    return (1.0 / static_cast<double>(face.size())) * sum;
}

// Boundary faces by the places of their centres.
class FacesByPlace {
  public:
    explicit FacesByPlace(const FvMesh& mesh) {
        double largest = 0.0;
        for (int f = mesh.innerFaces; f < mesh.firstInterfaceFace(); ++f) {
            const Vec3 centre = meanCorner(mesh, mesh.faceNodes[f]);
            m_faces.push_back({centre, f - mesh.innerFaces});
            largest =
                std::max({largest, std::abs(centre.x), std::abs(centre.y), std::abs(centre.z)});
        }
        std::sort(m_faces.begin(), m_faces.end(),
                  [](const Face& a, const Face& b) { return a.first.x < b.first.x; });
        m_margin = rounding * largest;
    }

    // Number from 0 among the boundary faces; -1 where there is none.
    int find(Vec3 centre) const {
        auto face =
            std::lower_bound(m_faces.begin(), m_faces.end(), centre.x - m_margin,
                             [](const Face& candidate, double x) { return candidate.first.x < x; });
        for (; face != m_faces.end() && face->first.x <= centre.x + m_margin; ++face)
            if (norm(face->first - centre) <= m_margin) return face->second;
        return -1;
    }

  private:
    using Face = std::pair<Vec3, int>;

    // The corners of a face may be added in another order.
    static constexpr double rounding = 1e-12;

    std::vector<Face> m_faces;
    double m_margin = 0.0;
};

}  // namespace

PatchPlaces findPatchPlaces(Ranks& ranks, const FvMesh& mesh, const std::vector<Patch>& patches,
                            const BoundaryGroups& groups) {
    PatchPlaces places;
    std::vector<PlacedFace> own;
    for (std::size_t p = 0; p < patches.size(); ++p) {
        if (groups.patches[p].kind == GroupKind::Wall) continue;
        for (int f = 0; f < patches[p].faces.count(); ++f)
            own.push_back(
                {static_cast<int>(places.names.size()), meanCorner(mesh, patches[p].faces[f])});
        places.names.push_back(patches[p].name);
    }
    for (const Bytes& message : gatherToAll(ranks, toBytes(own)))
        for (const PlacedFace& face : fromBytes<PlacedFace>(message)) {
            places.patchOfFace.push_back(face.patch);
            places.faceCentres.push_back(face.centre);
        }
    return places;
}

PlacedGroups groupsAt(const FvMesh& mesh, const PatchPlaces& places,
                      const std::vector<GroupKind>& ofPatch) {
    PlacedGroups placed;
    placed.groups.kinds.assign(static_cast<std::size_t>(mesh.boundaryFaces()), GroupKind::Wall);
    placed.groups.fromDataSet = !places.names.empty();
    const FacesByPlace faces(mesh);
    for (std::size_t i = 0; i < places.faceCentres.size(); ++i) {
        const int face = faces.find(places.faceCentres[i]);
        if (face < 0)
            ++placed.lost;
        else
            placed.groups.kinds[static_cast<std::size_t>(face)] =
                ofPatch[static_cast<std::size_t>(places.patchOfFace[i])];
    }
    return placed;
}

void addNearestPatches(const PatchPlaces& places, WeldLines& lines) {
    if (places.faceCentres.empty()) return;
    for (WeldLine& line : lines.lines) {
        std::pair<double, int> nearest{std::numeric_limits<double>::infinity(), 0};
        for (std::size_t f = 0; f < places.faceCentres.size(); ++f)
            nearest = std::min(
                nearest, {norm(places.faceCentres[f] - line.centroid), places.patchOfFace[f]});
        line.patchDistance = nearest.first;
        line.patch = places.names[static_cast<std::size_t>(nearest.second)];
    }
}

}  // namespace weldline
