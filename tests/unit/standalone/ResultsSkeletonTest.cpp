#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "results/GraphPaths.h"
#include "results/LevelSkeleton.h"

namespace weldline::test {

namespace {

// Points linked where they are no farther apart than `reach`.
PointGraph linked(std::vector<Vec3> places, double reach) {
    PointGraph graph;
    graph.places = std::move(places);
    for (const Vec3 a : graph.places) {
        std::vector<int> row;
        for (int b = 0; b < graph.count(); ++b) {
            const double distance = norm(graph.places[static_cast<std::size_t>(b)] - a);
            if (distance > 0.0 && distance <= reach) row.push_back(b);
        }
        graph.links.append(row);
    }
    return graph;
}

// A block of points with unit distances, diagonals linked.
PointGraph block(int nx, int ny, int nz) {
    std::vector<Vec3> places;
    for (int z = 0; z < nz; ++z)
        for (int y = 0; y < ny; ++y)
            for (int x = 0; x < nx; ++x)
                places.push_back(
                    {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)});
    return linked(places, std::sqrt(3.0) + 1e-9);
}

double length(const SkeletonCurve& curve) {
    double sum = 0.0;
    for (std::size_t i = 1; i < curve.points.size(); ++i)
        sum += norm(curve.points[i] - curve.points[i - 1]);
    return curve.isClosed ? sum + norm(curve.points.front() - curve.points.back()) : sum;
}

}  // namespace

TEST(GraphPaths, of_a_square_go_along_its_sides) {
    const PointGraph square = linked({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, 1.1);
    const GraphPaths paths = shortestPaths(square, {0});
    EXPECT_EQ(paths.length, (std::vector<double>{0.0, 1.0, 2.0, 1.0}));
    EXPECT_EQ(paths.farthest(), 2);
    EXPECT_EQ(paths.wayBack(2), (std::vector<int>{2, 1, 0}));
}

TEST(GraphPaths, leave_other_parts_unreached) {
    const PointGraph two = linked({{0, 0, 0}, {1, 0, 0}, {9, 0, 0}}, 1.1);
    const GraphPaths paths = shortestPaths(two, {0});
    EXPECT_TRUE(std::isinf(paths.length[2]));
    EXPECT_EQ(paths.farthest(), 1);
}

TEST(GraphPaths, start_at_the_nearest_of_several_nodes) {
    const PointGraph row = linked({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, 1.1);
    EXPECT_EQ(shortestPaths(row, {0, 3}).length, (std::vector<double>{0.0, 1.0, 1.0, 0.0}));
}

TEST(LevelSkeleton, typical_link_is_the_median) {
    const PointGraph chain = linked({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1.4, 0}}, 1.45);
    EXPECT_DOUBLE_EQ(typicalLinkLength(chain), 1.0);
    EXPECT_EQ(typicalLinkLength(linked({{0, 0, 0}}, 1.0)), 0.0);
}

TEST(LevelSkeleton, single_node_is_a_curve_of_one_point) {
    const auto curves = skeletonOf(linked({{3, 4, 5}}, 1.0));
    ASSERT_EQ(curves.size(), 1U);
    ASSERT_EQ(curves[0].points.size(), 1U);
    EXPECT_EQ(curves[0].points[0].y, 4.0);
}

TEST(LevelSkeleton, two_nodes_are_joined) {
    const auto curves = skeletonOf(linked({{0, 0, 0}, {1, 0, 0}}, 1.1));
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_DOUBLE_EQ(length(curves[0]), 1.0);
}

TEST(LevelSkeleton, nodes_at_one_place_are_no_trouble) {
    PointGraph twins;
    twins.places = {{1, 1, 1}, {1, 1, 1}};
    twins.links.append(std::vector<int>{1});
    twins.links.append(std::vector<int>{0});
    EXPECT_EQ(skeletonOf(twins).front().points.size(), 1U);
}

TEST(LevelSkeleton, row_is_followed_from_end_to_end) {
    const auto curves = skeletonOf(block(21, 1, 1));
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_NEAR(length(curves[0]), 20.0, 1e-9);
    EXPECT_FALSE(curves[0].isClosed);
}

// Whatever its width, the curve runs along the middle and no corner makes it longer.
TEST(LevelSkeleton, wide_band_is_thinned_to_its_middle) {
    for (const int width : {2, 3, 5}) {
        const auto curves = skeletonOf(block(31, width, 1));
        ASSERT_EQ(curves.size(), 1U) << width;
        EXPECT_NEAR(length(curves[0]), 30.0, 0.6) << width;
        for (const Vec3 point : curves[0].points)
            EXPECT_NEAR(point.y, (width - 1) / 2.0, 0.26) << width;
    }
}

TEST(LevelSkeleton, weld_surface_is_as_long_as_its_longer_side) {
    const auto curves = skeletonOf(block(1, 16, 5));
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_NEAR(length(curves[0]), 15.0, 0.5);
}

TEST(LevelSkeleton, every_node_stands_behind_one_point) {
    const auto curves = skeletonOf(block(12, 3, 2));
    std::size_t nodes = 0;
    for (const auto& set : curves[0].nodes) nodes += set.size();
    EXPECT_EQ(nodes, 72U);
}

// Three arms of 20, 20 and 12 that meet in one point.
TEST(LevelSkeleton, branch_is_a_curve_of_its_own) {
    std::vector<Vec3> places;
    for (int x = -20; x <= 20; ++x) places.push_back({static_cast<double>(x), 0, 0});
    for (int y = 1; y <= 12; ++y) places.push_back({0, static_cast<double>(y), 0});
    const auto curves = skeletonOf(linked(places, 1.5));
    ASSERT_EQ(curves.size(), 2U);
    EXPECT_NEAR(length(curves[0]), 40.0, 1.0);
    EXPECT_NEAR(length(curves[1]), 12.0, 1.5);
}

TEST(LevelSkeleton, short_spur_is_no_branch) {
    std::vector<Vec3> places;
    for (int x = 0; x <= 30; ++x) places.push_back({static_cast<double>(x), 0, 0});
    places.push_back({15, 1, 0});
    places.push_back({15, 2, 0});
    EXPECT_EQ(skeletonOf(linked(places, 1.1)).size(), 1U);
}

TEST(LevelSkeleton, ring_becomes_one_closed_curve) {
    constexpr int count = 60;
    constexpr double radius = 10.0;
    std::vector<Vec3> places;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        places.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
    }
    const auto curves = skeletonOf(linked(places, 1.1));
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_TRUE(curves[0].isClosed);
    EXPECT_NEAR(length(curves[0]), 2.0 * std::numbers::pi * radius, 1.0);
}

}  // namespace weldline::test
