#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "mesh/QuadrangleBlock.h"

namespace weldline {
namespace {

bool sameBits(const PolygonGeometry& a, const PolygonGeometry& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::vector<PolygonGeometry> inBlocks(const std::vector<Vec3>& points,
                                      const std::vector<std::array<int, 4>>& quadrangles) {
    std::vector<PolygonGeometry> result(quadrangles.size());
    const auto take = [&](std::size_t q, const PolygonGeometry& g) { result[q] = g; };
    QuadrangleBlock block;
    for (std::size_t q = 0; q < quadrangles.size(); ++q) {
        block.add(points, quadrangles[q], q);
        if (block.isFull()) {
            block.flush(take);
        }
    }
    block.flush(take);
    return result;
}

TEST(MeshQuadrangles, keeps_the_bits_of_the_polygon) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(-1.0, 1.0);
    std::vector<Vec3> points;
    std::vector<std::array<int, 4>> quadrangles;
    for (int q = 0; q < 1000; ++q) {
        // Every third lies in a plane of coordinates, where terms are 0.0 or -0.0.
        const double height = q % 3 == 0 ? 0.0 : 1.0;
        for (int k = 0; k < 4; ++k) {
            points.push_back({anywhere(random), anywhere(random), height * anywhere(random)});
        }
        quadrangles.push_back({4 * q, 4 * q + 1, 4 * q + 2, 4 * q + 3});
    }
    const auto result = inBlocks(points, quadrangles);
    for (std::size_t q = 0; q < quadrangles.size(); ++q) {
        EXPECT_TRUE(sameBits(result[q], polygonGeometry(points, quadrangles[q]))) << q;
    }
}

// A rectangle of 2 by 6 at z = 3, and one whose corners are one point.
TEST(MeshQuadrangles, rectangle_and_point) {
    const std::vector<Vec3> points{{0, 0, 3}, {2, 0, 3}, {2, 6, 3}, {0, 6, 3}, {5, 5, 5}};
    const auto result = inBlocks(points, {{{0, 1, 2, 3}}, {{4, 4, 4, 4}}});
    EXPECT_TRUE(sameBits(result[0], {{1, 3, 3}, {0, 0, 12}}));
    EXPECT_TRUE(sameBits(result[1], {{5, 5, 5}, {0, 0, 0}}));
}

TEST(MeshQuadrangles, nothing_is_left_after_a_flush) {
    int taken = 0;
    QuadrangleBlock block;
    block.add({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, std::array<int, 4>{0, 1, 2, 3}, 0);
    for (int i = 0; i < 2; ++i) {
        block.flush([&](std::size_t, const PolygonGeometry&) { ++taken; });
    }
    EXPECT_EQ(taken, 1);
}

}  // namespace
}  // namespace weldline
