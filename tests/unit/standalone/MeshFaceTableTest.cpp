// Numbering and orientation of faces.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "MeshParts.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

std::vector<int> row(const Rows& rows, int i) {
    return {rows[i].begin(), rows[i].end()};
}

//  +---+---+---+
//  | 1 | 2 | 0 |   the middle box is cell 2: faces (0, 2) and (1, 2) in this order, then five
//  boundary
//  +---+---+---+   faces of cell 0, five of cell 1, four of cell 2
TEST(MeshFaceTable, ordersInnerFacesByCells) {
    MeshParts parts(boxRowPoints({0, 1, 2, 3}));
    parts.shape(CellKind::Hexahedron, {8, 12, 13, 9, 10, 14, 15, 11});
    parts.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
    parts.shape(CellKind::Hexahedron, {4, 8, 9, 5, 6, 10, 11, 7});
    const FvMesh mesh = buildFvMesh(parts);
    EXPECT_EQ(mesh.innerFaces, 2);
    EXPECT_EQ(mesh.owner, (std::vector<int>{0, 1, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 2, 2, 2, 2}));
    EXPECT_EQ(mesh.neighbour, (std::vector<int>{2, 2}));
    EXPECT_EQ(row(mesh.cellFaces, 0), (std::vector<int>{0, 2, 3, 4, 5, 6}));
    EXPECT_EQ(row(mesh.cellFaces, 1), (std::vector<int>{1, 7, 8, 9, 10, 11}));
    EXPECT_EQ(row(mesh.cellFaces, 2), (std::vector<int>{0, 1, 12, 13, 14, 15}));
    EXPECT_EQ(mesh.faceArea[0].x, -1.0);
    EXPECT_EQ(mesh.faceArea[1].x, 1.0);
}

// Polygons shared by two polyhedra: written once for both, or once for each, in either direction.
TEST(MeshFaceTable, polyhedraShareOrRepeatPolygons) {
    const std::vector<int> shared{4, 5, 7, 6};
    MeshParts twice(boxRowPoints({0, 1, 3}));
    twice.polyhedron(
        {{0, 1, 3, 2}, shared, {0, 4, 5, 1}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 5, 7, 3}});
    twice.polyhedron(
        {{8, 9, 11, 10}, {6, 7, 5, 4}, {4, 8, 9, 5}, {6, 10, 11, 7}, {4, 8, 10, 6}, {5, 9, 11, 7}});
    CellMesh once = twice;
    once.cellPolygons.entries[7] = 1;
    for (const CellMesh& cells : {twice.mesh(), once}) {
        const FvMesh mesh = buildFvMesh(cells);
        EXPECT_EQ(mesh.faceCount(), 11);
        ASSERT_EQ(mesh.innerFaces, 1);
        EXPECT_DOUBLE_EQ(mesh.faceArea[0].x, 1.0);
        EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 1.0);
        EXPECT_DOUBLE_EQ(mesh.cellVolume[1], 2.0);
        EXPECT_DOUBLE_EQ(mesh.lambda[0], 1.0 / 3.0);
    }
}

// A hexahedron beside a polyhedron, a pyramid on a hexahedron: faces match across kinds.
TEST(MeshFaceTable, kindsMeet) {
    std::vector<Vec3> points = boxRowPoints({0, 1, 2});
    points.push_back({0.5, 0.5, 2});
    MeshParts parts(points);
    parts.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
    parts.polyhedron(
        {{8, 9, 11, 10}, {6, 7, 5, 4}, {4, 8, 9, 5}, {6, 10, 11, 7}, {4, 8, 10, 6}, {5, 9, 11, 7}});
    parts.shape(CellKind::Pyramid, {2, 6, 7, 3, 12});
    const FvMesh mesh = buildFvMesh(parts);
    EXPECT_EQ(mesh.innerFaces, 2);
    EXPECT_EQ(mesh.neighbour, (std::vector<int>{1, 2}));
    EXPECT_DOUBLE_EQ(mesh.faceArea[0].x, 1.0);
    EXPECT_DOUBLE_EQ(mesh.faceArea[1].z, 1.0);
}

TEST(MeshFaceTable, emptyMesh) {
    const FvMesh mesh = buildFvMesh(CellMesh{});
    EXPECT_EQ(mesh.cellCount(), 0);
    EXPECT_EQ(mesh.faceCount(), 0);
}

TEST(MeshFaceTable, pointsWithoutCellsStay) {
    MeshParts parts = boxRow({0, 1});
    CellMesh cells = parts;
    cells.points.push_back({9, 9, 9});
    EXPECT_EQ(buildFvMesh(cells).pointCount(), 9);
}

// A box of n^3 hexahedra in random cell order against a naive table: a map from node sets to cells.
TEST(MeshFaceTable, agreesWithNaiveTable) {
    constexpr int n = 5;
    MeshParts parts([] {
        std::vector<Vec3> points;
        for (int k = 0; k <= n; ++k) {
            for (int j = 0; j <= n; ++j) {
                for (int i = 0; i <= n; ++i) {
                    points.push_back({1.0 * i, 1.0 * j, 1.0 * k});
                }
            }
        }
        return points;
    }());
    std::vector<int> corners;
    for (int c = 0; c < n * n * n; ++c) {
        corners.push_back(c % n + (n + 1) * (c / n % n) + (n + 1) * (n + 1) * (c / (n * n)));
    }
    std::shuffle(corners.begin(), corners.end(), std::mt19937(7));
    constexpr int y = n + 1;
    constexpr int z = (n + 1) * (n + 1);
    std::map<std::set<int>, std::vector<int>> naive;
    for (std::size_t c = 0; c < corners.size(); ++c) {
        const int o = corners[c];
        parts.shape(CellKind::Hexahedron,
                    {o, o + 1, o + 1 + y, o + y, o + z, o + 1 + z, o + 1 + y + z, o + y + z});
        for (const std::set<int>& face : {std::set{o, o + 1, o + y, o + y + 1},
                                          std::set{o + z, o + z + 1, o + z + y, o + z + y + 1},
                                          std::set{o, o + 1, o + z, o + z + 1},
                                          std::set{o + y, o + y + 1, o + y + z, o + y + z + 1},
                                          std::set{o, o + y, o + z, o + y + z},
                                          std::set{o + 1, o + 1 + y, o + 1 + z, o + 1 + y + z}}) {
            naive[face].push_back(static_cast<int>(c));
        }
    }
    const FvMesh mesh = buildFvMesh(parts);
    ASSERT_EQ(mesh.faceCount(), static_cast<int>(naive.size()));
    for (int f = 0; f < mesh.faceCount(); ++f) {
        std::vector<int> cells{mesh.owner[static_cast<std::size_t>(f)]};
        if (f < mesh.innerFaces) {
            cells.push_back(mesh.neighbour[static_cast<std::size_t>(f)]);
        }
        const std::vector<int> nodes = row(mesh.faceNodes, f);
        EXPECT_EQ(cells, naive.at(std::set(nodes.begin(), nodes.end())));
    }
    for (int f = 0; f + 1 < mesh.innerFaces; ++f) {
        const auto g = static_cast<std::size_t>(f);
        EXPECT_LT(std::pair(mesh.owner[g], mesh.neighbour[g]),
                  std::pair(mesh.owner[g + 1], mesh.neighbour[g + 1]));
    }
}

}  // namespace
}  // namespace weldline::test
