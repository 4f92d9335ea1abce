#include <gtest/gtest.h>

#include <cmath>

#include "BindBoxMesh.h"
#include "results/FlowDirection.h"

namespace weldline::test {

namespace {

void expectVector(Vec3 v, double x, double y, double z) {
    EXPECT_EQ(v.x, x);
    EXPECT_EQ(v.y, y);
    EXPECT_EQ(v.z, z);
}

}  // namespace

// | 1 | 2 | 4 |  ->
TEST(FlowDirection, points_to_later_times) {
    const std::vector<Vec3> d = flowDirections(boxMesh(3, 1, 1), {1.0F, 2.0F, 4.0F});
    for (const Vec3& v : d) expectVector(v, 1.0, 0.0, 0.0);
    for (const Vec3& v : flowDirections(boxMesh(3, 1, 1), {4.0F, 2.0F, 1.0F}))
        expectVector(v, -1.0, 0.0, 0.0);
}

// t = 1 + 3 x + 4 y: the inner cell of 3 x 3 sees (3, 4, 0).
TEST(FlowDirection, is_a_unit_vector) {
    const FvMesh fv = boxMesh(3, 3, 1);
    std::vector<float> t;
    for (const Vec3& c : fv.cellCentre) t.push_back(static_cast<float>(1 + 3 * c.x + 4 * c.y));
    const Vec3 v = flowDirections(fv, t)[4];
    EXPECT_DOUBLE_EQ(v.x, 0.6);
    EXPECT_DOUBLE_EQ(v.y, 0.8);
    EXPECT_EQ(v.z, 0.0);
}

// | 1 | 2 | 4 | of unit cubes: face values 1.5 and 3, so (1.5 - 1, 3 - 1.5, 4 - 3) per length 1,
// with the own value at the walls.
TEST(FillTimeGradients, are_in_time_per_length) {
    const std::vector<Vec3> g = fillTimeGradients(boxMesh(3, 1, 1), {1.0F, 2.0F, 4.0F});
    expectVector(g[0], 0.5, 0.0, 0.0);
    expectVector(g[1], 1.5, 0.0, 0.0);
    expectVector(g[2], 1.0, 0.0, 0.0);
}

// Rises of 1/512 and 1/128: gradients of 1/1024, 5/1024 and 4/1024, of which only the first lies
// below 0.001. A cell where nothing rises is not counted.
TEST(FlatCells, rise_but_less_than_the_limit) {
    const FvMesh fv = boxMesh(3, 1, 1);
    EXPECT_EQ(countFlatCells(fv, {1.0F, 1.0F + 1.0F / 512, 1.0F + 5.0F / 512}), 1);
    EXPECT_EQ(countFlatCells(fv, {1.0F, 1.0F, 1.0F}), 0);
}

// | 1 | 2 | - |   the unreached cell adds nothing to its neighbour and gets no direction
TEST(FlowDirection, unreached_cells_take_no_part) {
    const std::vector<Vec3> d = flowDirections(boxMesh(3, 1, 1), {1.0F, 2.0F, 0.0F});
    expectVector(d[1], 1.0, 0.0, 0.0);
    expectVector(d[2], 0.0, 0.0, 0.0);
}

TEST(FlowDirection, is_zero_where_unknown) {
    // a reached cell without reached neighbours
    expectVector(flowDirections(boxMesh(3, 1, 1), {0.0F, 2.0F, 0.0F})[1], 0.0, 0.0, 0.0);
    // no gradient: both neighbours of the middle cell are equally late
    expectVector(flowDirections(boxMesh(3, 1, 1), {3.0F, 1.0F, 3.0F})[1], 0.0, 0.0, 0.0);
    // the same time everywhere
    for (const Vec3& v : flowDirections(boxMesh(2, 2, 2), std::vector<float>(8, 0.1F)))
        expectVector(v, 0.0, 0.0, 0.0);
}

// lambda is the weight of the face's second cell, 1 - lambda that of the first.
TEST(FlowDirection, weighs_face_values_by_lambda) {
    FvMesh fv = boxMesh(2, 2, 1);  // cells 0 1 / 2 3; inner faces 0-1, 0-2, 1-3, 2-3
    fv.lambda = {0.25, 0.5, 0.5, 0.5};
    const std::vector<Vec3> d = flowDirections(fv, {1.0F, 5.0F, 2.0F, 6.0F});
    // cell 0: x 0.25 * 4 = 1, y 0.5 * 1 = 0.5; cell 1: x 0.75 * 4 = 3, y 0.5 * 1 = 0.5
    EXPECT_DOUBLE_EQ(d[0].x / d[0].y, 2.0);
    EXPECT_DOUBLE_EQ(d[1].x / d[1].y, 6.0);
}

}  // namespace weldline::test
