// Results are written, opened again and compared value by value.
#include <sys/resource.h>

#include <csignal>

#include "IoFiles.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "io/WriteResult.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

class WriteFile : public FileTest {
  protected:
    // A hexahedron, a polyhedron beside it and a pyramid on top of the first.
    static CellMesh mixedMesh() {
        std::vector<Vec3> points = boxRowPoints({0, 1, 2});
        points.push_back({0.5, 0.5, 1.0 / 3.0 + 2.0});
        MeshParts parts(points);
        parts.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
        parts.polyhedron({{8, 9, 11, 10},
                          {6, 7, 5, 4},
                          {4, 8, 9, 5},
                          {6, 10, 11, 7},
                          {4, 8, 10, 6},
                          {5, 9, 11, 7}});
        parts.shape(CellKind::Pyramid, {2, 6, 7, 3, 12});
        return parts;
    }
};

TEST_F(WriteFile, roundTrip) {
    const CellMesh mesh = mixedMesh();
    writeResult(path("r.vtu"), mesh, fieldsFor(mesh));
    const DataSet data = readDataSet(path("r.vtu"), {});
    ASSERT_EQ(data.mesh.points.size(), mesh.points.size());
    for (std::size_t p = 0; p < mesh.points.size(); ++p) {
        EXPECT_EQ(data.mesh.points[p].x, mesh.points[p].x);
        EXPECT_EQ(data.mesh.points[p].y, mesh.points[p].y);
        EXPECT_EQ(data.mesh.points[p].z, mesh.points[p].z);
    }
    EXPECT_EQ(data.mesh.kinds, mesh.kinds);
    EXPECT_EQ(data.mesh.cellNodes.entries, mesh.cellNodes.entries);
    EXPECT_EQ(data.mesh.polygons.entries, mesh.polygons.entries);
    EXPECT_EQ(data.fillTime, (std::vector<double>{0.1F, 0.2F, 3.0F * 0.1F}));
    EXPECT_EQ(buildFvMesh(data.mesh).innerFaces, 2);
}

TEST_F(WriteFile, arraysOfTheResult) {
    const CellMesh mesh = mixedMesh();
    writeResult(path("r.vtu"), mesh, fieldsFor(mesh));
    const DataSetInfo info = describeDataSet(path("r.vtu"), "latest");
    ASSERT_EQ(info.arrays.size(), 4U);
    EXPECT_EQ(info.arrays[0].name, "FillTime");
    EXPECT_EQ(info.arrays[0].type, "Float32");
    EXPECT_EQ(info.arrays[1].name, "FlowDirection");
    EXPECT_EQ(info.arrays[1].components, 3);
    EXPECT_EQ(info.arrays[2].name, "MeetingAngle");
    EXPECT_EQ(info.arrays[2].where, "points");
    EXPECT_EQ(info.arrays[2].type, "Float64");
    EXPECT_EQ(info.arrays[2].minimum, 176.0);
    EXPECT_EQ(info.arrays[2].maximum, 180.0);
    EXPECT_EQ(info.arrays[3].name, "WeldLine");
    EXPECT_EQ(info.arrays[3].type, "Int32");
    EXPECT_EQ(info.arrays[3].maximum, 2.0);
}

TEST_F(WriteFile, sameInputSameBytes) {
    const CellMesh mesh = mixedMesh();
    writeResult(path("a.vtu"), mesh, fieldsFor(mesh));
    writeResult(path("b.vtu"), mesh, fieldsFor(mesh));
    EXPECT_EQ(contentOf(path("a.vtu")), contentOf(path("b.vtu")));
    EXPECT_NE(contentOf(path("a.vtu")).find("vtkZLibDataCompressor"), std::string::npos);
    EXPECT_NE(contentOf(path("a.vtu")).find("AppendedData encoding=\"raw\""), std::string::npos);
}

TEST_F(WriteFile, unwritablePlaces) {
    const CellMesh mesh = mixedMesh();
    try {
        writeResult(path("no/r.vtu"), mesh, fieldsFor(mesh));
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.what(), "cannot write '" + path("no/r.vtu") + "': the folder '" +
                                    path("no") + "' does not exist; create it first");
    }
    EXPECT_THROW(writeResult("/dev/full", mesh, fieldsFor(mesh)), RunError);
    writeResult("/dev/null", mesh, fieldsFor(mesh));
}

// The limit on the file size stands for a full disk; the old result stays.
TEST_F(WriteFile, fullDiskKeepsTheOldResult) {
    put("r.vtu", "old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 1000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const CellMesh mesh = mixedMesh();
    EXPECT_THROW(writeResult(path("r.vtu"), mesh, fieldsFor(mesh)), RunError);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(contentOf(path("r.vtu")), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_),
                            std::filesystem::directory_iterator()),
              1);
}

}  // namespace
}  // namespace weldline::test
