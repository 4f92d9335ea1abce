#include <gtest/gtest.h>

#include "GridMesh.h"
#include "mesh/FvMesh.h"
#include "mesh/MeshQuality.h"
#include "results/Skin.h"

namespace weldline::test {

TEST(Skin, of_a_block_has_two_triangles_a_square) {
    const FvMesh mesh = buildFvMesh(hexahedraMesh(4, 3, 2));
    const std::vector<float> fillTime(24, 2.0F);
    const Skin skin = skinOf(mesh, fillTime);
    EXPECT_EQ(skin.triangles.size(), 2U * 2 * (4 * 3 + 4 * 2 + 3 * 2));
    // All points but the 3 x 2 x 1 inside.
    EXPECT_EQ(skin.points.size(), 5U * 4 * 3 - 6);
    EXPECT_EQ(skin.edges.size(), 4U * (4 + 3 + 2));
    for (const float time : skin.time) EXPECT_EQ(time, 2.0F);
}

TEST(Skin, triangles_look_outwards) {
    const FvMesh mesh = buildFvMesh(hexahedraMesh(3, 1, 1));
    const Skin skin = skinOf(mesh, {1.0F, 1.0F, 1.0F});
    const Vec3 middle{1.5, 0.5, 0.5};
    for (const auto& [a, b, c] : skin.triangles) {
        const Vec3 x = skin.points[static_cast<std::size_t>(a)];
        const Vec3 normal = cross(skin.points[static_cast<std::size_t>(b)] - x,
                                  skin.points[static_cast<std::size_t>(c)] - x);
        EXPECT_GT(dot(normal, x - middle), 0.0);
    }
}

// Cells | 2 | 0 | 6 |: the middle one was not reached.
TEST(Skin, times_are_means_over_reached_cells) {
    const FvMesh mesh = buildFvMesh(hexahedraMesh(3, 1, 1));
    const Skin skin = skinOf(mesh, {2.0F, 0.0F, 6.0F});
    for (std::size_t p = 0; p < skin.points.size(); ++p)
        EXPECT_EQ(skin.time[p], skin.points[p].x < 1.5 ? 2.0F : 6.0F);
    for (const float time : skinOf(mesh, {0.0F, 0.0F, 0.0F}).time) EXPECT_EQ(time, -1.0F);
}

TEST(Skin, tells_which_triangles_the_melt_reached) {
    const FvMesh mesh = buildFvMesh(hexahedraMesh(3, 1, 1));
    const Skin skin = skinOf(mesh, {2.0F, 0.0F, 6.0F});
    ASSERT_EQ(skin.isReached.size(), skin.triangles.size());
    for (std::size_t t = 0; t < skin.triangles.size(); ++t) {
        double x = 0.0;
        for (const int corner : skin.triangles[t]) x += skin.points[corner].x / 3.0;
        EXPECT_EQ(skin.isReached[t], x < 1.0 || x > 2.0) << x;
    }
}

TEST(MeshQuality, of_cubes_is_ideal) {
    const MeshQuality quality = qualityOf(buildFvMesh(hexahedraMesh(3, 2, 2)));
    EXPECT_NEAR(quality.worstNonOrthogonality, 0.0, 1e-5);
    EXPECT_NEAR(quality.worstVolumeRatio, 1.0, 1e-12);
}

// Two sheared cubes: the line between the centres leans by 45 degrees against the face between.
TEST(MeshQuality, of_a_sheared_pair) {
    CellMesh cells = hexahedraMesh(3, 1, 1);
    for (Vec3& point : cells.points) point.y += point.x;
    const MeshQuality quality = qualityOf(buildFvMesh(cells));
    EXPECT_NEAR(quality.worstNonOrthogonality, 45.0, 1e-9);
    EXPECT_NEAR(quality.meanNonOrthogonality, 45.0, 1e-9);
}

TEST(MeshQuality, ratio_is_of_larger_to_smaller) {
    CellMesh cells = hexahedraMesh(3, 1, 1);
    for (Vec3& point : cells.points)
        if (point.x > 2.5) point.x = 6.0;
    EXPECT_NEAR(qualityOf(buildFvMesh(cells)).worstVolumeRatio, 4.0, 1e-12);
}

}  // namespace weldline::test
