#include "PlaneMesh.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <random>
#include <utility>

namespace weldline::accuracy {

namespace {

using Edge = std::pair<int, int>;

// A rectangular grid of points of which only those in use are made.
class GridPoints {
  public:
    GridPoints(PlaneMesh& mesh, Point2 low, double h) : m_mesh(mesh), m_low(low), m_h(h) {}

    int at(int i, int j) {
        const auto [place, isNew] =
            m_number.try_emplace({i, j}, static_cast<int>(m_mesh.points.size()));
        if (isNew) m_mesh.points.push_back({m_low[0] + i * m_h, m_low[1] + j * m_h});
        return place->second;
    }

  private:
    PlaneMesh& m_mesh;
    Point2 m_low;
    double m_h;
    std::map<Edge, int> m_number;
};

// Directed edges, each with the polygon to its left.
std::map<Edge, int> edgePolygons(const PlaneMesh& mesh) {
    std::map<Edge, int> left;
    for (std::size_t p = 0; p < mesh.polygons.size(); ++p) {
        const std::vector<int>& loop = mesh.polygons[p];
        for (std::size_t k = 0; k < loop.size(); ++k)
            left[{loop[k], loop[(k + 1) % loop.size()]}] = static_cast<int>(p);
    }
    return left;
}

Point2 mean(const PlaneMesh& mesh, const std::vector<int>& loop) {
    Point2 sum{};
    for (const int n : loop)
        for (int axis = 0; axis < 2; ++axis) sum[axis] += mesh.points[n][axis];
    for (double& x : sum) x /= static_cast<double>(loop.size());
    return sum;
}

// Points of the square ring around the O-grid, counter-clockwise from the lower right corner.
std::vector<int> squareRing(GridPoints& grid, int left, int bottom, int cells) {
    std::vector<int> ring;
    ring.reserve(static_cast<std::size_t>(4 * cells));
    for (int k = 0; k < cells; ++k) ring.push_back(grid.at(left + cells, bottom + k));
    for (int k = 0; k < cells; ++k) ring.push_back(grid.at(left + cells - k, bottom + cells));
    for (int k = 0; k < cells; ++k) ring.push_back(grid.at(left, bottom + cells - k));
    for (int k = 0; k < cells; ++k) ring.push_back(grid.at(left + k, bottom));
    return ring;
}

// Rings from the circle (first) to the given outer ring (last); the circle is divided evenly.
void addOGrid(PlaneMesh& mesh, const std::vector<int>& outer, double radius, int layers) {
    const auto count = static_cast<int>(outer.size());
    std::vector<std::vector<int>> rings(layers + 1, outer);
    for (int k = 0; k < layers; ++k)
        for (int p = 0; p < count; ++p) {
            const double angle = (2.0 * p / count - 0.25) * std::numbers::pi;
            const Point2 inner{radius * std::cos(angle), radius * std::sin(angle)};
            const Point2 end = mesh.points[outer[p]];
            const double t = static_cast<double>(k) / layers;
            rings[k][p] = static_cast<int>(mesh.points.size());
            mesh.points.push_back(
                {inner[0] + t * (end[0] - inner[0]), inner[1] + t * (end[1] - inner[1])});
        }
    for (int k = 0; k < layers; ++k)
        for (int p = 0; p < count; ++p) {
            const int q = (p + 1) % count;
            mesh.polygons.push_back({rings[k][p], rings[k + 1][p], rings[k + 1][q], rings[k][q]});
        }
}

// From one of two, by a fixed scrambling of the number.
bool coin(std::size_t number) {
    std::minstd_rand generator(static_cast<unsigned>(number) + 1);
    generator.discard(3);
    return generator() % 2 == 0;
}

}  // namespace

PlaneMesh rectangle(Point2 low, Point2 high, double h) {
    PlaneMesh mesh;
    GridPoints grid(mesh, low, h);
    const int nx = static_cast<int>(std::lround((high[0] - low[0]) / h));
    const int ny = static_cast<int>(std::lround((high[1] - low[1]) / h));
    for (int j = 0; j < ny; ++j)
        for (int i = 0; i < nx; ++i)
            mesh.polygons.push_back(
                {grid.at(i, j), grid.at(i + 1, j), grid.at(i + 1, j + 1), grid.at(i, j + 1)});
    return mesh;
}

PlaneMesh plateWithHole(Point2 low, Point2 high, double radius, double h) {
    PlaneMesh mesh;
    GridPoints grid(mesh, low, h);
    const int nx = static_cast<int>(std::lround((high[0] - low[0]) / h));
    const int ny = static_cast<int>(std::lround((high[1] - low[1]) / h));
    const int left = static_cast<int>(std::lround((-2.0 * radius - low[0]) / h));
    const int bottom = static_cast<int>(std::lround((-2.0 * radius - low[1]) / h));
    const int side = static_cast<int>(std::lround(4.0 * radius / h));
    for (int j = 0; j < ny; ++j)
        for (int i = 0; i < nx; ++i) {
            const bool inSquare = i >= left && i < left + side && j >= bottom && j < bottom + side;
            if (!inSquare)
                mesh.polygons.push_back(
                    {grid.at(i, j), grid.at(i + 1, j), grid.at(i + 1, j + 1), grid.at(i, j + 1)});
        }
    // The gap between circle and square is 1 to 1.8 radii wide, the edges along it 0.4 to 1 h.
    const int layers = static_cast<int>(std::lround(1.7 * radius / h));
    addOGrid(mesh, squareRing(grid, left, bottom, side), radius, layers);
    return mesh;
}

void jitter(PlaneMesh& mesh, double amount) {
    std::vector<bool> fixed(mesh.points.size(), false);
    std::vector<double> shortest(mesh.points.size(), std::numeric_limits<double>::max());
    const std::map<Edge, int> left = edgePolygons(mesh);
    for (const auto& [edge, polygon] : left) {
        const auto [a, b] = edge;
        const double length = std::hypot(mesh.points[a][0] - mesh.points[b][0],
                                         mesh.points[a][1] - mesh.points[b][1]);
        const bool onBoundary = !left.contains({b, a});
        for (const int n : {a, b}) {
            shortest[n] = std::min(shortest[n], length);
            if (onBoundary) fixed[n] = true;
        }
    }
    std::mt19937 generator(7);
    for (std::size_t n = 0; n < mesh.points.size(); ++n)
        for (double& x : mesh.points[n]) {
            const double u = static_cast<double>(generator()) / 2147483648.0 - 1.0;
            if (!fixed[n]) x += amount * shortest[n] * u;
        }
}

PlaneMesh triangles(const PlaneMesh& quadrangles) {
    PlaneMesh mesh{quadrangles.points, {}};
    for (std::size_t p = 0; p < quadrangles.polygons.size(); ++p) {
        const std::vector<int>& q = quadrangles.polygons[p];
        const std::size_t s = coin(p) ? 1 : 0;
        mesh.polygons.push_back({q[s], q[s + 1], q[s + 2]});
        mesh.polygons.push_back({q[s + 2], q[(s + 3) % 4], q[s]});
    }
    return mesh;
}

PlaneMesh dual(const PlaneMesh& triangles) {
    PlaneMesh mesh;
    for (const std::vector<int>& t : triangles.polygons) mesh.points.push_back(mean(triangles, t));
    const std::map<Edge, int> left = edgePolygons(triangles);

    // Per point one outgoing edge to start from: on the boundary the one with nothing to its right.
    std::vector<Edge> start(triangles.points.size(), {-1, -1});
    std::map<Edge, int> midpoint;
    for (const auto& [edge, polygon] : left) {
        const auto [a, b] = edge;
        const bool onBoundary = !left.contains({b, a});
        if (onBoundary) {
            midpoint[edge] = static_cast<int>(mesh.points.size());
            mesh.points.push_back(mean(triangles, {a, b}));
        }
        if (start[a].first < 0 || onBoundary) start[a] = edge;
    }
    for (std::size_t n = 0; n < triangles.points.size(); ++n) {
        std::vector<int> loop;
        const bool onBoundary = midpoint.contains(start[n]);
        if (onBoundary) loop.push_back(midpoint[start[n]]);
        // Counter-clockwise around the point, from triangle to triangle.
        for (Edge edge = start[n]; left.contains(edge);) {
            const int triangle = left.at(edge);
            loop.push_back(triangle);
            const std::vector<int>& t = triangles.polygons[triangle];
            const auto here = std::find(t.begin(), t.end(), static_cast<int>(n)) - t.begin();
            const int previous = t[(here + 2) % 3];
            edge = {static_cast<int>(n), previous};
            if (edge == start[n]) break;
            if (!left.contains(edge)) loop.push_back(midpoint.at({previous, edge.first}));
        }
        if (onBoundary) {
            loop.push_back(static_cast<int>(mesh.points.size()));
            mesh.points.push_back(triangles.points[n]);
        }
        mesh.polygons.push_back(loop);
    }
    return mesh;
}

}  // namespace weldline::accuracy
