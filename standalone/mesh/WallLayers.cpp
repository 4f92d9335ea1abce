#include "WallLayers.h"

#include <algorithm>
#include <limits>

namespace weldline {
namespace {

// Way through one cell: the face through which it leaves, and how far that is.
struct Exit {
    int face = -1;
    double distance = std::numeric_limits<double>::infinity();
};

Exit exitOf(const FvMesh& mesh, int cell, int entry, Vec3 start, Vec3 way) {
    Exit exit;
    for (const int face : mesh.cellFaces[cell]) {
        if (face == entry) continue;
        const double sign = mesh.owner[face] == cell ? 1.0 : -1.0;
        const Vec3 area = sign * mesh.faceArea[face];
        const double along = dot(area, way);
        if (along <= 0.0) continue;
        const double distance = std::max(dot(area, mesh.faceCentre[face] - start) / along, 0.0);
        if (distance < exit.distance) exit = {face, distance};
    }
    return exit;
}

int layersBehind(const FvMesh& mesh, int wallFace) {
    // Warped faces could lead in circles.
    constexpr int longest = 1000;
    const Vec3 area = mesh.faceArea[wallFace];
    const Vec3 way = (-1.0 / norm(area)) * area;
    Vec3 place = mesh.faceCentre[wallFace];
    int cell = mesh.owner[wallFace];
    int face = wallFace;
    for (int layers = 1; layers < longest; ++layers) {
        const Exit exit = exitOf(mesh, cell, face, place, way);
        if (exit.face < 0 || exit.face >= mesh.innerFaces) return layers;
        face = exit.face;
        place = place + exit.distance * way;
        cell = mesh.owner[face] == cell ? mesh.neighbour[face] : mesh.owner[face];
    }
    return longest;
}

}  // namespace

std::vector<int> layersBehindWalls(const FvMesh& mesh, const BoundaryGroups& groups) {
    constexpr std::size_t enough = 20000;
    std::vector<int> walls;
    for (int b = 0; b < mesh.boundaryFaces(); ++b)
        if (groups.kinds[b] == GroupKind::Wall) walls.push_back(mesh.innerFaces + b);
    const std::size_t stride = walls.size() / enough + 1;
    std::vector<int> layers;
    for (std::size_t w = 0; w < walls.size(); w += stride)
        layers.push_back(layersBehind(mesh, walls[w]));
    return layers;
}

}  // namespace weldline
