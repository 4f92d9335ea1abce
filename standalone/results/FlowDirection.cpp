#include "FlowDirection.h"

#include "bind/FillTime.h"

namespace weldline {

// A closed cell's area vectors sum to zero, so taking differences from the own value changes
// nothing in exact arithmetic, and a uniform field gives exactly zero instead of rounding noise.
std::vector<Vec3> flowDirections(const FvMesh& mesh, const std::vector<float>& fillTime) {
    std::vector<Vec3> direction(mesh.cellCount());
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const int a = mesh.owner[f];
        const int b = mesh.neighbour[f];
        if (!isReached(fillTime[a]) || !isReached(fillTime[b])) continue;
        const double rise = static_cast<double>(fillTime[b]) - static_cast<double>(fillTime[a]);
        // Face value minus own value: lambda * rise seen from a, (lambda - 1) * rise seen from b;
        // the area vector points out of a and into b.
        direction[a] = direction[a] + (mesh.lambda[f] * rise) * mesh.faceArea[f];
        direction[b] = direction[b] + ((1.0 - mesh.lambda[f]) * rise) * mesh.faceArea[f];
    }
    for (Vec3& d : direction) {
        const double length = norm(d);
        d = length > 0.0 ? (1.0 / length) * d : Vec3{};
    }
    return direction;
}

}  // namespace weldline
