#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "io/DataSet.h"
#include "io/WriteResult.h"

namespace weldline::test {

// Cell types as the file formats number them.
enum VtkType {
    Line = 3,
    Triangle = 5,
    Quad = 9,
    Tetra = 10,
    Voxel = 11,
    Hexa = 12,
    Wedge = 13,
    Pyramid = 14,
    PentaPrism = 15,
    QuadraticTetra = 24,
    PolyhedronType = 42
};

// An unstructured grid written down by hand and put into a text file. Written without VTK, so that
// reading is tested against the formats and not against VTK's own writer.
struct GridText {
    std::vector<Vec3> points;
    std::vector<int> connectivity;
    std::vector<int> offsets;
    std::vector<int> types;
    std::vector<int> faces;
    std::vector<int> faceOffsets;  // -1 for cells that are no polyhedra

    struct Array {
        std::string name;
        std::string type;  // "Float32", "Int32", ...
        int components;
        std::string values;
    };
    std::vector<Array> cellArrays;
    std::vector<Array> pointArrays;
    std::string fieldData;  // inner text of the FieldData element

    GridText& cell(VtkType type, std::initializer_list<int> nodes);
    GridText& polyhedron(std::initializer_list<std::vector<int>> polygons);
    GridText& cellArray(const std::string& name, const std::string& values,
                        const std::string& type = "Float32", int components = 1);

    std::string piece() const;   // one Piece element of a .vtu file
    std::string vtu() const;     // a whole .vtu file in text form
    std::string legacy() const;  // a whole legacy .vtk file in text form (no polyhedra)
};

std::string vtuOfPieces(const std::vector<GridText>& pieces);

// Two unit boxes side by side as hexahedra, points as in boxRowPoints, with fill times 1 and 2.
GridText twoBoxes();

// A folder of its own for every test, removed at the end.
class FileTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    // Writes a file (and its folders) and returns its path.
    std::string put(const std::string& name, const std::string& content) const;

    // The text of the InputError of readDataSet, "" when it throws none.
    static std::string readError(const std::string& file, const ReadOptions& options = {});

    std::filesystem::path folder_;
};

std::string contentOf(const std::string& file);

// A value of its own at each point and in each cell: angles 180, 180 - 1/3, ..., fill times 0.1F,
// 0.2F, ...
ResultFields fieldsFor(const CellMesh& mesh);

std::vector<int> rowOf(const Rows& rows, int i);

}  // namespace weldline::test
