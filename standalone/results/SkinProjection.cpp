#include "SkinProjection.h"

#include <algorithm>
#include <limits>

namespace weldline {

namespace {

Vec3 nearestOnEdge(Vec3 x, Vec3 a, Vec3 b) {
    const Vec3 along = b - a;
    const double square = dot(along, along);
    if (square == 0.0) return a;
    return a + std::clamp(dot(x - a, along) / square, 0.0, 1.0) * along;
}

Vec3 nearer(Vec3 x, Vec3 a, Vec3 b) {
    return norm(b - x) < norm(a - x) ? b : a;
}

}  // namespace

Vec3 nearestOnTriangle(Vec3 x, Vec3 a, Vec3 b, Vec3 c) {
    const Vec3 normal = cross(b - a, c - a);
    const double square = dot(normal, normal);
    if (square > 0.0) {
        const Vec3 foot = x - (dot(x - a, normal) / square) * normal;
        const bool isInside = dot(cross(b - a, foot - a), normal) >= 0.0 &&
                              dot(cross(c - b, foot - b), normal) >= 0.0 &&
                              dot(cross(a - c, foot - c), normal) >= 0.0;
        if (isInside) return foot;
    }
    return nearer(x, nearer(x, nearestOnEdge(x, a, b), nearestOnEdge(x, b, c)),
                  nearestOnEdge(x, c, a));
}

SkinProjection::SkinProjection(const LineMesh& mesh)
    : m_mesh(mesh), m_polygons(mesh.points.size()) {
    for (int p = 0; p < mesh.skin.count(); ++p)
        for (const int corner : mesh.skin[p]) m_polygons[corner].push_back(p);
}

Vec3 SkinProjection::onSkin(Vec3 x, const std::vector<int>& around) const {
    Vec3 best = x;
    double distance = std::numeric_limits<double>::infinity();
    for (const int node : around)
        for (const int polygon : m_polygons[node]) {
            const Vec3 candidate = nearestOnPolygon(x, polygon);
            const double far = norm(candidate - x);
            if (far < distance) {
                distance = far;
                best = candidate;
            }
        }
    return best;
}

Vec3 SkinProjection::nearestOnPolygon(Vec3 x, int polygon) const {
    const auto corners = m_mesh.skin[polygon];
    Vec3 middle;
    for (const int corner : corners) middle = middle + m_mesh.points[corner];
    middle = (1.0 / static_cast<double>(corners.size())) * middle;
    Vec3 best = middle;
    int previous = corners.back();
    for (const int corner : corners) {
        best = nearer(x, best,
                      nearestOnTriangle(x, middle, m_mesh.points[previous], m_mesh.points[corner]));
        previous = corner;
    }
    return best;
}

}  // namespace weldline
