#include "MeshQuality.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace weldline {

MeshQuality qualityOf(const FvMesh& mesh) {
    MeshQuality quality;
    double sum = 0.0;
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const int owner = mesh.owner[f];
        const int neighbour = mesh.neighbour[f];
        const Vec3 line = mesh.cellCentre[neighbour] - mesh.cellCentre[owner];
        const Vec3 area = mesh.faceArea[f];
        const double cosine = std::clamp(dot(line, area) / (norm(line) * norm(area)), -1.0, 1.0);
        const double angle = std::acos(cosine) * 180.0 / std::numbers::pi;
        sum += angle;
        quality.worstNonOrthogonality = std::max(quality.worstNonOrthogonality, angle);
        const auto [small, large] = std::minmax(mesh.cellVolume[owner], mesh.cellVolume[neighbour]);
        quality.worstVolumeRatio = std::max(quality.worstVolumeRatio, large / small);
    }
    if (mesh.innerFaces > 0) quality.meanNonOrthogonality = sum / mesh.innerFaces;
    return quality;
}

}  // namespace weldline
