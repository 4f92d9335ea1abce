// Files of gmsh: what gmsh itself has written, what is written down here, and what is damaged.
#include <array>
#include <cmath>

#include "IoFiles.h"
#include "IoSeries.h"
#include "base/Errors.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

class GmshFiles : public FileTest {
  protected:
    static std::string written(const std::string& form) {
        return WELDLINE_GMSH_FILES "/row-" + form + ".msh";
    }

    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return text.replace(at, from.size(), to);
    }
};

constexpr std::array forms{"22-text", "22-binary", "41-text", "41-binary"};

// Four unit cubes from x = 0 to 4; groups 7, 9 and 30 are the ends and the 16 faces beside.
TEST_F(GmshFiles, of_gmsh_in_all_forms) {
    for (const char* form : forms) {
        SCOPED_TRACE(form);
        const DataSet data = readDataSet(written(form), {});
        EXPECT_EQ(data.fieldName, "FillTime");
        expectTimes(data.fillTime, {0.5, 1.5, 2.25, std::nan("")});
        const FvMesh mesh = buildFvMesh(data.mesh);
        ASSERT_EQ(mesh.cellCount(), 4);
        EXPECT_EQ(mesh.innerFaces, 3);
        for (int c = 0; c < 4; ++c) {
            EXPECT_NEAR(mesh.cellVolume[c], 1.0, 1e-10);
            EXPECT_NEAR(mesh.cellCentre[c].x, 0.5 + c, 1e-10);
        }
        ASSERT_EQ(data.patches.size(), 3U);
        EXPECT_EQ(data.patches[0].name, "gate");
        EXPECT_EQ(data.patches[0].faces.count(), 1);
        for (const int node : data.patches[0].faces[0]) EXPECT_EQ(data.mesh.points[node].x, 0.0);
        EXPECT_EQ(data.patches[1].name, "vent");
        for (const int node : data.patches[1].faces[0]) EXPECT_EQ(data.mesh.points[node].x, 4.0);
        EXPECT_EQ(data.patches[2].name, "side walls");
        EXPECT_EQ(data.patches[2].faces.count(), 16);
    }
}

// A tetrahedron on a wedge on a pyramid: not joined, each with a volume of its own. Nodes are
// numbered with gaps; line and point elements are left out.
const char* const shapes =
    "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n"
    "$Nodes\n15\n"
    "1 0 0 0\n2 1 0 0\n3 0 1 0\n4 0 0 1\n"
    "11 5 0 0\n12 6 0 0\n13 5 1 0\n14 5 0 1\n15 6 0 1\n16 5 1 1\n"
    "21 9 0 0\n22 10 0 0\n23 10 1 0\n24 9 1 0\n900 9.5 0.5 3\n"
    "$EndNodes\n"
    "$Elements\n6\n"
    "5 15 2 0 1 1\n6 1 2 0 1 1 2\n7 2 2 0 1 1 2 3\n"
    "8 4 2 0 1 1 2 3 4\n9 6 3 0 1 4 11 12 13 14 15 16\n10 7 0 21 22 23 24 900\n"
    "$EndElements\n"
    "$ElementData\n1\n\"FillTime\"\n1\n0\n3\n0\n1\n3\n10 3\n8 1\n9 2\n$EndElementData\n";

TEST_F(GmshFiles, tetrahedra_wedges_and_pyramids) {
    const DataSet data = readDataSet(put("in.msh", shapes), {});
    EXPECT_EQ(data.fillTime, (std::vector<double>{1, 2, 3}));
    const FvMesh mesh = buildFvMesh(data.mesh);
    EXPECT_NEAR(mesh.cellVolume[0], 1.0 / 6.0, 1e-15);
    EXPECT_NEAR(mesh.cellVolume[1], 0.5, 1e-15);
    EXPECT_NEAR(mesh.cellVolume[2], 1.0, 1e-15);
    EXPECT_TRUE(data.patches.empty());
}

TEST_F(GmshFiles, fields_over_times_become_a_fill_time) {
    std::string text = replaced(shapes, "FillTime", "other");
    const auto step = [&](const std::string& time, const std::string& values) {
        text += "$ElementData\n1\n\"alpha\"\n1\n" + time + "\n3\n0\n1\n3\n" + values +
                "$EndElementData\n";
    };
    step("1", "8 0\n9 0\n10 0\n");
    step("3", "8 1\n9 0.25\n10 0\n");
    step("4", "8 1\n9 0.75\n10 0\n");
    const DataSet data = readDataSet(put("in.msh", text), fromSeries());
    expectTimes(data.fillTime, {2.0, 3.5, std::nan("")});
    EXPECT_EQ(data.series->stepsWithout, 1);
}

TEST_F(GmshFiles, field_at_a_time) {
    const std::string later =
        "$ElementData\n1\n\"FillTime\"\n2\n2\n9\n3\n0\n1\n1\n8 7\n$EndElementData\n";
    const std::string file = put("in.msh", shapes + later);
    ReadOptions options;
    expectTimes(readDataSet(file, options).fillTime, {7.0, std::nan(""), std::nan("")});
    options.time = "0";
    expectTimes(readDataSet(file, options).fillTime, {1, 2, 3});
}

// A surface that is turned round has its group with a minus; a group without a name has its number.
TEST_F(GmshFiles, groups_of_turned_surfaces_and_without_names) {
    std::string text = contentOf(written("41-text"));
    text = replaced(text, "1 1 1 7 0", "1 1 1 -7 0");
    text = replaced(text, "2 9 \"vent\"\n", "");
    text = replaced(text, "$PhysicalNames\n4", "$PhysicalNames\n3");
    const DataSet data = readDataSet(put("in.msh", text), {});
    ASSERT_EQ(data.patches.size(), 3U);
    EXPECT_EQ(data.patches[0].name, "gate");
    EXPECT_EQ(data.patches[1].name, "9");
}

TEST_F(GmshFiles, what_cannot_be_read_is_told) {
    const std::string good = contentOf(written("22-text"));
    const auto error = [&](const std::string& from, const std::string& to) {
        return readError(put("in.msh", replaced(good, from, to)));
    };
    const auto expectPart = [](const std::string& text, const std::string& part) {
        EXPECT_NE(text.find(part), std::string::npos) << text;
    };
    expectPart(error("$MeshFormat\n", "$Mesh\n"), "'$MeshFormat'");
    expectPart(error("2.2 0 8", "4.0 0 8"), "2.2 and 4.1 can be read");
    expectPart(error("2.2 0 8", "2.2 0 4"), "its first line");
    expectPart(error("$Nodes\n20", "$Nodes\n2000000000"), "more than it can hold");
    expectPart(error("$Nodes\n20", "$Nodes\n-1"), "more than it can hold");
    expectPart(error("\n2 4 0 0", "\n1 4 0 0"), "node 1 stands twice");
    expectPart(error("\n2 4 0 0", "\n2 nan 0 0"), "node 2 has no place");
    expectPart(error("\n2 4 0 0", "\n2 4 x 0"), "'x' is no number");
    expectPart(error("19 5 2 10 1 1 5 10", "19 5 2 10 1 77 5 10"),
               "names node 77, which is not there");
    expectPart(error("19 5 2 10", "19 12 2 10"), "elements of type 12; elements of first order");
    expectPart(error("19 0.5", "99999999999999999999 0.5"), "'99999999999999999999'");
    expectPart(error("SCHEME\"\n1\n0\n", "SCHEME\"\n1\nx\n"), "'x' is no time");
    expectPart(error("\n2\n\"FillTime\"", "\n2000000000000\n\"FillTime\""), "than it can hold");
    expectPart(error("$EndElements", "$EndElement"), "'$EndElements' is missing");
    expectPart(error("2 7 \"gate\"", "2 7 gate"), "has no name");
    expectPart(readError(put("in.msh", "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n")), "is missing");
    const std::string binary = contentOf(written("41-binary"));
    const std::string one("8\n\1\0\0\0", 6);
    expectPart(readError(put("in.msh", replaced(binary, one, std::string("8\n\0\0\0\1", 6)))),
               "order of bytes");
}

// Whatever is cut off or changed, the file is read or refused in words.
TEST_F(GmshFiles, damaged_ones_are_read_or_refused) {
    for (const char* form : forms) {
        SCOPED_TRACE(form);
        const std::string good = contentOf(written(form));
        int refused = 0;
        for (std::size_t at = 0; at < good.size(); at += 3) {
            refused += readError(put("in.msh", good.substr(0, at))).empty() ? 0 : 1;
            std::string changed = good;
            changed[at] = static_cast<char>(changed[at] ^ static_cast<char>(1 << (at % 8)));
            refused += readError(put("in.msh", changed)).empty() ? 0 : 1;
        }
        EXPECT_GT(refused, static_cast<int>(good.size()) / 3);
    }
}

}  // namespace
}  // namespace weldline::test
