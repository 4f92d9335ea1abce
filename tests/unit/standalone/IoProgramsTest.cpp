// Files that other programs have written: four unit cubes in a row along x with the patches gate,
// vent and sides; fillTime as in the tests, the phase fraction alpha.melt half full at 0.5, 1.5
// and 1.5, the last one not. In openfoam/row and openfoam/decomposed a case by blockMesh and
// decomposePar of OpenFOAM 1912, in openfoam/converted what foamToVTK makes of it, in vtk two
// pieces by VTK's own writer, in exodus three cubes by the library of that format.
#include <cmath>

#include "IoFiles.h"
#include "IoSeries.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

const double nan = std::nan("");

std::string written(const std::string& name) {
    return WELDLINE_IMPORT_FILES "/" + name;
}

// As the case and its conversions hold it; -1 is "not reached".
ReadOptions fillTimeField() {
    ReadOptions options;
    options.field = "fillTime";
    return options;
}

void expectRow(const DataSet& data, const std::vector<double>& fillTime) {
    expectTimes(data.fillTime, fillTime);
    const FvMesh mesh = buildFvMesh(data.mesh);
    EXPECT_EQ(mesh.innerFaces, mesh.cellCount() - 1);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        EXPECT_DOUBLE_EQ(mesh.cellVolume[c], 1.0);
        EXPECT_DOUBLE_EQ(mesh.cellCentre[c].x, 0.5 + c);
    }
}

void expectEnds(const DataSet& data) {
    ASSERT_GE(data.patches.size(), 2U);
    EXPECT_EQ(data.patches[0].name, "gate");
    ASSERT_EQ(data.patches[0].faces.count(), 1);
    EXPECT_EQ(data.mesh.points[data.patches[0].faces.entries[0]].x, 0.0);
    EXPECT_EQ(data.patches[1].name, "vent");
    ASSERT_EQ(data.patches[1].faces.count(), 1);
    EXPECT_EQ(data.mesh.points[data.patches[1].faces.entries[0]].x,
              static_cast<double>(data.mesh.cellCount()));
}

void expectSides(const DataSet& data) {
    ASSERT_EQ(data.patches.size(), 3U);
    EXPECT_EQ(data.patches[2].name, "sides");
    EXPECT_EQ(data.patches[2].faces.count(), 16);
}

TEST(ReadOtherPrograms, openfoam_case_whole_and_decomposed) {
    for (const char* name : {"openfoam/row/row.foam", "openfoam/decomposed/row.foam"}) {
        const DataSet data = readDataSet(written(name), fillTimeField());
        expectRow(data, {0.5, 1.5, 2.25, -1.0});
        expectEnds(data);
        expectSides(data);
    }
}

TEST(ReadOtherPrograms, openfoam_series) {
    expectRow(readDataSet(written("openfoam/row/row.foam"), fromSeries()), {0.5, 1.5, 1.5, nan});
    expectRow(readDataSet(written("openfoam/decomposed/row.foam"), fromSeries()),
              {0.5, 1.5, 1.5, nan});
}

TEST(ReadOtherPrograms, multi_block_of_openfoam) {
    const DataSet data = readDataSet(written("openfoam/converted/fc_2.vtm"), fillTimeField());
    expectRow(data, {0.5, 1.5, 2.25, -1.0});
    expectEnds(data);
    expectSides(data);
}

TEST(ReadOtherPrograms, grids_of_openfoam) {
    for (const char* name : {"fc_2/internal.vtu", "row.vtk"}) {
        SCOPED_TRACE(name);
        const DataSet data =
            readDataSet(written(std::string("openfoam/converted/") + name), fillTimeField());
        expectRow(data, {0.5, 1.5, 2.25, -1.0});
        EXPECT_EQ(data.time, 2.0);
    }
}

using ReadCollectionOfOtherPrograms = FileTest;

TEST_F(ReadCollectionOfOtherPrograms, grids_over_time) {
    std::string list = "<VTKFile type=\"Collection\" version=\"0.1\"><Collection>";
    for (const char* time : {"0", "1", "2"}) {
        list += std::string("<DataSet timestep=\"") + time + "\" file=\"" +
                written(std::string("openfoam/converted/fc_") + time + "/internal.vtu\"/>");
    }
    const DataSet data =
        readDataSet(put("row.pvd", list + "</Collection></VTKFile>"), fromSeries());
    expectRow(data, {0.5, 1.5, 1.5, nan});
}

TEST(ReadOtherPrograms, pieces_of_vtk) {
    expectRow(readDataSet(written("vtk/row.pvtu"), fillTimeField()), {0.5, 1.5, 2.25, -1.0});
}

// Three cubes in two element blocks with other values: half full at 0.5, 1 + 2 (0.5 - 0.25) /
// (0.75 - 0.25) = 2 and 1 + 2 0.5 = 2.
TEST(ReadOtherPrograms, exodus) {
    const DataSet data = readDataSet(written("exodus/row.exo"), {});
    expectRow(data, {0.1, 1.7, 2.3});
    expectEnds(data);
    expectRow(readDataSet(written("exodus/row.exo"), fromSeries()), {0.5, 2.0, 2.0});
}

// A tetrahedron, and two cubes as polyhedra of points that do not begin with the first.
TEST(ReadOtherPrograms, exodus_polyhedra) {
    const DataSet data = readDataSet(written("exodus/polyhedra.exo"), {});
    expectTimes(data.fillTime, {0.1, 0.2, 0.3});
    const FvMesh mesh = buildFvMesh(data.mesh);
    EXPECT_EQ(mesh.innerFaces, 1);
    EXPECT_NEAR(mesh.cellVolume[0], 1.0 / 6.0, 1e-15);
    for (const int c : {1, 2}) {
        EXPECT_DOUBLE_EQ(mesh.cellVolume[c], 1.0);
        EXPECT_DOUBLE_EQ(mesh.cellCentre[c].x, c - 0.5);
    }
}

}  // namespace
}  // namespace weldline::test
