#pragma once

#include <array>
#include <span>
#include <vector>

#include "Vec3.h"

namespace weldline {

struct PolygonGeometry {
    Vec3 centre;
    Vec3 area;  // normal by the right-hand rule along the corners; length = area
};

// The general case of polygonGeometry.
inline PolygonGeometry splitAtMean(const std::vector<Vec3>& points, std::span<const int> corners) {
    const auto point = [&](std::size_t i) { return points[static_cast<std::size_t>(corners[i])]; };
    const std::size_t n = corners.size();
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

// The same for a quadrangle, term by term, its four triangles side by side: most faces are
// quadrangles, and roots and divisions of two triangles cost as much as those of one.
inline PolygonGeometry splitQuadrangle(const std::vector<Vec3>& points,
                                       std::span<const int, 4> corners) {
    using Four = std::array<double, 4>;
    Four x, y, z;
    Vec3 mean;
    for (std::size_t i = 0; i < 4; ++i) {
        const Vec3 point = points[static_cast<std::size_t>(corners[i])];
        mean = mean + point;
        x[i] = point.x;
        y[i] = point.y;
        z[i] = point.z;
    }
    mean = 0.25 * mean;
    for (std::size_t i = 0; i < 4; ++i) {
        x[i] -= mean.x;
        y[i] -= mean.y;
        z[i] -= mean.z;
    }
    const Four xn{x[1], x[2], x[3], x[0]};
    const Four yn{y[1], y[2], y[3], y[0]};
    const Four zn{z[1], z[2], z[3], z[0]};
    Four ax, ay, az, size, third, mx, my, mz;
    for (std::size_t i = 0; i < 4; ++i) {
        ax[i] = 0.5 * (y[i] * zn[i] - z[i] * yn[i]);
        ay[i] = 0.5 * (z[i] * xn[i] - x[i] * zn[i]);
        az[i] = 0.5 * (x[i] * yn[i] - y[i] * xn[i]);
        size[i] = std::sqrt((ax[i] * ax[i] + ay[i] * ay[i]) + az[i] * az[i]);
        third[i] = size[i] / 3.0;
        mx[i] = third[i] * (x[i] + xn[i]);
        my[i] = third[i] * (y[i] + yn[i]);
        mz[i] = third[i] * (z[i] + zn[i]);
    }
    // A sum that begins with 0.0, as above, is never -0.0.
    const auto sum = [](const Four& v) { return (((0.0 + v[0]) + v[1]) + v[2]) + v[3]; };
    const double weight = sum(size);
    const Vec3 offset = weight > 0.0 ? (1.0 / weight) * Vec3{sum(mx), sum(my), sum(mz)} : Vec3{};
    return {mean + offset, {sum(ax), sum(ay), sum(az)}};
}

// Splits the polygon at the mean of its corners into triangles: the area vector is the sum of their
// area vectors, the centre the mean of their centres weighted by their areas. A polygon without
// area has the mean of its corners as its centre.
inline PolygonGeometry polygonGeometry(const std::vector<Vec3>& points,
                                       std::span<const int> corners) {
    if (corners.size() == 4) {
        return splitQuadrangle(points, corners.first<4>());
    }
    if (corners.size() != 3) {
        return splitAtMean(points, corners);
    }
    const auto point = [&](std::size_t i) { return points[static_cast<std::size_t>(corners[i])]; };
    const Vec3 a = point(0);
    return {(1.0 / 3.0) * (a + point(1) + point(2)), 0.5 * cross(point(1) - a, point(2) - a)};
}

}  // namespace weldline
