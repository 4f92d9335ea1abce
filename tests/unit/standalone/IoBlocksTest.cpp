// Data sets in pieces and blocks.
#include "IoFiles.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

using ReadBlocks = FileTest;

// Box i of a row as a grid with its own eight points; point 4 to 7 of box 0 are 0 to 3 of box 1.
GridText oneBox(double x, const std::string& fillTime) {
    GridText grid;
    for (const double wall : {x, x + 1}) {
        grid.points.insert(grid.points.end(),
                           {{wall, 0, 0}, {wall, 1, 0}, {wall, 0, 1}, {wall, 1, 1}});
    }
    grid.cell(Hexa, {0, 4, 5, 1, 2, 6, 7, 3}).cellArray("FillTime", fillTime);
    return grid;
}

void expectTwoJoinedBoxes(const DataSet& data) {
    EXPECT_EQ(data.mesh.points.size(), 12U);
    EXPECT_EQ(rowOf(data.mesh.cellNodes, 1), (std::vector<int>{4, 8, 9, 5, 6, 10, 11, 7}));
    EXPECT_EQ(data.fillTime, (std::vector<double>{1, 2}));
    EXPECT_EQ(buildFvMesh(data.mesh).innerFaces, 1);
}

std::string vtm(const std::string& blocks) {
    return "<VTKFile type=\"vtkMultiBlockDataSet\" version=\"1.0\">\n<vtkMultiBlockDataSet>\n" +
           blocks + "</vtkMultiBlockDataSet>\n</VTKFile>\n";
}

std::string block(int index, const std::string& name, const std::string& file) {
    return "<DataSet index=\"" + std::to_string(index) + "\" name=\"" + name + "\" file=\"" + file +
           "\"/>\n";
}

// The left end of the row as a surface block of its own.
GridText leftEnd() {
    GridText grid;
    grid.points = {{0, 1, 1}, {0, 0, 1}, {-0.0, 0, 0}, {0, 1, 0}};
    grid.cell(Quad, {0, 1, 2, 3});
    return grid;
}

TEST_F(ReadBlocks, piecesOfOneFile) {
    expectTwoJoinedBoxes(
        readDataSet(put("a.vtu", vtuOfPieces({oneBox(0, "1"), oneBox(1, "2")})), {}));
}

TEST_F(ReadBlocks, piecesInFiles) {
    put("parts/0.vtu", oneBox(0, "1").vtu());
    put("parts/1.vtu", oneBox(1, "2").vtu());
    GridText empty;
    put("parts/2.vtu", empty.vtu());
    const std::string file =
        put("a.pvtu",
            "<VTKFile type=\"PUnstructuredGrid\" version=\"1.0\">\n<PUnstructuredGrid>\n"
            "<PCellData><PDataArray type=\"Float32\" Name=\"FillTime\"/></PCellData>\n"
            "<Piece Source=\"parts/0.vtu\"/><Piece Source=\"parts/1.vtu\"/>"
            "<Piece Source=\"parts/2.vtu\"/></PUnstructuredGrid>\n</VTKFile>\n");
    expectTwoJoinedBoxes(readDataSet(file, {}));
}

TEST_F(ReadBlocks, blocksAndNamedSurfaces) {
    put("0.vtu", oneBox(0, "1").vtu());
    put("1.vtu", oneBox(1, "2").vtu());
    put("gate.vtu", leftEnd().vtu());
    const std::string file =
        put("a.vtm", vtm(block(0, "left", "0.vtu") + block(1, "right", "1.vtu") +
                         block(2, "main gate", "gate.vtu")));
    const DataSet data = readDataSet(file, {});
    expectTwoJoinedBoxes(data);
    ASSERT_EQ(data.patches.size(), 1U);
    EXPECT_EQ(data.patches[0].name, "main gate");
    EXPECT_EQ(rowOf(data.patches[0].faces, 0), (std::vector<int>{3, 2, 0, 1}));
    const BoundaryGroups groups =
        groupBoundaryFaces(buildFvMesh(data.mesh), data.patches, GroupPatterns{});
    EXPECT_EQ(groups.patches[0].kind, GroupKind::Inlet);
}

// Blocks within blocks, the surface as a file of polygons, and a table that is no grid.
TEST_F(ReadBlocks, nestedBlocks) {
    put("part/0.vtu", oneBox(0, "1").vtu());
    put("part/gate.vtp",
        "<VTKFile type=\"PolyData\" version=\"1.0\" byte_order=\"LittleEndian\">\n<PolyData>\n"
        "<Piece NumberOfPoints=\"4\" NumberOfPolys=\"1\">\n<Points>\n"
        "<DataArray type=\"Float32\" NumberOfComponents=\"3\" format=\"ascii\">\n"
        "0 0 0 0 1 0 0 1 1 0 0 1\n</DataArray>\n</Points>\n<Polys>\n"
        "<DataArray type=\"Int64\" Name=\"connectivity\" format=\"ascii\">0 1 2 3</DataArray>\n"
        "<DataArray type=\"Int64\" Name=\"offsets\" format=\"ascii\">4</DataArray>\n"
        "</Polys>\n</Piece>\n</PolyData>\n</VTKFile>\n");
    put("part/times.vtt", "");
    const std::string file =
        put("a.vtm", vtm("<Block index=\"0\" name=\"mould\">\n" + block(0, "part", "part/0.vtu") +
                         block(1, "gate", "part/gate.vtp") + block(2, "times", "part/times.vtt") +
                         "</Block>\n"));
    const DataSet data = readDataSet(file, {});
    EXPECT_EQ(data.fillTime, std::vector<double>{1});
    ASSERT_EQ(data.patches.size(), 1U);
    EXPECT_EQ(data.patches[0].name, "gate");
    EXPECT_EQ(rowOf(data.patches[0].faces, 0), (std::vector<int>{0, 1, 3, 2}));
    EXPECT_EQ(data.remarks, std::vector<std::string>{
                                "The block 'times' is left out: it is no unstructured grid."});
}

TEST_F(ReadBlocks, surfaceSomewhereElseIsLeftOut) {
    put("0.vtu", oneBox(0, "1").vtu());
    GridText elsewhere = leftEnd();
    elsewhere.points[0].z = 7;
    put("table.vtu", elsewhere.vtu());
    const std::string file =
        put("a.vtm", vtm(block(0, "part", "0.vtu") + block(1, "table", "table.vtu")));
    const DataSet data = readDataSet(file, {});
    EXPECT_TRUE(data.patches.empty());
    EXPECT_EQ(data.remarks, std::vector<std::string>{"The block 'table' is left out: it is no part "
                                                     "of the mesh's surface."});
}

TEST_F(ReadBlocks, onlySurfaces) {
    put("gate.vtu", leftEnd().vtu());
    const std::string file = put("a.vtm", vtm(block(0, "gate", "gate.vtu")));
    EXPECT_EQ(readError(file), "'" + file +
                                   "': the data set holds only surfaces or lines; a mesh "
                                   "of volume cells is needed");
}

TEST_F(ReadBlocks, fieldInOneBlockOnly) {
    put("0.vtu", oneBox(0, "1").vtu());
    GridText other = oneBox(1, "2");
    other.cellArrays[0].name = "T";
    put("1.vtu", other.vtu());
    const std::string file =
        put("a.vtm", vtm(block(0, "left", "0.vtu") + block(1, "right", "1.vtu")));
    EXPECT_EQ(readError(file), "'" + file +
                                   "': not all blocks have the cell array 'FillTime'; "
                                   "every block with volume cells needs it");
}

}  // namespace
}  // namespace weldline::test
