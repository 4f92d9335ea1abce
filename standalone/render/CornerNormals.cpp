#include "CornerNormals.h"

namespace weldline {

namespace {

Vec3 direction(Vec3 vector) {
    const double length = norm(vector);
    return length > 0.0 ? (1.0 / length) * vector : Vec3{};
}

Rows trianglesAround(const Skin& skin) {
    std::vector<std::vector<int>> around(skin.points.size());
    for (std::size_t t = 0; t < skin.triangles.size(); ++t)
        for (const int corner : skin.triangles[t]) around[corner].push_back(static_cast<int>(t));
    Rows rows;
    for (const std::vector<int>& row : around) rows.append(row);
    return rows;
}

}  // namespace

std::vector<std::array<Vec3, 3>> cornerNormals(const Skin& skin) {
    std::vector<Vec3> areas;
    std::vector<Vec3> normals;
    for (const auto& [a, b, c] : skin.triangles) {
        areas.push_back(0.5 *
                        cross(skin.points[b] - skin.points[a], skin.points[c] - skin.points[a]));
        normals.push_back(direction(areas.back()));
    }
    const Rows around = trianglesAround(skin);
    std::vector<std::array<Vec3, 3>> corners(skin.triangles.size());
    for (std::size_t t = 0; t < corners.size(); ++t)
        for (std::size_t c = 0; c < 3; ++c) {
            Vec3 sum;
            for (const int other : around[skin.triangles[t][c]])
                if (dot(normals[t], normals[other]) >= kCosOfBend) sum = sum + areas[other];
            corners[t][c] = direction(sum);
        }
    return corners;
}

}  // namespace weldline
