#include "PatchPlaces.h"

#include <algorithm>
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
