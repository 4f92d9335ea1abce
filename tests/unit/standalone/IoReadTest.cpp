// Single grids: every kind of cell, fields, times, patches on surface cells.
#include <cmath>

#include "IoFiles.h"
#include "base/Errors.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

using ReadGrid = FileTest;

TEST_F(ReadGrid, hexahedra) {
    const DataSet data = readDataSet(put("a.vtu", twoBoxes().vtu()), {});
    EXPECT_EQ(data.file, path("a.vtu"));
    ASSERT_EQ(data.mesh.points.size(), 12U);
    EXPECT_EQ(data.mesh.points[11].x, 2.0);
    EXPECT_EQ(data.mesh.kinds, std::vector<CellKind>(2, CellKind::Hexahedron));
    EXPECT_EQ(rowOf(data.mesh.cellNodes, 1), (std::vector<int>{4, 8, 9, 5, 6, 10, 11, 7}));
    EXPECT_EQ(data.fieldName, "FillTime");
    EXPECT_EQ(data.fillTime, (std::vector<double>{1, 2}));
    EXPECT_FALSE(data.time);
    EXPECT_TRUE(data.patches.empty());
    EXPECT_TRUE(data.remarks.empty());
    EXPECT_TRUE(data.mesh.fileNumbers.empty());
}

// One cell of each kind, apart from each other; their volumes tell that the corners are right.
TEST_F(ReadGrid, allKindsOfCells) {
    GridText grid;
    const std::vector<Vec3> cube{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                 {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
    for (int i = 0; i < 6; ++i) {
        for (const Vec3 p : cube) {
            grid.points.push_back({p.x + 2 * i, p.y, p.z});
        }
    }
    grid.cell(Tetra, {0, 1, 2, 6})
        .cell(Pyramid, {8, 9, 10, 11, 12})
        .cell(Wedge, {16, 17, 18, 20, 21, 22})
        .cell(Voxel, {24, 25, 27, 26, 28, 29, 31, 30})
        .cell(Hexa, {32, 33, 34, 35, 36, 37, 38, 39})
        .polyhedron({{40, 41, 42, 43},
                     {44, 45, 46, 47},
                     {40, 41, 45, 44},
                     {42, 43, 47, 46},
                     {41, 42, 46, 45},
                     {43, 40, 44, 47}});
    grid.cellArray("FillTime", "1 2 3 4 5 6");
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), {});
    EXPECT_EQ(data.mesh.kinds, (std::vector<CellKind>{CellKind::Tetrahedron, CellKind::Pyramid,
                                                      CellKind::Wedge, CellKind::Hexahedron,
                                                      CellKind::Hexahedron, CellKind::Polyhedron}));
    EXPECT_EQ(rowOf(data.mesh.cellNodes, 3), (std::vector<int>{24, 25, 26, 27, 28, 29, 30, 31}));
    EXPECT_EQ(rowOf(data.mesh.cellNodes, 5), (std::vector<int>{40, 41, 42, 43, 44, 45, 46, 47}));
    const FvMesh mesh = buildFvMesh(data.mesh);
    const double expected[] = {1.0 / 6, 1.0 / 3, 0.5, 1, 1, 1};
    for (std::size_t c = 0; c < 6; ++c) {
        EXPECT_NEAR(mesh.cellVolume[c], expected[c], 1e-15) << c;
    }
}

// A regular arrangement is not needed: the prism over the pentagon (0,0) (2,0) (2,1) (1,2) (0,1) of
// area 3 and height 1 becomes a polyhedron of seven faces.
TEST_F(ReadGrid, prismOverAPentagon) {
    GridText grid;
    for (const double z : {0.0, 1.0}) {
        grid.points.insert(grid.points.end(),
                           {{0, 0, z}, {2, 0, z}, {2, 1, z}, {1, 2, z}, {0, 1, z}});
    }
    grid.cell(PentaPrism, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}).cellArray("FillTime", "1");
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), {});
    const FvMesh mesh = buildFvMesh(data.mesh);
    EXPECT_EQ(mesh.faceCount(), 7);
    EXPECT_NEAR(mesh.cellVolume[0], 3.0, 1e-15);
}

TEST_F(ReadGrid, legacyFormat) {
    const DataSet data = readDataSet(put("a.vtk", twoBoxes().legacy()), {});
    EXPECT_EQ(data.fillTime, (std::vector<double>{1, 2}));
    EXPECT_EQ(buildFvMesh(data.mesh).innerFaces, 1);
}

TEST_F(ReadGrid, extensionInCapitals) {
    EXPECT_EQ(readDataSet(put("A.VTU", twoBoxes().vtu()), {}).fillTime.size(), 2U);
}

TEST_F(ReadGrid, fillTimesAreKeptAsStored) {
    GridText grid = twoBoxes();
    grid.cellArrays[0].values = "-0.5 nan";
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), {});
    EXPECT_EQ(data.fillTime[0], -0.5);
    EXPECT_TRUE(std::isnan(data.fillTime[1]));
}

TEST_F(ReadGrid, fieldByName) {
    GridText grid = twoBoxes();
    grid.cellArray("arrival", "7 8", "Float64");
    ReadOptions options;
    options.field = "arrival";
    options.fieldGiven = true;
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), options);
    EXPECT_EQ(data.fieldName, "arrival");
    EXPECT_EQ(data.fillTime, (std::vector<double>{7, 8}));
}

TEST_F(ReadGrid, secondSpellingOnlyUnlessAFieldIsNamed) {
    GridText grid = twoBoxes();
    grid.cellArrays[0].name = "fillTime";
    const std::string file = put("a.vtu", grid.vtu());
    EXPECT_EQ(readDataSet(file, {}).fieldName, "fillTime");
    ReadOptions options;
    options.fieldGiven = true;
    EXPECT_EQ(readError(file, options), "'" + file +
                                            "': there is no cell array 'FillTime'; name the fill "
                                            "time among the cell arrays 'fillTime'");
}

TEST_F(ReadGrid, integerFieldIsRead) {
    GridText grid = twoBoxes();
    grid.cellArrays[0].type = "Int32";
    EXPECT_EQ(readDataSet(put("a.vtu", grid.vtu()), {}).fillTime, (std::vector<double>{1, 2}));
}

TEST_F(ReadGrid, timeValueOfTheFile) {
    GridText grid = twoBoxes();
    grid.fieldData =
        "<DataArray type=\"Float64\" Name=\"TimeValue\" NumberOfTuples=\"1\" "
        "format=\"ascii\">2.5</DataArray>\n";
    const std::string file = put("a.vtu", grid.vtu());
    EXPECT_EQ(readDataSet(file, {}).time, 2.5);
    ReadOptions options;
    options.time = "2.5";
    EXPECT_EQ(readDataSet(file, options).time, 2.5);
    options.time = "3";
    EXPECT_EQ(readError(file, options),
              "'" + file + "': there is no time 3; of 1 times the nearest is 2.5");
}

TEST_F(ReadGrid, timeThatIsNoNumber) {
    ReadOptions options;
    options.time = "later";
    const std::string file = put("a.vtu", twoBoxes().vtu());
    EXPECT_THROW(readDataSet(file, options), UsageError);
}

// Surface cells between the volume cells, with their patch numbers: they become patches, and the
// volume cells remember their numbers in the file.
TEST_F(ReadGrid, numberedSurfaceCells) {
    GridText grid;
    grid.points = twoBoxes().points;
    grid.cell(Quad, {0, 1, 3, 2})
        .cell(Hexa, {0, 4, 5, 1, 2, 6, 7, 3})
        .cell(Quad, {8, 9, 11, 10})
        .cell(Hexa, {4, 8, 9, 5, 6, 10, 11, 7})
        .cell(Line, {0, 1});
    grid.cellArray("FillTime", "0 1 0 2 0").cellArray("PatchId", "5 0 3 0 0", "Int32");
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), {});
    ASSERT_EQ(data.patches.size(), 2U);
    EXPECT_EQ(data.patches[0].name, "3");
    EXPECT_EQ(rowOf(data.patches[0].faces, 0), (std::vector<int>{8, 9, 11, 10}));
    EXPECT_EQ(data.patches[1].name, "5");
    EXPECT_EQ(data.fillTime, (std::vector<double>{1, 2}));
    EXPECT_EQ(data.mesh.fileNumbers, (std::vector<std::int64_t>{1, 3}));
    EXPECT_EQ(data.remarks, (std::vector<std::string>{"1 point and line cells are left out."}));
}

TEST_F(ReadGrid, surfaceCellsWithoutNumbersAreLeftOut) {
    GridText grid = twoBoxes();
    grid.cell(Quad, {0, 1, 3, 2}).cell(Triangle, {8, 9, 10});
    grid.cellArrays[0].values = "1 2 0 0";
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), {});
    EXPECT_TRUE(data.patches.empty());
    EXPECT_EQ(data.fillTime.size(), 2U);
    ASSERT_EQ(data.remarks.size(), 1U);
    EXPECT_EQ(data.remarks[0],
              "2 surface cells are left out: no integer cell array such as "
              "'PatchId' gives them a patch.");
}

// An array of real numbers is no array of patch numbers.
TEST_F(ReadGrid, patchNumbersAreIntegers) {
    GridText grid = twoBoxes();
    grid.cell(Quad, {0, 1, 3, 2});
    grid.cellArrays[0].values = "1 2 0";
    grid.cellArray("PatchId", "0 0 7", "Float32");
    EXPECT_TRUE(readDataSet(put("a.vtu", grid.vtu()), {}).patches.empty());
}

TEST_F(ReadGrid, ghostCellsAreLeftOut) {
    GridText grid = twoBoxes();
    grid.cellArray("vtkGhostType", "0 1", "UInt8");
    const DataSet data = readDataSet(put("a.vtu", grid.vtu()), {});
    EXPECT_EQ(data.fillTime, std::vector<double>{1});
    EXPECT_EQ(data.remarks, std::vector<std::string>{"1 ghost cells are left out."});
}

}  // namespace
}  // namespace weldline::test
