// Areas, centres, volumes and weights of single cells and pairs of cells, worked out by hand.
#include <gtest/gtest.h>

#include "MeshParts.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

void expectVec(Vec3 found, Vec3 expected, double tolerance = 1e-15) {
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

// Finds the boundary face whose centre is given; -1 where there is none.
int faceAt(const FvMesh& mesh, Vec3 centre) {
    for (int f = 0; f < mesh.faceCount(); ++f) {
        if (norm(mesh.faceCentre[static_cast<std::size_t>(f)] - centre) < 1e-12) {
            return f;
        }
    }
    return -1;
}

void expectFace(const FvMesh& mesh, Vec3 centre, Vec3 area) {
    const int f = faceAt(mesh, centre);
    ASSERT_GE(f, 0) << "no face at " << centre.x << " " << centre.y << " " << centre.z;
    expectVec(mesh.faceArea[static_cast<std::size_t>(f)], area);
}

// Every side of the unit cube has area 1 and points outwards.
TEST(MeshGeometry, unitCube) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1}));
    ASSERT_EQ(mesh.faceCount(), 6);
    EXPECT_EQ(mesh.innerFaces, 0);
    EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 1.0);
    expectVec(mesh.cellCentre[0], {0.5, 0.5, 0.5});
    expectFace(mesh, {0, 0.5, 0.5}, {-1, 0, 0});
    expectFace(mesh, {1, 0.5, 0.5}, {1, 0, 0});
    expectFace(mesh, {0.5, 0, 0.5}, {0, -1, 0});
    expectFace(mesh, {0.5, 1, 0.5}, {0, 1, 0});
    expectFace(mesh, {0.5, 0.5, 0}, {0, 0, -1});
    expectFace(mesh, {0.5, 0.5, 1}, {0, 0, 1});
}

// The corner of the unit cube: volume 1/6, centre 1/4, three sides of area 1/2 in the coordinate
// planes and the slanted one with area vector (1, 1, 1) / 2.
TEST(MeshGeometry, tetrahedron) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    const FvMesh mesh = buildFvMesh(parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3}));
    ASSERT_EQ(mesh.faceCount(), 4);
    EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 1.0 / 6.0);
    expectVec(mesh.cellCentre[0], {0.25, 0.25, 0.25});
    expectFace(mesh, {1.0 / 3, 1.0 / 3, 0}, {0, 0, -0.5});
    expectFace(mesh, {1.0 / 3, 0, 1.0 / 3}, {0, -0.5, 0});
    expectFace(mesh, {0, 1.0 / 3, 1.0 / 3}, {-0.5, 0, 0});
    expectFace(mesh, {1.0 / 3, 1.0 / 3, 1.0 / 3}, {0.5, 0.5, 0.5});
}

// Base [-1, 1] x [-1, 1] with area 4, tip at z = 3: volume 4 * 3 / 3 = 4, centre at a quarter of
// the height. The side towards +x has the corners (1, -1, 0), (1, 1, 0), (0, 0, 3): area vector (0,
// 2, 0) x (-1, 1, 3) / 2 = (3, 0, 1).
TEST(MeshGeometry, pyramid) {
    MeshParts parts({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}, {0, 0, 3}});
    const FvMesh mesh = buildFvMesh(parts.shape(CellKind::Pyramid, {0, 1, 2, 3, 4}));
    ASSERT_EQ(mesh.faceCount(), 5);
    EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 4.0);
    expectVec(mesh.cellCentre[0], {0, 0, 0.75});
    expectFace(mesh, {0, 0, 0}, {0, 0, -4});
    expectFace(mesh, {2.0 / 3, 0, 1}, {3, 0, 1});
}

// Triangle (0,0), (1,0), (0,1) of area 1/2, height 2: volume 1, centre (1/3, 1/3, 1). The slanted
// side is 2 high and sqrt(2) wide: area vector (2, 2, 0). Both orders of the nodes are in use: the
// first triangle may point out of the wedge or into it.
TEST(MeshGeometry, wedgeInBothOrders) {
    const std::vector<Vec3> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0},
                                   {0, 0, 2}, {1, 0, 2}, {0, 1, 2}};
    MeshParts inwards(points);
    inwards.shape(CellKind::Wedge, {0, 1, 2, 3, 4, 5});
    MeshParts outwards(points);
    outwards.shape(CellKind::Wedge, {0, 2, 1, 3, 5, 4});
    for (const MeshParts& parts : {inwards, outwards}) {
        const FvMesh mesh = buildFvMesh(parts);
        ASSERT_EQ(mesh.faceCount(), 5);
        EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 1.0);
        expectVec(mesh.cellCentre[0], {1.0 / 3, 1.0 / 3, 1});
        expectFace(mesh, {1.0 / 3, 1.0 / 3, 0}, {0, 0, -0.5});
        expectFace(mesh, {1.0 / 3, 1.0 / 3, 2}, {0, 0, 0.5});
        expectFace(mesh, {0.5, 0.5, 1}, {2, 2, 0});
    }
}

// A house: the unit cube with a roof of height 1 whose ridge runs along y at x = 1/2. Volume
// 1 + 1/2; centre height (1 * 1/2 + 1/2 * 4/3) / (3/2) = 7/9. The gable is a pentagon of area 3/2,
// its centre at height 7/9, too. The polygons run in any direction.
TEST(MeshGeometry, polyhedronWithPentagons) {
    MeshParts parts({{0, 0, 0},
                     {1, 0, 0},
                     {1, 1, 0},
                     {0, 1, 0},
                     {0, 0, 1},
                     {1, 0, 1},
                     {1, 1, 1},
                     {0, 1, 1},
                     {0.5, 0, 2},
                     {0.5, 1, 2}});
    const FvMesh mesh = buildFvMesh(parts.polyhedron({{0, 1, 2, 3},
                                                      {0, 1, 5, 8, 4},
                                                      {3, 2, 6, 9, 7},
                                                      {1, 2, 6, 5},
                                                      {0, 3, 7, 4},
                                                      {5, 6, 9, 8},
                                                      {8, 9, 7, 4}}));
    ASSERT_EQ(mesh.faceCount(), 7);
    EXPECT_NEAR(mesh.cellVolume[0], 1.5, 1e-15);
    expectVec(mesh.cellCentre[0], {0.5, 0.5, 7.0 / 9});
    expectFace(mesh, {0.5, 0, 7.0 / 9}, {0, -1.5, 0});
    expectFace(mesh, {0.5, 1, 7.0 / 9}, {0, 1.5, 0});
    expectFace(mesh, {0.75, 0.5, 1.5}, {1, 0, 0.5});
    expectFace(mesh, {0.25, 0.5, 1.5}, {-1, 0, 0.5});
    expectFace(mesh, {0.5, 0.5, 0}, {0, 0, -1});
}

// All polygons given from inside: the same cell.
TEST(MeshGeometry, polyhedronGivenFromInside) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    const FvMesh mesh = buildFvMesh(parts.polyhedron({{0, 1, 2}, {0, 3, 1}, {1, 3, 2}, {2, 3, 0}}));
    EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 1.0 / 6.0);
    expectFace(mesh, {1.0 / 3, 1.0 / 3, 1.0 / 3}, {0.5, 0.5, 0.5});
}

// A unit cube whose upper faces know a node on the edge 4-5 that the front face does not:
//
//    7 ----- 6
//    |   |   |      the top is cut in two at 8-9, the front face 0 1 5 4 passes node 8 by, and
//    4 - 8 - 5      the back face has node 9 as a fifth corner
TEST(MeshGeometry, polyhedronWithNodeInsideAnEdge) {
    MeshParts parts({{0, 0, 0},
                     {1, 0, 0},
                     {1, 1, 0},
                     {0, 1, 0},
                     {0, 0, 1},
                     {1, 0, 1},
                     {1, 1, 1},
                     {0, 1, 1},
                     {0.5, 0, 1},
                     {0.5, 1, 1}});
    const FvMesh mesh = buildFvMesh(parts.polyhedron({{0, 1, 2, 3},
                                                      {0, 1, 5, 4},
                                                      {2, 3, 7, 9, 6},
                                                      {1, 2, 6, 5},
                                                      {0, 3, 7, 4},
                                                      {4, 8, 9, 7},
                                                      {8, 5, 6, 9}}));
    EXPECT_NEAR(mesh.cellVolume[0], 1.0, 1e-15);
    expectFace(mesh, {0.25, 0.5, 1}, {0, 0, 0.5});
    expectFace(mesh, {0.5, 1, 0.5}, {0, 1, 0});
}

// Moving the mesh far away moves its centres and keeps areas and volumes.
TEST(MeshGeometry, farFromTheOrigin) {
    MeshParts parts = boxRow({1e6, 1e6 + 1});
    const FvMesh mesh = buildFvMesh(parts);
    EXPECT_NEAR(mesh.cellVolume[0], 1.0, 1e-9);
    expectVec(mesh.cellCentre[0], {1e6 + 0.5, 0.5, 0.5}, 1e-9);
}

//  +---+-------+
//  | 0 |   1   |   boxes of width 1 and 3: centres at x = 0.5 and 2.5, shared face at x = 1, so
//  that
//  +---+-------+   lambda = 0.5 / (0.5 + 1.5) = 0.25
TEST(MeshGeometry, weightOfTheNeighbourInBoxes) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1, 4}));
    ASSERT_EQ(mesh.innerFaces, 1);
    EXPECT_DOUBLE_EQ(mesh.lambda[0], 0.25);
    expectVec(mesh.faceArea[0], {1, 0, 0});
    expectVec(mesh.faceCentre[0], {1, 0.5, 0.5});
}

// Distances count along the face normal: a tetrahedron of height 1 below the triangle in the plane
// z = 0 and one of height 3 above it, tips shifted sideways. The centres lie at a quarter of the
// heights, at z = -1/4 and 3/4: lambda = 1/4.
TEST(MeshGeometry, weightAlongTheNormal) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {2, 5, -1}, {-4, 7, 3}});
    parts.shape(CellKind::Tetrahedron, {0, 2, 1, 3});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 4});
    const FvMesh mesh = buildFvMesh(parts);
    ASSERT_EQ(mesh.innerFaces, 1);
    EXPECT_DOUBLE_EQ(mesh.lambda[0], 0.25);
    expectVec(mesh.faceArea[0], {0, 0, 0.5});
}

}  // namespace
}  // namespace weldline::test
