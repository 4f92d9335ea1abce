#include "Skin.h"

#include <algorithm>
#include <map>

#include "bind/FillTime.h"

namespace weldline {

namespace {

// Numbers the corners of boundary faces in order of their first appearance.
std::vector<int> numberPoints(const FvMesh& mesh, Skin& skin) {
    std::vector<int> pointOf(mesh.points.size(), -1);
    for (int f = mesh.innerFaces; f < mesh.firstInterfaceFace(); ++f)
        for (const int n : mesh.faceNodes[f]) {
            if (pointOf[n] >= 0) continue;
            pointOf[n] = static_cast<int>(skin.points.size());
            skin.points.push_back(mesh.points[n]);
        }
    return pointOf;
}

void addTimes(const FvMesh& mesh, const std::vector<float>& fillTime,
              const std::vector<int>& pointOf, Skin& skin) {
    std::vector<double> sum(skin.points.size(), 0.0);
    std::vector<int> cells(skin.points.size(), 0);
    for (int f = mesh.innerFaces; f < mesh.firstInterfaceFace(); ++f) {
        const float time = fillTime[mesh.owner[f]];
        if (!isReached(time)) continue;
        for (const int n : mesh.faceNodes[f]) {
            sum[pointOf[n]] += static_cast<double>(time);
            ++cells[pointOf[n]];
        }
    }
    for (std::size_t p = 0; p < sum.size(); ++p)
        skin.time.push_back(cells[p] > 0 ? static_cast<float>(sum[p] / cells[p]) : -1.0F);
}

void addTriangles(const FvMesh& mesh, const std::vector<float>& fillTime,
                  const std::vector<int>& pointOf, Skin& skin) {
    for (int f = mesh.innerFaces; f < mesh.firstInterfaceFace(); ++f) {
        const auto corners = mesh.faceNodes[f];
        for (std::size_t i = 2; i < corners.size(); ++i) {
            skin.triangles.push_back(
                {pointOf[corners[0]], pointOf[corners[i - 1]], pointOf[corners[i]]});
            skin.isReached.push_back(isReached(fillTime[mesh.owner[f]]));
        }
    }
}

// An edge of two faces whose normals differ enough.
void addEdges(const FvMesh& mesh, const std::vector<int>& pointOf, Skin& skin) {
    std::map<std::array<int, 2>, int> open;  // with the face that has it
    for (int f = mesh.innerFaces; f < mesh.firstInterfaceFace(); ++f) {
        int previous = mesh.faceNodes[f].back();
        for (const int n : mesh.faceNodes[f]) {
            const std::array<int, 2> edge{pointOf[std::min(previous, n)],
                                          pointOf[std::max(previous, n)]};
            previous = n;
            const auto [other, isNew] = open.try_emplace(edge, f);
            if (isNew) continue;
            const Vec3 a = mesh.faceArea[f];
            const Vec3 b = mesh.faceArea[other->second];
            if (dot(a, b) < kCosOfBend * norm(a) * norm(b)) skin.edges.push_back(edge);
            open.erase(other);
        }
    }
}

}  // namespace

Skin skinOf(const FvMesh& mesh, const std::vector<float>& fillTime) {
    Skin skin;
    const std::vector<int> pointOf = numberPoints(mesh, skin);
    addTimes(mesh, fillTime, pointOf, skin);
    addTriangles(mesh, fillTime, pointOf, skin);
    addEdges(mesh, pointOf, skin);
    return skin;
}

}  // namespace weldline
