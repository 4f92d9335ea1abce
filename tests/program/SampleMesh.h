#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace weldline::test {

// A small unstructured grid, written as a text .vtu file by the tests themselves.
struct SampleMesh {
    using Point = std::array<double, 3>;
    struct Array {
        std::string name;
        std::string type;  // "Float64", "Int32"
        std::vector<double> values;
    };

    std::vector<Point> points;
    std::vector<std::vector<int>> cells;
    std::vector<int> types;  // numbers of the VTK file format: 9 quad, 12 hexahedron, ...
    std::vector<Array> cellArrays;
    std::vector<Array> pointArrays;

    void addCell(int type, const std::vector<int>& nodes);
    std::string text() const;
};

// Plate 0 <= x <= 1, 0 <= y <= 0.2, 0 <= z <= 0.1 of nx * ny * nz hexahedra without any array.
SampleMesh plate(int nx, int ny, int nz);

// The middle of a hexahedron of `plate`, by cell number.
SampleMesh::Point middleOf(const SampleMesh& mesh, int cell);

// One value per cell from the middle of the cell.
void addCellArray(SampleMesh& mesh, const std::string& name,
                  const std::function<double(SampleMesh::Point)>& value);

// Two fronts start at x = 0 and x = 1 at time 0.05 with speed 1 and meet head-on on the plane
// x = 0.5 at time 0.55.
SampleMesh plateWithTwoFronts(int nx, int ny, int nz);

// The same fronts in one layer of cells in y, with patch 7 on all faces across y.
SampleMesh layerWithOpenSides(int nx, int nz);

}  // namespace weldline::test
