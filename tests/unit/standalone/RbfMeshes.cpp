#include "RbfMeshes.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace weldline::test {

namespace {

struct Grid {
    int nx, ny, nz;
    int node(int i, int j, int k) const { return (k * (ny + 1) + j) * (nx + 1) + i; }
};

std::vector<Point> gridNodes(const Grid& grid, double jitter) {
    std::mt19937 generator(42);
    const auto move = [&](int i, int n) {
        const double u = static_cast<double>(generator()) / 2147483648.0 - 1.0;
        return i > 0 && i < n ? jitter * u : 0.0;
    };
    std::vector<Point> nodes;
    for (int k = 0; k <= grid.nz; ++k)
        for (int j = 0; j <= grid.ny; ++j)
            for (int i = 0; i <= grid.nx; ++i)
                nodes.push_back({i + move(i, grid.nx), j + move(j, grid.ny), k + move(k, grid.nz)});
    return nodes;
}

template <typename AddCube>
FaceCells cubes(const Grid& grid, double jitter, const AddCube& addCube) {
    FaceCells result;
    result.nodes = gridNodes(grid, jitter);
    for (int k = 0; k < grid.nz; ++k)
        for (int j = 0; j < grid.ny; ++j)
            for (int i = 0; i < grid.nx; ++i) {
                std::array<int, 8> corner{};  // bit 0: x, bit 1: y, bit 2: z
                for (int c = 0; c < 8; ++c)
                    corner[c] = grid.node(i + (c & 1), j + (c >> 1 & 1), k + (c >> 2));
                addCube(result, corner);
            }
    return result;
}

Point mean(const std::vector<Point>& points) {
    Point sum{};
    for (const Point& p : points)
        for (int axis = 0; axis < 3; ++axis) sum[axis] += p[axis];
    for (double& x : sum) x /= static_cast<double>(points.size());
    return sum;
}

struct Face {
    Point centre;
    std::vector<int> cells;
};

}  // namespace

FaceCells hexahedra(int nx, int ny, int nz, double jitter) {
    return cubes({nx, ny, nz}, jitter, [](FaceCells& result, const std::array<int, 8>& c) {
        result.cells.push_back({{c[0], c[2], c[6], c[4]},
                                {c[1], c[3], c[7], c[5]},
                                {c[0], c[1], c[5], c[4]},
                                {c[2], c[3], c[7], c[6]},
                                {c[0], c[1], c[3], c[2]},
                                {c[4], c[5], c[7], c[6]}});
    });
}

FaceCells tetrahedra(int nx, int ny, int nz, double jitter) {
    return cubes({nx, ny, nz}, jitter, [](FaceCells& result, const std::array<int, 8>& c) {
        // From corner 0 to corner 7 along three edges, in every order of the axes.
        std::array<int, 3> axes{1, 2, 4};
        do {
            const int a = c[0], b = c[axes[0]], d = c[axes[0] + axes[1]], e = c[7];
            result.cells.push_back({{a, b, d}, {a, b, e}, {a, d, e}, {b, d, e}});
        } while (std::next_permutation(axes.begin(), axes.end()));
    });
}

void fillHost(TestHost& host, const FaceCells& cells, double scale, Point shift) {
    const auto place = [&](Point p) {
        for (int axis = 0; axis < 3; ++axis) p[axis] = p[axis] * scale + shift[axis];
        return p;
    };
    std::map<std::vector<int>, Face> faces;
    for (const auto& polygons : cells.cells) {
        std::set<int> nodes;
        for (const auto& polygon : polygons) nodes.insert(polygon.begin(), polygon.end());
        std::vector<Point> corners;
        for (const int n : nodes) corners.push_back(cells.nodes[n]);
        const int cell = host.addCell(place(mean(corners)), NaN, {});
        for (const auto& polygon : polygons) {
            std::vector<int> key = polygon;
            std::sort(key.begin(), key.end());
            std::vector<Point> points;
            for (const int n : key) points.push_back(cells.nodes[n]);
            Face& face = faces[key];
            face.centre = place(mean(points));
            face.cells.push_back(cell);
        }
    }
    const Point none{NaN, NaN, NaN};
    for (const auto& [key, face] : faces) {
        if (face.cells.size() == 2)
            host.addInner(face.cells[0], face.cells[1], none, face.centre);
        else
            host.addBoundary(Group::Wall, face.cells[0], none, face.centre);
    }
    host.finish();
}

}  // namespace weldline::test
