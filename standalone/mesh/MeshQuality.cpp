#include "MeshQuality.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace weldline {

namespace {

// Beyond this, solvers say, gradients across a face are no longer to be trusted.
constexpr double steepAngle = 70.0;

// One over the usual VolumeFilter.
constexpr double unevenRatio = 5.0;

double skewness(const FvMesh& mesh, int face, Vec3 start, Vec3 line) {
    const Vec3 area = mesh.faceArea[face];
    const double along = dot(line, area);
    if (along == 0.0) return 0.0;
    const Vec3 toFace = mesh.faceCentre[face] - start;
    const double share = dot(toFace, area) / along;
    const Vec3 miss{toFace.x - share * line.x, toFace.y - share * line.y,
                    toFace.z - share * line.z};
    return norm(miss) / norm(line);
}

}  // namespace

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
        quality.steepFaces += angle > steepAngle ? 1 : 0;
        quality.worstSkewness =
            std::max(quality.worstSkewness, skewness(mesh, f, mesh.cellCentre[owner], line));
        const auto [small, large] = std::minmax(mesh.cellVolume[owner], mesh.cellVolume[neighbour]);
        quality.worstVolumeRatio = std::max(quality.worstVolumeRatio, large / small);
        quality.unevenFaces += large / small > unevenRatio ? 1 : 0;
    }
    if (mesh.innerFaces > 0) quality.meanNonOrthogonality = sum / mesh.innerFaces;
    return quality;
}

}  // namespace weldline
