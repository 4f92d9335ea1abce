// Every way in which a file can be unusable: one line that names it, and nothing on standard error.
#include <sys/stat.h>

#include "IoFiles.h"

namespace weldline::test {
namespace {

class ReadErrors : public FileTest {
  protected:
    void SetUp() override {
        FileTest::SetUp();
        ::testing::internal::CaptureStderr();
    }
    void TearDown() override {
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        FileTest::TearDown();
    }

    // Expects the error of a file: its name in quotes and a reason.
    static void expectError(const std::string& file, const std::string& reason) {
        EXPECT_EQ(readError(file), "'" + file + "': " + reason);
    }
    static void expectDamage(const std::string& file) {
        const std::string error = readError(file);
        EXPECT_TRUE(error.starts_with("'" + file + "': ")) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    }
    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        return text.replace(text.find(from), from.size(), to);
    }
};

TEST_F(ReadErrors, noSuchFile) {
    expectError(path("none.vtu"), "no such file");
}

TEST_F(ReadErrors, folder) {
    expectError(folder_.string(),
                "it is a folder, and no OpenFOAM case ('system/controlDict' is missing)");
}

TEST_F(ReadErrors, unknownKind) {
    expectError(
        put("a.stl", "solid"),
        "unknown kind of data set; .vtu, .pvtu, .vtk, .vtm, .pvd, .cgns, .case (EnSight), .e, "
        ".ex2 and .exo (Exodus), .msh (gmsh), and OpenFOAM cases (folder or .foam) can be read");
}

TEST_F(ReadErrors, emptyFiles) {
    expectError(put("a.vtu", ""), "the file holds no VTK XML unstructured grid");
    expectError(put("a.vtk", ""), "the file holds no legacy VTK unstructured grid");
    expectError(put("a.vtm", ""), "the file holds no VTK XML multi-block data set");
    expectError(put("a.pvtu", ""), "the file names no pieces of a VTK XML unstructured grid");
}

TEST_F(ReadErrors, otherContent) {
    expectError(put("a.vtu", "fill times"), "the file holds no VTK XML unstructured grid");
    expectError(put("b.vtu", "<VTKFile type=\"PolyData\" version=\"1.0\"></VTKFile>"),
                "the file holds no VTK XML unstructured grid");
    expectError(
        put("a.vtk", "# vtk DataFile Version 3.0\nx\nASCII\nDATASET POLYDATA\nPOINTS 0 float\n"),
        "the file holds no legacy VTK unstructured grid");
}

TEST_F(ReadErrors, missingFieldNamesWhatThereIs) {
    GridText grid = twoBoxes();
    grid.cellArrays[0].name = "pressure";
    grid.cellArray("T", "1 2");
    expectError(put("a.vtu", grid.vtu()),
                "there is no cell array 'FillTime'; name the fill time among the cell arrays 'T', "
                "'pressure'");
}

TEST_F(ReadErrors, noArraysAtAll) {
    GridText grid = twoBoxes();
    grid.cellArrays.clear();
    expectError(put("a.vtu", grid.vtu()),
                "there is no cell array 'FillTime'; the cells have no "
                "arrays, but need the fill time");
}

TEST_F(ReadErrors, pointField) {
    GridText grid = twoBoxes();
    grid.cellArrays.clear();
    grid.pointArrays.push_back({"FillTime", "Float32", 1, "0 0 0 0 1 1 1 1 2 2 2 2"});
    expectError(put("a.vtu", grid.vtu()),
                "'FillTime' is a point array; the fill time has to be a cell array");
}

TEST_F(ReadErrors, vectorField) {
    GridText grid = twoBoxes();
    grid.cellArrays[0] = {"FillTime", "Float32", 3, "1 0 0 2 0 0"};
    expectError(put("a.vtu", grid.vtu()),
                "the cell array 'FillTime' has 3 components; the fill time has one");
}

TEST_F(ReadErrors, timeWithoutTimes) {
    ReadOptions options;
    options.time = "2";
    const std::string file = put("a.vtu", twoBoxes().vtu());
    EXPECT_EQ(readError(file, options),
              "'" + file + "': the data set has no times; leave the time away");
}

TEST_F(ReadErrors, surfaceMesh) {
    GridText grid;
    grid.points = twoBoxes().points;
    grid.cell(Quad, {0, 1, 3, 2}).cellArray("FillTime", "1");
    const std::string reason =
        "the data set holds only surfaces or lines; a mesh of volume cells is needed";
    expectError(put("a.vtu", grid.vtu()), reason);
    expectError(put("a.vtk", grid.legacy()), reason);
}

TEST_F(ReadErrors, noCells) {
    GridText grid;
    grid.points = {{0, 0, 0}};
    expectError(put("a.vtu", grid.vtu()),
                "the data set holds no cells; a mesh of volume cells is needed");
}

TEST_F(ReadErrors, quadraticCells) {
    GridText grid;
    grid.points = {{0, 0, 0},     {1, 0, 0},   {0, 1, 0},   {0, 0, 1},     {0.5, 0, 0},
                   {0.5, 0.5, 0}, {0, 0.5, 0}, {0, 0, 0.5}, {0.5, 0, 0.5}, {0, 0.5, 0.5}};
    grid.cell(QuadraticTetra, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}).cellArray("FillTime", "1");
    expectError(put("a.vtu", grid.vtu()),
                "cell 0 is a vtkQuadraticTetra; volume cells have to be linear shapes "
                "(tetrahedron, pyramid, wedge, hexahedron, voxel, prism, polyhedron)");
}

TEST_F(ReadErrors, coordinateThatIsNoNumber) {
    expectError(put("a.vtu", replaced(twoBoxes().vtu(), "2 1 1\n", "2 nan 1\n")),
                "point 11 has a coordinate that is no finite number");
}

TEST_F(ReadErrors, nodeOutOfRange) {
    GridText grid = twoBoxes();
    grid.connectivity[3] = 12;
    expectError(put("a.vtu", grid.vtu()), "a cell names point 12, but the points are 0 to 11");
    grid.connectivity[3] = -1;
    expectDamage(put("a.vtu", grid.vtu()));
    expectDamage(put("a.vtk", grid.legacy()));
}

TEST_F(ReadErrors, wrongNumberOfNodes) {
    GridText grid = twoBoxes();
    grid.types[1] = Wedge;
    expectError(put("a.vtu", grid.vtu()), "cell 1 has 8 nodes; its shape needs 6");
}

TEST_F(ReadErrors, unknownCellType) {
    GridText grid = twoBoxes();
    grid.types[1] = 200;
    expectDamage(put("a.vtu", grid.vtu()));
}

TEST_F(ReadErrors, damagedOffsets) {
    GridText grid = twoBoxes();
    grid.offsets = {16, 8};
    expectDamage(put("a.vtu", grid.vtu()));
    grid.offsets = {8, 99};
    expectDamage(put("b.vtu", grid.vtu()));
}

TEST_F(ReadErrors, damagedPolyhedra) {
    GridText grid;
    grid.points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    grid.polyhedron({{0, 1, 2}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}}).cellArray("FillTime", "1");
    ASSERT_EQ(readError(put("good.vtu", grid.vtu())), "");
    for (const auto& [at, value] : {std::pair{0, 9}, {0, -3}, {1, 99}, {1, -2}, {2, 4}, {16, -1}}) {
        GridText bad = grid;
        bad.faces[static_cast<std::size_t>(at)] = value;
        expectDamage(put("bad.vtu", bad.vtu()));
    }
    GridText noFaces = grid;
    noFaces.faces.clear();
    expectDamage(put("none.vtu", noFaces.vtu()));
    GridText shortFaces = grid;
    shortFaces.faces.resize(10);
    expectDamage(put("short.vtu", shortFaces.vtu()));
}

// A copy that broke off: whatever its length, it is refused.
TEST_F(ReadErrors, truncatedFiles) {
    const std::string whole = twoBoxes().vtu();
    for (std::size_t length = 0; length + 12 < whole.size(); length += 37) {
        expectDamage(put("a.vtu", whole.substr(0, length)));
    }
    const std::string legacy = twoBoxes().legacy();
    for (std::size_t length = 0; length + 4 < legacy.size(); length += 11) {
        expectDamage(put("a.vtk", legacy.substr(0, length)));
    }
}

TEST_F(ReadErrors, arrayThatIsTooShort) {
    GridText grid = twoBoxes();
    grid.cellArrays[0].values = "1";
    expectDamage(put("a.vtu", grid.vtu()));
}

TEST_F(ReadErrors, announcesMoreThanItCanHold) {
    expectError(
        put("a.vtu",
            replaced(twoBoxes().vtu(), "NumberOfCells=\"2\"", "NumberOfCells=\"4000000000\"")),
        "the file is damaged or incomplete: it announces 4000000000 points or cells and is too "
        "short for them");
    expectDamage(
        put("b.vtu", replaced(twoBoxes().vtu(), "NumberOfPoints=\"12\"", "NumberOfPoints=\"-5\"")));
}

// Two hexahedra have lists of 1 + 8 numbers each.
TEST_F(ReadErrors, legacyCountsThatDoNotFit) {
    const std::string legacy = twoBoxes().legacy();
    expectError(
        put("a.vtk", replaced(legacy, "POINTS 12 ", "POINTS 120000000000 ")),
        "the file is damaged or incomplete: the line 'POINTS 120000000000 double' announces "
        "more than the file can hold");
    expectError(
        put("a.vtk", replaced(legacy, "CELL_DATA 2", "CELL_DATA -2")),
        "the file is damaged or incomplete: the line 'CELL_DATA -2' announces more than the "
        "file can hold");
    for (const char* wrong : {"CELLS 2 17", "CELLS 2 19", "CELLS 1 18", "CELLS 3 18"}) {
        expectError(put("a.vtk", replaced(legacy, "CELLS 2 18", wrong)),
                    std::string("the file is damaged or incomplete: the node lists after the line "
                                "'") +
                        wrong + "' do not have the length that it announces");
    }
}

TEST_F(ReadErrors, moreComponentsThanTheFileCanHold) {
    expectError(put("a.vtu", replaced(twoBoxes().vtu(), "NumberOfComponents=\"3\"",
                                      "NumberOfComponents=\"2147483647\"")),
                "the file is damaged or incomplete: it announces 2147483647 components and is too "
                "short for them");
}

TEST_F(ReadErrors, missingPiece) {
    const std::string file = put("a.pvtu",
                                 "<VTKFile type=\"PUnstructuredGrid\" version=\"1.0\">\n"
                                 "<PUnstructuredGrid><Piece Source=\"gone.vtu\"/>"
                                 "</PUnstructuredGrid>\n</VTKFile>\n");
    EXPECT_EQ(readError(file), "'" + path("gone.vtu") + "': no such file");
}

TEST_F(ReadErrors, missingBlock) {
    const std::string file = put("a.vtm",
                                 "<VTKFile type=\"vtkMultiBlockDataSet\" version=\"1.0\">\n"
                                 "<vtkMultiBlockDataSet><DataSet index=\"0\" file=\"gone.vtu\"/>"
                                 "</vtkMultiBlockDataSet>\n</VTKFile>\n");
    EXPECT_EQ(readError(file), "'" + path("gone.vtu") + "': no such file");
}

}  // namespace
}  // namespace weldline::test
