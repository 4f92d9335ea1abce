// What the listing tells about a data set.
#include "IoFiles.h"

namespace weldline::test {
namespace {

using DescribeDataSet = FileTest;

TEST_F(DescribeDataSet, grid) {
    GridText grid = twoBoxes();
    grid.cell(Quad, {0, 1, 3, 2}).cell(Quad, {8, 9, 11, 10});
    grid.cellArrays[0].values = "2 nan 4 3";
    grid.cellArray("PatchId", "0 0 9 9", "Int32");
    grid.cellArray("U", "1 5 5 2 5 5 3 5 5 4 5 5", "Float64", 3);
    grid.pointArrays.push_back({"T", "Float32", 1, "0 1 2 3 4 5 6 7 8 9 10 11"});
    const DataSetInfo info = describeDataSet(put("a.vtu", grid.vtu()), "latest");
    EXPECT_EQ(info.format, "VTK XML unstructured grid");
    EXPECT_EQ(info.points, 12);
    EXPECT_EQ(info.cells, 4);
    EXPECT_EQ(info.high.x, 2.0);
    EXPECT_EQ(info.low.z, 0.0);
    ASSERT_EQ(info.cellShapes.size(), 2U);
    EXPECT_EQ(info.cellShapes[0].name, "Quad");
    EXPECT_EQ(info.cellShapes[1].name, "Hexahedron");
    EXPECT_EQ(info.cellShapes[1].count, 2);
    EXPECT_TRUE(info.blocks.empty());
    ASSERT_EQ(info.patches.size(), 1U);
    EXPECT_EQ(info.patches[0].name, "9");
    EXPECT_EQ(info.patches[0].count, 2);
    ASSERT_EQ(info.arrays.size(), 4U);
    EXPECT_EQ(info.arrays[0].name, "FillTime");
    EXPECT_EQ(info.arrays[0].where, "cells");
    EXPECT_EQ(info.arrays[0].type, "Float32");
    EXPECT_EQ(info.arrays[0].minimum, 2.0);
    EXPECT_EQ(info.arrays[0].maximum, 4.0);
    EXPECT_EQ(info.arrays[1].type, "Int32");
    EXPECT_EQ(info.arrays[2].components, 3);
    EXPECT_EQ(info.arrays[2].maximum, 4.0);
    EXPECT_EQ(info.arrays[3].where, "points");
    EXPECT_EQ(info.arrays[3].maximum, 11.0);
    EXPECT_TRUE(info.times.empty());
}

// No field is needed for the listing, and a surface may be listed.
TEST_F(DescribeDataSet, surfaceWithoutArrays) {
    GridText grid;
    grid.points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    grid.cell(Triangle, {0, 1, 2});
    const DataSetInfo info = describeDataSet(put("a.vtu", grid.vtu()), "latest");
    ASSERT_EQ(info.cellShapes.size(), 1U);
    EXPECT_EQ(info.cellShapes[0].name, "Triangle");
    EXPECT_TRUE(info.arrays.empty());
}

TEST_F(DescribeDataSet, pieces) {
    GridText far = twoBoxes();
    for (Vec3& point : far.points) {
        point.x += 5;
    }
    const DataSetInfo info =
        describeDataSet(put("a.vtu", vtuOfPieces({twoBoxes(), far})), "latest");
    EXPECT_EQ(info.cells, 4);
    EXPECT_EQ(info.low.x, 0.0);
    EXPECT_EQ(info.high.x, 7.0);
    ASSERT_EQ(info.blocks.size(), 2U);
    EXPECT_EQ(info.blocks[1].name, "piece 1");
    EXPECT_EQ(info.blocks[1].count, 2);
}

}  // namespace
}  // namespace weldline::test
