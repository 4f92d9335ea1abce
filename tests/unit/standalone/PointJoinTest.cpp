#include "io/PointJoin.h"

#include <gtest/gtest.h>

namespace weldline::test {
namespace {

TEST(PointIndex, findsByExactPlace) {
    const std::vector<Vec3> points{{0, 0, 0}, {1, 2, 3}, {1, 2, 3}};
    const PointIndex index(points);
    EXPECT_EQ(index.find({1, 2, 3}), 1);
    EXPECT_EQ(index.find({-0.0, 0, -0.0}), 0);
    EXPECT_EQ(index.find({1, 2, 3.0000000000000004}), -1);
    EXPECT_EQ(index.find({3, 2, 1}), -1);
}

// Two pieces with one place in common: a b | b' c
TEST(JoinPieces, joinsAcrossPieces) {
    std::vector<Vec3> points{{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    const std::vector<int> starts{0, 2, 4};
    EXPECT_EQ(joinPieces(points, starts), (std::vector<int>{0, 1, 1, 2}));
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(points[2].x, 2.0);
}

// A gap within the second piece stays: a | a' a''
TEST(JoinPieces, keepsGapsWithinAPiece) {
    std::vector<Vec3> points{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}};
    const std::vector<int> starts{0, 1, 3};
    EXPECT_EQ(joinPieces(points, starts), (std::vector<int>{0, 0, 1}));
    EXPECT_EQ(points.size(), 2U);
}

// Four pieces around one place.
TEST(JoinPieces, joinsManyPieces) {
    std::vector<Vec3> points{{5, 5, 5}, {1, 0, 0}, {5, 5, 5}, {5, 5, 5}, {5, 5, 5}};
    const std::vector<int> starts{0, 1, 3, 4, 5};
    EXPECT_EQ(joinPieces(points, starts), (std::vector<int>{0, 1, 0, 0, 0}));
    EXPECT_EQ(points.size(), 2U);
}

}  // namespace
}  // namespace weldline::test
