#include "SampleMesh.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace weldline::test {

namespace {

std::string number(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0.0 ? "inf" : "-inf";
    // Whole numbers without an exponent, which an integer array could not hold.
    if (value == std::trunc(value) && std::abs(value) < 1e15)
        return std::to_string(static_cast<long long>(value));
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

std::string dataArray(const std::string& name, const std::string& type, int components,
                      const std::vector<double>& values) {
    std::string text = "<DataArray type=\"" + type + "\" Name=\"" + name +
                       "\" NumberOfComponents=\"" + std::to_string(components) +
                       "\" format=\"ascii\">\n";
    for (const double value : values) text += number(value) + " ";
    return text + "\n</DataArray>\n";
}

std::string arrays(const std::string& tag, const std::vector<SampleMesh::Array>& list) {
    std::string text = "<" + tag + ">\n";
    for (const auto& array : list) text += dataArray(array.name, array.type, 1, array.values);
    return text + "</" + tag + ">\n";
}

}  // namespace

void SampleMesh::addCell(int type, const std::vector<int>& nodes) {
    types.push_back(type);
    cells.push_back(nodes);
}

std::string SampleMesh::text() const {
    std::vector<double> coordinates, connectivity, offsets, kinds(types.begin(), types.end());
    for (const Point& p : points) coordinates.insert(coordinates.end(), p.begin(), p.end());
    for (const auto& cell : cells) {
        connectivity.insert(connectivity.end(), cell.begin(), cell.end());
        offsets.push_back(static_cast<double>(connectivity.size()));
    }
    return "<?xml version=\"1.0\"?>\n<VTKFile type=\"UnstructuredGrid\" version=\"1.0\" "
           "byte_order=\"LittleEndian\" header_type=\"UInt64\">\n<UnstructuredGrid>\n"
           "<Piece NumberOfPoints=\"" +
           std::to_string(points.size()) + "\" NumberOfCells=\"" + std::to_string(cells.size()) +
           "\">\n" + arrays("PointData", pointArrays) + arrays("CellData", cellArrays) +
           "<Points>\n" + dataArray("Points", "Float64", 3, coordinates) + "</Points>\n<Cells>\n" +
           dataArray("connectivity", "Int64", 1, connectivity) +
           dataArray("offsets", "Int64", 1, offsets) + dataArray("types", "UInt8", 1, kinds) +
           "</Cells>\n</Piece>\n</UnstructuredGrid>\n</VTKFile>\n";
}

SampleMesh plate(int nx, int ny, int nz) {
    SampleMesh mesh;
    for (int k = 0; k <= nz; ++k)
        for (int j = 0; j <= ny; ++j)
            for (int i = 0; i <= nx; ++i)
                mesh.points.push_back({static_cast<double>(i) / nx, 0.2 * j / ny, 0.1 * k / nz});
    const auto node = [&](int i, int j, int k) { return i + (nx + 1) * (j + (ny + 1) * k); };
    for (int k = 0; k < nz; ++k)
        for (int j = 0; j < ny; ++j)
            for (int i = 0; i < nx; ++i)
                mesh.addCell(12, {node(i, j, k), node(i + 1, j, k), node(i + 1, j + 1, k),
                                  node(i, j + 1, k), node(i, j, k + 1), node(i + 1, j, k + 1),
                                  node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)});
    return mesh;
}

SampleMesh::Point middleOf(const SampleMesh& mesh, int cell) {
    const auto& low = mesh.points[mesh.cells[cell][0]];
    const auto& high = mesh.points[mesh.cells[cell][6]];
    return {0.5 * (low[0] + high[0]), 0.5 * (low[1] + high[1]), 0.5 * (low[2] + high[2])};
}

void addCellArray(SampleMesh& mesh, const std::string& name,
                  const std::function<double(SampleMesh::Point)>& value) {
    std::vector<double> values(mesh.cells.size());
    for (std::size_t c = 0; c < values.size(); ++c)
        values[c] = value(middleOf(mesh, static_cast<int>(c)));
    mesh.cellArrays.push_back({name, "Float64", values});
}

SampleMesh plateWithTwoFronts(int nx, int ny, int nz) {
    SampleMesh mesh = plate(nx, ny, nz);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point middle) {
        return std::min(middle[0], 1.0 - middle[0]) + 0.05;
    });
    return mesh;
}

SampleMesh layerWithOpenSides(int nx, int nz) {
    SampleMesh mesh = plateWithTwoFronts(nx, 1, nz);
    const std::size_t volumes = mesh.cells.size();
    for (std::size_t cell = 0; cell < volumes; ++cell) {
        const std::vector<int> n = mesh.cells[cell];
        mesh.addCell(9, {n[0], n[1], n[5], n[4]});
        mesh.addCell(9, {n[3], n[2], n[6], n[7]});
    }
    std::vector<double> patch(volumes, 0.0);
    patch.resize(mesh.cells.size(), 7.0);
    mesh.cellArrays.front().values.resize(mesh.cells.size(), 0.0);
    mesh.cellArrays.push_back({"PatchId", "Int32", patch});
    return mesh;
}

}  // namespace weldline::test
