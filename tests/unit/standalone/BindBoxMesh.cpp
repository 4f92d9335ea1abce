#include "BindBoxMesh.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace weldline::test {

namespace {

struct Side {
    std::array<int, 3> step;                    // to the neighbour
    std::array<std::array<int, 3>, 4> corners;  // seen from outside counter-clockwise
};

const std::array<Side, 6> sides{{
    {{-1, 0, 0}, {{{0, 0, 0}, {0, 0, 1}, {0, 1, 1}, {0, 1, 0}}}},
    {{1, 0, 0}, {{{1, 0, 0}, {1, 1, 0}, {1, 1, 1}, {1, 0, 1}}}},
    {{0, -1, 0}, {{{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}}},
    {{0, 1, 0}, {{{0, 1, 0}, {0, 1, 1}, {1, 1, 1}, {1, 1, 0}}}},
    {{0, 0, -1}, {{{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}}},
    {{0, 0, 1}, {{{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}}},
}};

struct Grid {
    int nx, ny, nz;

    int cells() const { return nx * ny * nz; }
    int cell(int i, int j, int k) const { return i + nx * (j + ny * k); }
    int point(int i, int j, int k) const { return i + (nx + 1) * (j + (ny + 1) * k); }
    std::array<int, 3> place(int cell) const {
        return {cell % nx, cell / nx % ny, cell / (nx * ny)};
    }
    int across(int c, const Side& side) const {  // -1: outside
        const auto [i, j, k] = place(c);
        const int a = i + side.step[0];
        const int b = j + side.step[1];
        const int d = k + side.step[2];
        const bool inside = a >= 0 && a < nx && b >= 0 && b < ny && d >= 0 && d < nz;
        return inside ? cell(a, b, d) : -1;
    }
};

void addFace(FvMesh& mesh, const Grid& grid, int cell, const Side& side,
             std::vector<std::vector<int>>& cellFaces) {
    const auto [i, j, k] = grid.place(cell);
    std::vector<int> nodes;
    for (const auto& corner : side.corners)
        nodes.push_back(grid.point(i + corner[0], j + corner[1], k + corner[2]));
    const int face = mesh.faceCount();
    mesh.faceNodes.append(nodes);
    mesh.owner.push_back(cell);
    cellFaces[cell].push_back(face);
    const Vec3 out{1.0 * side.step[0], 1.0 * side.step[1], 1.0 * side.step[2]};
    mesh.faceArea.push_back(out);
    mesh.faceCentre.push_back(mesh.cellCentre[cell] + 0.5 * out);
}

void addCells(FvMesh& mesh, const Grid& grid) {
    const std::array<std::array<int, 3>, 8> corners{
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
    for (int c = 0; c < grid.cells(); ++c) {
        const auto [i, j, k] = grid.place(c);
        std::vector<int> nodes;
        for (const auto& corner : corners)
            nodes.push_back(grid.point(i + corner[0], j + corner[1], k + corner[2]));
        mesh.cellNodes.append(nodes);
        mesh.cellCentre.push_back({i + 0.5, j + 0.5, k + 0.5});
        mesh.cellVolume.push_back(1.0);
    }
}

}  // namespace

FvMesh boxMesh(int nx, int ny, int nz) {
    const Grid grid{nx, ny, nz};
    FvMesh mesh;
    for (int k = 0; k <= nz; ++k)
        for (int j = 0; j <= ny; ++j)
            for (int i = 0; i <= nx; ++i) mesh.points.push_back({1.0 * i, 1.0 * j, 1.0 * k});
    addCells(mesh, grid);
    std::vector<std::vector<int>> cellFaces(grid.cells());
    for (int c = 0; c < grid.cells(); ++c)
        for (const int s : {1, 3, 5}) {  // upper neighbours: x+, y+, z+, in ascending number
            const int other = grid.across(c, sides[s]);
            if (other < 0) continue;
            addFace(mesh, grid, c, sides[s], cellFaces);
            cellFaces[other].push_back(mesh.faceCount() - 1);
            mesh.neighbour.push_back(other);
            mesh.lambda.push_back(0.5);
        }
    mesh.innerFaces = mesh.faceCount();
    for (int c = 0; c < grid.cells(); ++c)
        for (const Side& side : sides)
            if (grid.across(c, side) < 0) addFace(mesh, grid, c, side, cellFaces);
    for (std::vector<int>& row : cellFaces) {
        std::sort(row.begin(), row.end());
        mesh.cellFaces.append(row);
    }
    return mesh;
}

BoundaryGroups boxGroups(const FvMesh& mesh, std::string_view letters) {
    BoundaryGroups groups;
    for (int f = mesh.innerFaces; f < mesh.faceCount(); ++f) {
        const Vec3 s = mesh.faceArea[f];
        const int side = s.x != 0.0   ? (s.x < 0.0 ? 0 : 1)
                         : s.y != 0.0 ? (s.y < 0.0 ? 2 : 3)
                                      : (s.z < 0.0 ? 4 : 5);
        groups.kinds.push_back(
            static_cast<GroupKind>(std::string_view("WIOS").find(letters[side])));
    }
    groups.fromDataSet = true;
    return groups;
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "weldline.XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::write(const std::string& file, const std::string& text) const {
    std::ofstream(path(file), std::ios::binary) << text;
    return path(file);
}

std::string TemporaryFolder::read(const std::string& file) const {
    std::ostringstream text;
    text << std::ifstream(path(file), std::ios::binary).rdbuf();
    return text.str();
}

bool TemporaryFolder::has(const std::string& file) const {
    return std::filesystem::exists(path(file));
}

}  // namespace weldline::test
