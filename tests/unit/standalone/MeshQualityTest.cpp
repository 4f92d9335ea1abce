#include "mesh/MeshQuality.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "MeshParts.h"
#include "mesh/WallLayers.h"

namespace weldline::test {

namespace {

// The boxes of boxRow({0, 1, 2}), the wall at x = 2 moved up by 1. The centres lie at (0.5, 0.5)
// and (1.5, 1), the line between them passes x = 1 at y = 0.75, the middle of the face lies at 0.5.
TEST(MeshQuality, skewness_is_how_far_the_line_misses_the_middle_of_the_face) {
    CellMesh cells = boxRow({0, 1, 2});
    for (Vec3& point : cells.points)
        if (point.x == 2.0) point.y += 1.0;
    EXPECT_NEAR(qualityOf(buildFvMesh(cells)).worstSkewness, 0.25 / std::sqrt(1.25), 1e-12);
    EXPECT_NEAR(qualityOf(buildFvMesh(boxRow({0, 1, 3}))).worstSkewness, 0.0, 1e-12);
}

// The line leans by atan 2.7 = 69.7 and atan 2.8 = 70.3 degrees.
TEST(MeshQuality, steep_faces_lean_by_more_than_70_degrees) {
    for (const auto& [lean, steep] : {std::pair{2.7, 0}, {2.8, 2}}) {
        CellMesh cells = boxRow({0, 1, 2, 3});
        for (Vec3& point : cells.points) point.y += lean * point.x;
        EXPECT_EQ(qualityOf(buildFvMesh(cells)).steepFaces, steep);
    }
}

TEST(MeshQuality, uneven_faces_lie_between_volumes_of_more_than_1_to_5) {
    EXPECT_EQ(qualityOf(buildFvMesh(boxRow({0, 1, 6.1}))).unevenFaces, 1);
    EXPECT_EQ(qualityOf(buildFvMesh(boxRow({0, 1, 5.9}))).unevenFaces, 0);
    EXPECT_EQ(qualityOf(buildFvMesh(boxRow({0, 5.1, 6.1, 11.2}))).unevenFaces, 2);
}

BoundaryGroups allWalls(const FvMesh& mesh) {
    BoundaryGroups groups;
    groups.kinds.assign(static_cast<std::size_t>(mesh.boundaryFaces()), GroupKind::Wall);
    return groups;
}

// Three boxes in a row: each has four walls with one cell behind, the ends see three.
TEST(WallLayers, are_counted_straight_through_the_part) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1, 2, 4}));
    std::vector<int> layers = layersBehindWalls(mesh, allWalls(mesh));
    std::sort(layers.begin(), layers.end());
    std::vector<int> expected(12, 1);
    expected.insert(expected.end(), {3, 3});
    EXPECT_EQ(layers, expected);
}

TEST(WallLayers, start_at_walls_alone) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1, 2, 4}));
    BoundaryGroups groups = allWalls(mesh);
    std::fill(groups.kinds.begin(), groups.kinds.end(), GroupKind::Inlet);
    EXPECT_TRUE(layersBehindWalls(mesh, groups).empty());
}

// Boxes that lean by 2 in y per unit of x and stand 1 high: the way from the end at x = 0 runs
// along y = 0.5, and leaves the first box through its floor at x = 0.25.
TEST(WallLayers, leave_a_leaning_cell_through_the_face_that_is_met_first) {
    CellMesh cells = boxRow({0, 1, 2});
    for (Vec3& point : cells.points) point.y += 2.0 * point.x;
    const FvMesh mesh = buildFvMesh(cells);
    BoundaryGroups groups = allWalls(mesh);
    for (int b = 0; b < mesh.boundaryFaces(); ++b)
        if (mesh.faceCentre[mesh.innerFaces + b].x > 0.0) groups.kinds[b] = GroupKind::Symmetry;
    EXPECT_EQ(layersBehindWalls(mesh, groups), std::vector<int>{1});
}

}  // namespace

}  // namespace weldline::test
