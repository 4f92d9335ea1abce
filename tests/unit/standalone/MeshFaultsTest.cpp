// Meshes that cannot be used: each is refused with a message that names the cell.
#include <gtest/gtest.h>

#include "MeshParts.h"

namespace weldline::test {
namespace {

TEST(MeshFaults, invertedCellAlone) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.shape(CellKind::Tetrahedron, {0, 2, 1, 3});
    EXPECT_EQ(faultOf(parts),
              "cell 0 has a negative volume: its nodes are listed inside out or it is folded");
}

// The middle one of three boxes is listed inside out.
TEST(MeshFaults, invertedCellBetweenOthers) {
    MeshParts parts(boxRowPoints({0, 1, 2, 3}));
    parts.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
    parts.shape(CellKind::Hexahedron, {6, 10, 11, 7, 4, 8, 9, 5});
    parts.shape(CellKind::Hexahedron, {8, 12, 13, 9, 10, 14, 15, 11});
    EXPECT_EQ(faultOf(parts),
              "cell 1 has a negative volume: its nodes are listed inside out or it is folded");
}

TEST(MeshFaults, flatCell) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3});
    EXPECT_EQ(faultOf(parts), "cell 0 has no volume; its nodes lie in one plane");
}

// Flat by all digits that single precision coordinates have, and far from the origin.
TEST(MeshFaults, cellThatRoundingMakesFlat) {
    MeshParts parts({{1, 1, 1}, {2, 1, 1}, {1, 2, 1}, {1, 1, 1 + 1e-15}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3});
    EXPECT_EQ(faultOf(parts), "cell 0 has no volume; its nodes lie in one plane");
}

// A thin cell is a good cell: the sliver's height is a millionth of its width.
TEST(MeshFaults, thinCellIsNoFault) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1e-6}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3});
    EXPECT_EQ(faultOf(parts), "");
}

// The lid of the box is missing.
TEST(MeshFaults, openPolyhedron) {
    MeshParts parts(boxRowPoints({0, 1}));
    parts.polyhedron({{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 4, 5, 1}, {0, 4, 6, 2}, {1, 5, 7, 3}});
    EXPECT_EQ(faultOf(parts),
              "cell 0 is not closed: its faces leave a gap; every edge needs two faces");
}

TEST(MeshFaults, cellGivenTwiceAlone) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3}).shape(CellKind::Tetrahedron, {1, 2, 0, 3});
    EXPECT_EQ(faultOf(parts), "cell 1 is the same as cell 0; each cell may be given only once");
}

TEST(MeshFaults, cellGivenTwiceInAMesh) {
    MeshParts parts = boxRow({0, 1, 2, 3});
    parts.shape(CellKind::Hexahedron, {4, 8, 9, 5, 6, 10, 11, 7});
    EXPECT_EQ(faultOf(parts), "cell 3 is the same as cell 1; each cell may be given only once");
}

// Three tetrahedra on one triangle.
TEST(MeshFaults, faceOfThreeCells) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 2}, {0, 0, -1}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3});
    parts.shape(CellKind::Tetrahedron, {0, 2, 1, 5});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 4});
    EXPECT_EQ(faultOf(parts),
              "cell 0, cell 1 and cell 2 share one face; a face has at most two cells");
}

// Two tetrahedra on the same side of their common triangle.
TEST(MeshFaults, overlappingCells) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 2}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 3}).shape(CellKind::Tetrahedron, {0, 1, 2, 4});
    EXPECT_EQ(faultOf(parts),
              "cell 0 and cell 1 overlap: they lie on the same side of the face that they share");
}

TEST(MeshFaults, polyhedronWithAFaceTwice) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.polyhedron({{0, 1, 2}, {0, 3, 1}, {1, 3, 2}, {2, 3, 0}, {0, 2, 1}});
    EXPECT_EQ(faultOf(parts), "cell 0 has one of its faces twice; each may be given once");
}

TEST(MeshFaults, pointOutOfRange) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2, 4});
    EXPECT_EQ(faultOf(parts), "cell 0 names point 4, but the points are 0 to 3");
}

TEST(MeshFaults, collapsedHexahedron) {
    MeshParts parts(boxRowPoints({0, 1}));
    parts.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 2});
    EXPECT_EQ(
        faultOf(parts),
        "cell 0 names point 2 twice; a collapsed cell has to be given as the shape that it is");
}

TEST(MeshFaults, tooFewNodes) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.shape(CellKind::Tetrahedron, {0, 1, 2});
    EXPECT_EQ(faultOf(parts), "cell 0 is a tetrahedron with 3 nodes; it needs 4");
}

TEST(MeshFaults, polyhedronWithThreeFaces) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.polyhedron({{0, 1, 2}, {0, 3, 1}, {1, 3, 2}});
    EXPECT_EQ(faultOf(parts), "cell 0 is a polyhedron with 3 faces; at least 4 are needed");
}

TEST(MeshFaults, polyhedronWithAnEdgeAsFace) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.polyhedron({{0, 1, 2}, {0, 3, 1}, {1, 3, 2}, {2, 3}});
    EXPECT_EQ(faultOf(parts), "cell 0 has a face with 2 corners; at least 3 are needed");
}

// Where surface cells stood between the volume cells of a file, the file's number is named.
TEST(MeshFaults, namesTheNumberInTheDataSet) {
    MeshParts parts({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    parts.shape(CellKind::Tetrahedron, {0, 2, 1, 3});
    CellMesh cells = parts;
    cells.fileNumbers = {17};
    EXPECT_EQ(faultOf(cells),
              "cell 17 has a negative volume: its nodes are listed inside out or it is folded");
}

}  // namespace
}  // namespace weldline::test
