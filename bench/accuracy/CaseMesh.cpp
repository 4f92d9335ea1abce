#include "CaseMesh.h"

#include <random>

namespace weldline::accuracy {

CaseMesh meshOf(const FrontCase& front, CellShape shape, double h) {
    constexpr int layers = 3;
    constexpr double disturbance = 0.15;
    PlaneMesh plane = front.holeRadius > 0.0
                          ? plateWithHole(front.low, front.high, front.holeRadius, h)
                          : rectangle(front.low, front.high, h);
    jitter(plane, disturbance);
    CaseMesh result{h, buildFvMesh(plate(plane, shape, layers, h)), {}};
    result.groups.kinds.assign(static_cast<std::size_t>(result.mesh.boundaryFaces()),
                               GroupKind::Wall);
    return result;
}

std::vector<float> arrivalTimes(const FrontCase& front, const CaseMesh& mesh, double noise) {
    std::mt19937 generator(3);
    std::vector<float> times;
    for (const Vec3& centre : mesh.mesh.cellCentre) {
        const double u = static_cast<double>(generator()) / 2147483648.0 - 1.0;
        times.push_back(static_cast<float>(front.arrival({centre.x, centre.y}) +
                                           noise * u * mesh.h / kFrontSpeed));
    }
    return times;
}

}  // namespace weldline::accuracy
