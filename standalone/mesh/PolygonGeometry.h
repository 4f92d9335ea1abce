#pragma once

#include <span>
#include <vector>

#include "Vec3.h"

namespace weldline {

struct PolygonGeometry {
    Vec3 centre;
    Vec3 area;  // normal by the right-hand rule along the corners; length = area
};

// Splits the polygon at the mean of its corners into triangles: the area vector is the sum of their
// area vectors, the centre the mean of their centres weighted by their areas. A polygon without
// area has the mean of its corners as its centre.
inline PolygonGeometry polygonGeometry(const std::vector<Vec3>& points,
                                       std::span<const int> corners) {
    const auto point = [&](std::size_t i) { return points[static_cast<std::size_t>(corners[i])]; };
    const std::size_t n = corners.size();
    if (n == 3) {
        const Vec3 a = point(0);
        return {(1.0 / 3.0) * (a + point(1) + point(2)), 0.5 * cross(point(1) - a, point(2) - a)};
    }
    Vec3 mean;
    for (std::size_t i = 0; i < n; ++i) {
        mean = mean + point(i);
    }
    mean = (1.0 / static_cast<double>(n)) * mean;

    Vec3 area;
    Vec3 moment;
    double weight = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        const Vec3 a = point(i);
        const Vec3 b = point(i + 1 < n ? i + 1 : 0);
        const Vec3 triangle = 0.5 * cross(a - mean, b - mean);
        const double size = norm(triangle);
        area = area + triangle;
        // Relative to the mean, so that a mesh far from the origin loses no digits.
        moment = moment + (size / 3.0) * ((a - mean) + (b - mean));
        weight += size;
    }
    const Vec3 offset = weight > 0.0 ? (1.0 / weight) * moment : Vec3{};
    return {mean + offset, area};
}

}  // namespace weldline
