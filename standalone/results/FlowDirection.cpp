#include "FlowDirection.h"

#include "bind/FillTime.h"

namespace weldline {

// A closed cell's area vectors sum to zero, so taking differences from the own value changes
// nothing in exact arithmetic, and a uniform field gives exactly zero instead of rounding noise.
std::vector<Vec3> fillTimeGradients(const FvMesh& mesh, const std::vector<float>& fillTime,
                                    const CellsAcross& across) {
    std::vector<Vec3> gradient(mesh.cellCount());
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const int a = mesh.owner[f];
        const int b = mesh.neighbour[f];
        if (!isReached(fillTime[a]) || !isReached(fillTime[b])) continue;
        const double rise = static_cast<double>(fillTime[b]) - static_cast<double>(fillTime[a]);
        // Face value minus own value: lambda * rise seen from a, (lambda - 1) * rise seen from b;
        // the area vector points out of a and into b.
        gradient[a] = gradient[a] + (mesh.lambda[f] * rise) * mesh.faceArea[f];
        gradient[b] = gradient[b] + ((1.0 - mesh.lambda[f]) * rise) * mesh.faceArea[f];
    }
    for (int i = 0; i < mesh.interfaceFaces; ++i) {
        const int f = mesh.firstInterfaceFace() + i;
        const int a = mesh.owner[f];
        if (!isReached(fillTime[a]) || !isReached(across.fillTime[i])) continue;
        const double rise = static_cast<double>(across.fillTime[i]) - double{fillTime[a]};
        gradient[a] = gradient[a] + (across.lambda[i] * rise) * mesh.faceArea[f];
    }
    for (int c = 0; c < mesh.cellCount(); ++c) {
        gradient[c] = (1.0 / mesh.cellVolume[c]) * gradient[c];
    }
    return gradient;
}

std::vector<Vec3> flowDirections(const FvMesh& mesh, const std::vector<float>& fillTime,
                                 const CellsAcross& across) {
    std::vector<Vec3> direction = fillTimeGradients(mesh, fillTime, across);
    for (Vec3& d : direction) {
        const double length = norm(d);
        d = length > 0.0 ? (1.0 / length) * d : Vec3{};
    }
    return direction;
}

int countFlatCells(const FvMesh& mesh, const std::vector<float>& fillTime,
                   const CellsAcross& across) {
    int flat = 0;
    for (const Vec3& g : fillTimeGradients(mesh, fillTime, across)) {
        const double length = norm(g);
        if (length > 0.0 && length < kFlatFillTimeGradient) ++flat;
    }
    return flat;
}

}  // namespace weldline
