// Results as Exodus files, opened again by VTK's reader.
#include "IoFiles.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "io/WriteExodus.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

class WriteExodus : public FileTest {
  protected:
    // A pyramid on top of a hexahedron, a wedge beside it, a tetrahedron beside that. The first
    // triangle of the wedge looks outwards.
    static CellMesh mixedMesh() {
        std::vector<Vec3> points = boxRowPoints({0, 1});
        points.insert(points.end(), {{0.5, 0.5, 2}, {2, 0, 0}, {2, 1, 0}, {2, 0, 1.0 / 3.0}});
        MeshParts parts(points);
        parts.shape(CellKind::Pyramid, {2, 6, 7, 3, 8});
        parts.shape(CellKind::Wedge, {4, 9, 6, 5, 10, 7});
        parts.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
        parts.shape(CellKind::Tetrahedron, {9, 10, 6, 11});
        return parts;
    }

    // The reader numbers points anew, by the cells.
    static void expectCell(const DataSet& data, int cell, const std::vector<int>& nodes) {
        const CellMesh mesh = mixedMesh();
        const ResultFields fields = fieldsFor(mesh);
        const std::vector<int> row = rowOf(data.mesh.cellNodes, cell);
        ASSERT_EQ(row.size(), nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            EXPECT_EQ(norm(data.mesh.points[row[i]] - mesh.points[nodes[i]]), 0.0);
            EXPECT_EQ(data.pointFields[0][row[i]], fields.meetingAngle[nodes[i]]);
            EXPECT_EQ(data.pointFields[1][row[i]], fields.weldLine[nodes[i]]);
        }
    }

    static DataSet readBack(const std::string& file) {
        ReadOptions options;
        options.pointArrays = {"MeetingAngle", "WeldLine"};
        return readDataSet(file, options);
    }
};

// Cells stand by shape: tetrahedra, pyramids, wedges, hexahedra.
TEST_F(WriteExodus, round_trip_to_the_last_bit) {
    const CellMesh mesh = mixedMesh();
    const ResultFields fields = fieldsFor(mesh);
    writeExodus(path("r.exo"), "r.exo", mesh, fields);
    const DataSet data = readBack(path("r.exo"));
    EXPECT_EQ(data.mesh.kinds, (std::vector{CellKind::Tetrahedron, CellKind::Pyramid,
                                            CellKind::Wedge, CellKind::Hexahedron}));
    EXPECT_EQ(data.fillTime, (std::vector<double>{4 * 0.1F, 0.1F, 0.2F, 3.0F * 0.1F}));
    ASSERT_EQ(data.mesh.points.size(), mesh.points.size());
    expectCell(data, 0, {9, 10, 6, 11});
    expectCell(data, 1, {2, 6, 7, 3, 8});
    expectCell(data, 2, {5, 10, 7, 4, 9, 6});
    expectCell(data, 3, {0, 4, 5, 1, 2, 6, 7, 3});
}

// The volume above the first triangle, (b - a) x (c - a) . (d - a), is that of a prism of height 1
// over half a square.
TEST_F(WriteExodus, wedges_look_inwards) {
    for (const auto& nodes : {std::initializer_list<int>{4, 6, 9, 5, 7, 10},
                              std::initializer_list<int>{4, 9, 6, 5, 10, 7}}) {
        MeshParts parts(mixedMesh().points);
        parts.shape(CellKind::Wedge, nodes);
        const CellMesh& mesh = parts;
        writeExodus(path("w.exo"), "w.exo", mesh, fieldsFor(mesh));
        const DataSet data = readBack(path("w.exo"));
        const std::vector<int> row = rowOf(data.mesh.cellNodes, 0);
        const auto at = [&](int i) { return data.mesh.points[static_cast<std::size_t>(row[i])]; };
        EXPECT_EQ(dot(cross(at(1) - at(0), at(2) - at(0)), at(3) - at(0)), 1.0);
    }
}

TEST_F(WriteExodus, reasons_of_refusal) {
    const CellMesh mesh = mixedMesh();
    ResultFields fields = fieldsFor(mesh);
    fields.refusalReason.assign(mesh.points.size(), 5);
    writeExodus(path("r.exo"), "r.exo", mesh, fields);
    ReadOptions options;
    options.pointArrays = {"RefusalReason"};
    EXPECT_EQ(readDataSet(path("r.exo"), options).pointFields[0],
              std::vector<double>(mesh.points.size(), 5.0));
}

TEST_F(WriteExodus, place_that_takes_no_file) {
    const CellMesh mesh = mixedMesh();
    try {
        writeExodus(path("none/r.exo"), "r.exo", mesh, fieldsFor(mesh));
        FAIL();
    } catch (const RunError& error) {
        EXPECT_STREQ(error.what(), "cannot write 'r.exo': No such file or directory");
    }
}

TEST_F(WriteExodus, names) {
    for (const char* name : {"a.exo", "b/a.e", "a.EX2"}) {
        EXPECT_TRUE(isExodusName(name)) << name;
    }
    EXPECT_FALSE(isExodusName("exo"));
    EXPECT_FALSE(isExodusName("a.vtu"));
}

}  // namespace
}  // namespace weldline::test
