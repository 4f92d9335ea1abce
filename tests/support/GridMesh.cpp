#include "GridMesh.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "mesh/FvMesh.h"

namespace weldline::test {

namespace {

// A cube's corner is named by its bits: 1 for x, 2 for y, 4 for z.
using Cube = std::array<int, 8>;

// Builds the block cube by cube.
class Grid {
  public:
    Grid(int nx, int ny, int nz, double jitter, unsigned seed)
        : m_nx(nx), m_ny(ny), m_nz(nz), m_seed(seed) {
        for (int k = 0; k <= nz; ++k)
            for (int j = 0; j <= ny; ++j)
                for (int i = 0; i <= nx; ++i) addPoint(i, j, k, jitter);
    }

    CellMesh allKinds() {
        for (int k = 0; k < m_nz; ++k)
            for (int j = 0; j < m_ny; ++j)
                for (int i = 0; i < m_nx; ++i) addCube(i, j, k);
        return std::move(m_mesh);
    }

    CellMesh hexahedra() {
        for (int k = 0; k < m_nz; ++k)
            for (int j = 0; j < m_ny; ++j)
                for (int i = 0; i < m_nx; ++i) addHexahedron(cube(i, j, k));
        return std::move(m_mesh);
    }

  private:
    void addPoint(int i, int j, int k, double jitter) {
        const auto move = [&](int place, int count, unsigned axis) {
            if (place == 0 || place == count) return 1.0 * place;
            const auto point = static_cast<unsigned>(m_mesh.points.size());
            return place + jitter * (2.0 * hashed(point, axis, 7, m_seed) - 1.0);
        };
        const Vec3 point{move(i, m_nx, 0), move(j, m_ny, 1), move(k, m_nz, 2)};
        m_mesh.points.push_back(point);
    }

    Cube cube(int i, int j, int k) const {
        Cube corners{};
        for (int c = 0; c < 8; ++c)
            corners[static_cast<std::size_t>(c)] =
                (i + c % 2) + (m_nx + 1) * ((j + c / 2 % 2) + (m_ny + 1) * (k + c / 4));
        return corners;
    }

    void addCube(int i, int j, int k) {
        const Cube c = cube(i, j, k);
        if (i == m_nx - 1) return addTetrahedra(c);
        if (i == m_nx - 2) return addPolyhedron(c, {{1, 3, 7}, {1, 7, 5}});
        const auto place = [](int n) { return static_cast<unsigned>(n); };
        if (hashed(place(i), place(j), 999, m_seed) < 0.3) return addWedges(c);
        const double kind = hashed(place(i), place(j), place(k), m_seed);
        if (kind < 0.4) return addHexahedron(c);
        if (kind < 0.7) return addPyramids(c);
        addPolyhedron(c, {{1, 3, 7, 5}});
    }

    void addShape(CellKind kind, const std::vector<int>& nodes) {
        m_mesh.kinds.push_back(kind);
        m_mesh.cellNodes.append(nodes);
        m_mesh.cellPolygons.append({});
    }

    void addHexahedron(const Cube& c) {
        addShape(CellKind::Hexahedron, {c[0], c[1], c[3], c[2], c[4], c[5], c[7], c[6]});
    }

    void addWedges(const Cube& c) {
        addShape(CellKind::Wedge, {c[0], c[3], c[1], c[4], c[7], c[5]});
        addShape(CellKind::Wedge, {c[0], c[2], c[3], c[4], c[6], c[7]});
    }

    void addTetrahedra(const Cube& c) {
        constexpr std::array<std::array<std::size_t, 2>, 6> ways{
            {{1, 3}, {3, 2}, {2, 6}, {6, 4}, {4, 5}, {5, 1}}};
        for (const auto& [a, b] : ways) addShape(CellKind::Tetrahedron, {c[0], c[a], c[b], c[7]});
    }

    void addPyramids(const Cube& c) {
        Vec3 middle;
        for (const int corner : c)
            middle = middle + 0.125 * m_mesh.points[static_cast<std::size_t>(corner)];
        const int tip = static_cast<int>(m_mesh.points.size());
        m_mesh.points.push_back(middle);
        // Each base counter-clockwise seen from the tip.
        constexpr std::array<std::array<std::size_t, 4>, 6> bases{
            {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}}};
        for (const auto& b : bases)
            addShape(CellKind::Pyramid, {c[b[0]], c[b[1]], c[b[2]], c[b[3]], tip});
    }

    // Five quadrilaterals, and what closes the side of the larger x.
    void addPolyhedron(const Cube& c, const std::vector<std::vector<std::size_t>>& last) {
        std::vector<std::vector<std::size_t>> faces{
            {0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}};
        faces.insert(faces.end(), last.begin(), last.end());
        std::vector<int> numbers;
        for (const auto& face : faces) {
            numbers.push_back(m_mesh.polygons.count());
            std::vector<int> nodes;
            for (const std::size_t corner : face) nodes.push_back(c[corner]);
            m_mesh.polygons.append(nodes);
        }
        m_mesh.kinds.push_back(CellKind::Polyhedron);
        m_mesh.cellNodes.append(std::vector<int>(c.begin(), c.end()));
        m_mesh.cellPolygons.append(numbers);
    }

    int m_nx, m_ny, m_nz;
    unsigned m_seed;
    CellMesh m_mesh;
};

}  // namespace

double hashed(unsigned a, unsigned b, unsigned c, unsigned seed) {
    std::uint64_t bits = seed;
    for (const unsigned value : {a, b, c}) {
        bits = (bits + value + 1) * 0x9e3779b97f4a7c15ULL;
        bits ^= bits >> 29U;
    }
    return static_cast<double>(bits >> 11U) / 9007199254740992.0;  // 2^53
}

CellMesh gridMesh(int nx, int ny, int nz, double jitter, unsigned seed) {
    return Grid(nx, ny, nz, jitter, seed).allKinds();
}

CellMesh hexahedraMesh(int nx, int ny, int nz) {
    return Grid(nx, ny, nz, 0.0, 0).hexahedra();
}

MeshPart wholePart(CellMesh mesh) {
    MeshPart whole;
    const FvMesh fv = buildFvMesh(mesh);
    for (int c = 0; c < mesh.cellCount(); ++c) whole.cellNumber.push_back(c);
    for (int n = 0; n < fv.pointCount(); ++n) whole.nodeNumber.push_back(n);
    double width = 0.0;
    for (const Vec3& point : mesh.points) width = std::max(width, point.x);
    whole.patches = {{"gate", {}}, {"vent", {}}, {"symmetry", {}}};
    for (int f = fv.innerFaces; f < fv.faceCount(); ++f) {
        const Vec3 centre = fv.faceCentre[static_cast<std::size_t>(f)];
        if (centre.x == 0.0) whole.patches[0].faces.append(fv.faceNodes[f]);
        if (centre.x == width) whole.patches[1].faces.append(fv.faceNodes[f]);
        if (centre.y == 0.0) whole.patches[2].faces.append(fv.faceNodes[f]);
    }
    whole.mesh = std::move(mesh);
    return whole;
}

std::vector<float> meetingStreams(const CellMesh& mesh) {
    double width = 0.0;
    for (const Vec3& point : mesh.points) width = std::max(width, point.x);
    std::vector<float> times;
    for (int c = 0; c < mesh.cellCount(); ++c) {
        Vec3 middle;
        const std::span<const int> nodes = mesh.cellNodes[c];
        for (const int node : nodes)
            middle = middle + (1.0 / static_cast<double>(nodes.size())) *
                                  mesh.points[static_cast<std::size_t>(node)];
        const double left = std::hypot(middle.x + 1.0, middle.y, 0.3 * middle.z);
        const double right = std::hypot(width + 1.0 - middle.x, middle.y, 0.3 * middle.z);
        const bool trapped = std::abs(left - right) < 0.6 && hashed(1, 2, c, 5) < 0.1;
        times.push_back(trapped ? 0.0F : static_cast<float>(std::min(left, right)));
    }
    return times;
}

}  // namespace weldline::test
