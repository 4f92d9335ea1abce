#pragma once

#include <array>
#include <vector>

namespace weldline::accuracy {

using Point2 = std::array<double, 2>;

// Polygons in a plane, each a closed loop of points in counter-clockwise order; 0-based.
struct PlaneMesh {
    std::vector<Point2> points;
    std::vector<std::vector<int>> polygons;
};

// Quadrangles of edge h (a divisor of all lengths) over the box from `low` to `high`.
PlaneMesh rectangle(Point2 low, Point2 high, double h);

// The same box with a circular hole of the given radius around the origin: an O-grid between the
// circle and a square of twice its size (which must lie inside the box), rectangles around it.
PlaneMesh plateWithHole(Point2 low, Point2 high, double radius, double h);

// Moves every point that lies on no boundary edge by up to `amount` of its shortest edge per axis.
// The same mesh is moved in the same way each time.
void jitter(PlaneMesh& mesh, double amount);

// Splits quadrangles along one of their diagonals, chosen irregularly but always the same way.
PlaneMesh triangles(const PlaneMesh& quadrangles);

// One polygon per point of a mesh of triangles: through the centroids of the triangles around it
// and, on the boundary, the midpoints of its boundary edges and the point itself.
PlaneMesh dual(const PlaneMesh& triangles);

}  // namespace weldline::accuracy
