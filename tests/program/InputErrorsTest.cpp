#include <limits>

#include "ProgramTest.h"

// Inputs that cannot be used, tried as a newcomer would: one clear line and exit code 3.

namespace weldline::test {

namespace {

class InputErrors : public ProgramTest {
  protected:
    void expectUnusable(const std::string& input, const std::vector<std::string>& texts,
                        const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments{"analyze", input, "-o", at("result.vtu")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        expectError(weldline(arguments), 3, texts);
        EXPECT_FALSE(std::filesystem::exists(at("result.vtu")));
        EXPECT_FALSE(std::filesystem::exists(at("result.cmp")));
        EXPECT_TRUE(temporaries().empty());
    }
};

TEST_F(InputErrors, no_such_file) {
    expectUnusable(at("missing.vtu"), {"missing.vtu"});
}

TEST_F(InputErrors, a_folder) {
    expectUnusable(at(""), {});
}

TEST_F(InputErrors, text_instead_of_a_data_set) {
    expectUnusable(write("notes.vtu", std::string("these are my notes\n")), {"notes.vtu"});
}

TEST_F(InputErrors, ending_that_no_reader_knows) {
    expectUnusable(write("part.docx", plateWithTwoFronts(4, 1, 2)), {"part.docx", ".vtu"});
}

TEST_F(InputErrors, empty_file) {
    expectUnusable(write("part.vtu", std::string()), {"part.vtu"});
}

TEST_F(InputErrors, truncated_file) {
    const std::string whole = plateWithTwoFronts(4, 1, 2).text();
    expectUnusable(write("part.vtu", whole.substr(0, whole.size() / 2)), {"part.vtu"});
}

TEST_F(InputErrors, missing_field_names_those_that_exist) {
    SampleMesh mesh = plate(4, 1, 2);
    addCellArray(mesh, "arrival", [](SampleMesh::Point p) { return p[0]; });
    addCellArray(mesh, "pressure", [](SampleMesh::Point) { return 1.0; });
    const std::string input = write("part.vtu", mesh);
    expectUnusable(input, {"part.vtu", "FillTime", "arrival", "pressure"});
    expectUnusable(input, {"part.vtu", "fill", "arrival", "pressure"}, {"--field", "fill"});
}

TEST_F(InputErrors, field_on_points) {
    SampleMesh mesh = plate(4, 1, 2);
    mesh.pointArrays.push_back(
        {"FillTime", "Float64", std::vector<double>(mesh.points.size(), 1.0)});
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "FillTime", "point"});
}

TEST_F(InputErrors, surface_mesh) {
    SampleMesh mesh;
    mesh.points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 1}};
    mesh.addCell(9, {0, 1, 2, 3});
    mesh.cellArrays.push_back({"FillTime", "Float64", {1.0}});
    expectUnusable(write("skin.vtu", mesh), {"skin.vtu"});
}

TEST_F(InputErrors, two_dimensional_mesh) {
    SampleMesh mesh;
    mesh.points = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}};
    mesh.addCell(9, {0, 1, 4, 3});
    mesh.addCell(9, {1, 2, 5, 4});
    mesh.cellArrays.push_back({"FillTime", "Float64", {1.0, 2.0}});
    expectUnusable(write("flat.vtu", mesh), {"flat.vtu"});
}

TEST_F(InputErrors, grid_without_cells) {
    SampleMesh mesh;
    mesh.points = {{0, 0, 0}};
    mesh.cellArrays.push_back({"FillTime", "Float64", {}});
    expectUnusable(write("empty.vtu", mesh), {"empty.vtu"});
}

TEST_F(InputErrors, duplicated_cell) {
    SampleMesh mesh = plate(4, 1, 2);
    mesh.addCell(12, mesh.cells[1]);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point p) { return p[0]; });
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "cell"});
}

// A hexahedron whose top is its bottom holds nothing.
TEST_F(InputErrors, zero_volume) {
    SampleMesh mesh = plate(4, 1, 1);
    for (std::size_t p = mesh.points.size() / 2; p < mesh.points.size(); ++p)
        mesh.points[p][2] = 0.0;
    addCellArray(mesh, "FillTime", [](SampleMesh::Point p) { return p[0]; });
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "cell"});
}

// The upper layer is folded back through the lower one: two cells lie on the same side of the faces
// between them, so that one of the two is inside out.
TEST_F(InputErrors, folded_cell) {
    SampleMesh mesh = plate(4, 1, 2);
    for (auto& point : mesh.points)
        if (point[2] > 0.09) point[2] = -0.05;
    addCellArray(mesh, "FillTime", [](SampleMesh::Point p) { return p[0]; });
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "cell"});
}

TEST_F(InputErrors, field_of_nothing_but_nan) {
    SampleMesh mesh = plate(4, 1, 2);
    addCellArray(mesh, "FillTime",
                 [](SampleMesh::Point) { return std::numeric_limits<double>::quiet_NaN(); });
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "FillTime", "8 are NaN"});
}

TEST_F(InputErrors, nothing_filled) {
    SampleMesh mesh = plate(4, 1, 2);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point) { return 0.0; });
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "FillTime", "8 cells are 0", "--field"});
}

TEST_F(InputErrors, cell_state_with_a_fraction) {
    SampleMesh mesh = plateWithTwoFronts(4, 1, 2);
    addCellArray(mesh, "state", [](SampleMesh::Point) { return 0.5; });
    expectUnusable(write("part.vtu", mesh), {"part.vtu", "state", "whole number"},
                   {"--cell-state", "state"});
}

TEST_F(InputErrors, second_injection_that_is_not_there) {
    expectUnusable(write("part.vtu", plateWithTwoFronts(4, 1, 2)), {"part.vtu", "second"},
                   {"--bi-field", "second"});
}

TEST_F(InputErrors, info_of_a_missing_file) {
    expectError(weldline({"info", at("missing.vtu")}), 3, {"missing.vtu"});
}

TEST_F(InputErrors, info_of_text) {
    expectError(weldline({"info", write("notes.vtu", std::string("notes\n"))}), 3, {"notes.vtu"});
}

// Some cells without a value are no error: they count as not reached.
TEST_F(InputErrors, some_nan_are_not_reached) {
    SampleMesh mesh = plateWithTwoFronts(4, 1, 2);
    mesh.cellArrays[0].values[0] = std::numeric_limits<double>::quiet_NaN();
    const Outcome outcome = weldline({"analyze", write("part.vtu", mesh)});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(contains(outcome.err, "1 cell is not reached by the melt (1 NaN"));
    EXPECT_TRUE(contains(outcome.out, "7 of 8 cells"));
}

}  // namespace

}  // namespace weldline::test
