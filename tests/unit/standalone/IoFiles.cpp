#include "IoFiles.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "MeshParts.h"
#include "base/Errors.h"

namespace weldline::test {
namespace {

namespace fs = std::filesystem;

std::string joined(const std::vector<int>& values) {
    std::ostringstream text;
    for (const int value : values) {
        text << value << ' ';
    }
    return text.str();
}

std::string coordinates(const std::vector<Vec3>& points) {
    std::ostringstream text;
    text.precision(17);
    for (const Vec3 p : points) {
        text << p.x << ' ' << p.y << ' ' << p.z << '\n';
    }
    return text.str();
}

std::string dataArray(const GridText::Array& array) {
    return "<DataArray type=\"" + array.type + "\" Name=\"" + array.name +
           "\" NumberOfComponents=\"" + std::to_string(array.components) +
           "\" format=\"ascii\">\n" + array.values + "\n</DataArray>\n";
}

std::string arrays(const std::string& element, const std::vector<GridText::Array>& list) {
    std::string text = "<" + element + ">\n";
    for (const GridText::Array& array : list) {
        text += dataArray(array);
    }
    return text + "</" + element + ">\n";
}

std::string wholeVtu(const std::string& inside) {
    return "<?xml version=\"1.0\"?>\n<VTKFile type=\"UnstructuredGrid\" version=\"1.0\" "
           "byte_order=\"LittleEndian\" header_type=\"UInt64\">\n<UnstructuredGrid>\n" +
           inside + "</UnstructuredGrid>\n</VTKFile>\n";
}

}  // namespace

GridText& GridText::cell(VtkType type, std::initializer_list<int> nodes) {
    connectivity.insert(connectivity.end(), nodes);
    offsets.push_back(static_cast<int>(connectivity.size()));
    types.push_back(type);
    faceOffsets.push_back(-1);
    return *this;
}

GridText& GridText::polyhedron(std::initializer_list<std::vector<int>> polygons) {
    std::vector<int> nodes;
    faces.push_back(static_cast<int>(polygons.size()));
    for (const std::vector<int>& polygon : polygons) {
        faces.push_back(static_cast<int>(polygon.size()));
        faces.insert(faces.end(), polygon.begin(), polygon.end());
        for (const int node : polygon) {
            if (std::find(nodes.begin(), nodes.end(), node) == nodes.end()) {
                nodes.push_back(node);
            }
        }
    }
    connectivity.insert(connectivity.end(), nodes.begin(), nodes.end());
    offsets.push_back(static_cast<int>(connectivity.size()));
    types.push_back(PolyhedronType);
    faceOffsets.push_back(static_cast<int>(faces.size()));
    return *this;
}

GridText& GridText::cellArray(const std::string& name, const std::string& values,
                              const std::string& type, int components) {
    cellArrays.push_back({name, type, components, values});
    return *this;
}

std::string GridText::piece() const {
    std::vector<Array> cells{{"connectivity", "Int64", 1, joined(connectivity)},
                             {"offsets", "Int64", 1, joined(offsets)},
                             {"types", "UInt8", 1, joined(types)}};
    if (!faces.empty()) {
        cells.push_back({"faces", "Int64", 1, joined(faces)});
        cells.push_back({"faceoffsets", "Int64", 1, joined(faceOffsets)});
    }
    return "<Piece NumberOfPoints=\"" + std::to_string(points.size()) + "\" NumberOfCells=\"" +
           std::to_string(types.size()) + "\">\n" + arrays("PointData", pointArrays) +
           arrays("CellData", cellArrays) +
           arrays("Points", {{"Points", "Float64", 3, coordinates(points)}}) +
           arrays("Cells", cells) + "</Piece>\n";
}

std::string GridText::vtu() const {
    return wholeVtu((fieldData.empty() ? "" : "<FieldData>\n" + fieldData + "</FieldData>\n") +
                    piece());
}

std::string vtuOfPieces(const std::vector<GridText>& pieces) {
    std::string inside;
    for (const GridText& grid : pieces) {
        inside += grid.piece();
    }
    return wholeVtu(inside);
}

std::string GridText::legacy() const {
    std::ostringstream text;
    text << "# vtk DataFile Version 3.0\nfilling\nASCII\nDATASET UNSTRUCTURED_GRID\nPOINTS "
         << points.size() << " double\n"
         << coordinates(points) << "CELLS " << types.size() << ' '
         << connectivity.size() + types.size() << '\n';
    int begin = 0;
    for (const int end : offsets) {
        text << end - begin << ' '
             << joined({connectivity.begin() + begin, connectivity.begin() + end}) << '\n';
        begin = end;
    }
    text << "CELL_TYPES " << types.size() << '\n'
         << joined(types) << "\nCELL_DATA " << types.size() << '\n';
    for (const Array& array : cellArrays) {
        text << "SCALARS " << array.name << " float 1\nLOOKUP_TABLE default\n"
             << array.values << '\n';
    }
    return text.str();
}

GridText twoBoxes() {
    GridText grid;
    grid.points = boxRowPoints({0, 1, 2});
    grid.cell(Hexa, {0, 4, 5, 1, 2, 6, 7, 3}).cell(Hexa, {4, 8, 9, 5, 6, 10, 11, 7});
    grid.cellArray("FillTime", "1 2");
    return grid;
}

void FileTest::SetUp() {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = fs::temp_directory_path() / (std::string(test->test_suite_name()) + "-" +
                                           test->name() + "-" + std::to_string(::getpid()));
    fs::create_directories(folder_);
}

void FileTest::TearDown() {
    fs::remove_all(folder_);
}

std::string FileTest::put(const std::string& name, const std::string& content) const {
    const fs::path file = folder_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
}

std::string FileTest::readError(const std::string& file, const ReadOptions& options) {
    try {
        readDataSet(file, options);
        return "";
    } catch (const InputError& error) {
        return error.what();
    }
}

std::string contentOf(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

ResultFields fieldsFor(const CellMesh& mesh) {
    ResultFields fields;
    for (std::size_t p = 0; p < mesh.points.size(); ++p) {
        fields.meetingAngle.push_back(180.0 - static_cast<double>(p) / 3.0);
        fields.weldLine.push_back(static_cast<int>(p % 3));
    }
    for (int c = 0; c < mesh.cellCount(); ++c) {
        fields.fillTime.push_back(0.1F * static_cast<float>(c + 1));
        fields.flowDirection.push_back({0, 0.6, 0.8});
    }
    return fields;
}

std::vector<int> rowOf(const Rows& rows, int i) {
    return {rows[i].begin(), rows[i].end()};
}

}  // namespace weldline::test
