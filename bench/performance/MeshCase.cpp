#include "MeshCase.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <random>

namespace weldline::performance {

namespace {

constexpr double kSide = 1e-3;
constexpr double kFrontSpeed = 0.05;  // m/s
constexpr unsigned kSeed = 20240229;  // any; the same order in every run

// Corners of a cube in the order of a hexahedron; bit 0 x, bit 1 y, bit 2 z.
constexpr std::array<int, 8> kCubeCorners{0, 1, 3, 2, 4, 5, 7, 6};

// Six tetrahedra around the diagonal from corner 0 to corner 7, the same in every cube, so that
// neighbouring cubes agree on the diagonals of their common face.
constexpr std::array<std::array<int, 4>, 6> kCubeTetrahedra{
    {{0, 1, 3, 7}, {0, 3, 2, 7}, {0, 2, 6, 7}, {0, 6, 4, 7}, {0, 4, 5, 7}, {0, 5, 1, 7}}};

class Box {
  public:
    explicit Box(int edge) : m_edge(edge) {}

    int cubes() const { return m_edge * m_edge * m_edge; }

    std::vector<Vec3> points() const {
        std::vector<Vec3> points;
        for (int k = 0; k <= m_edge; ++k)
            for (int j = 0; j <= m_edge; ++j)
                for (int i = 0; i <= m_edge; ++i)
                    points.push_back({i * kSide, j * kSide, k * kSide});
        return points;
    }

    int corner(int cube, int bits) const {
        const int i = cube % m_edge + (bits & 1);
        const int j = cube / m_edge % m_edge + (bits >> 1 & 1);
        const int k = cube / m_edge / m_edge + (bits >> 2 & 1);
        return (k * (m_edge + 1) + j) * (m_edge + 1) + i;
    }

  private:
    int m_edge;
};

std::vector<int> order(int count, bool shuffled) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    if (shuffled) std::shuffle(numbers.begin(), numbers.end(), std::mt19937(kSeed));
    return numbers;
}

double distance(Vec3 a, Vec3 b) {
    return norm(a - b);
}

}  // namespace

CellMesh boxCells(const MeshChoice& choice) {
    const Box box(choice.edge);
    CellMesh mesh;
    mesh.points = box.points();
    const bool cut = choice.shape == Shape::Tetrahedra;
    const int perCube = cut ? static_cast<int>(kCubeTetrahedra.size()) : 1;
    for (const int number : order(box.cubes() * perCube, choice.shuffled)) {
        const int cube = number / perCube;
        std::vector<int> nodes;
        for (const int bits : cut ? std::span<const int>(kCubeTetrahedra[number % perCube])
                                  : std::span<const int>(kCubeCorners))
            nodes.push_back(box.corner(cube, bits));
        mesh.kinds.push_back(cut ? CellKind::Tetrahedron : CellKind::Hexahedron);
        mesh.cellNodes.append(nodes);
        mesh.cellPolygons.append({});
    }
    return mesh;
}

void shuffleInnerFaces(FvMesh& mesh) {
    FvMesh from = mesh;
    const std::vector<int> source = order(mesh.innerFaces, true);
    std::vector<int> placeOf(static_cast<std::size_t>(mesh.faceCount()));
    std::iota(placeOf.begin(), placeOf.end(), 0);
    mesh.faceNodes = {};
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const int s = source[f];
        placeOf[s] = f;
        mesh.owner[f] = from.owner[s];
        mesh.neighbour[f] = from.neighbour[s];
        mesh.faceCentre[f] = from.faceCentre[s];
        mesh.faceArea[f] = from.faceArea[s];
        mesh.lambda[f] = from.lambda[s];
        mesh.faceNodes.append(from.faceNodes[s]);
    }
    for (int f = mesh.innerFaces; f < mesh.faceCount(); ++f)
        mesh.faceNodes.append(from.faceNodes[f]);
    for (int& face : mesh.cellFaces.entries) face = placeOf[face];
    for (int c = 0; c < mesh.cellCount(); ++c)
        std::sort(mesh.cellFaces.entries.begin() + mesh.cellFaces.offsets[c],
                  mesh.cellFaces.entries.begin() + mesh.cellFaces.offsets[c + 1]);
}

Filling fill(const FvMesh& mesh, int edge) {
    const double length = edge * kSide;
    const std::array<Vec3, 2> gates{
        {{0.2 * length, 0.5 * length, 0.0}, {0.8 * length, 0.45 * length, 0.0}}};
    const Vec3 pocket{0.5 * length, 0.5 * length, length};
    Filling filling;
    filling.groups.kinds.assign(static_cast<std::size_t>(mesh.boundaryFaces()), GroupKind::Wall);
    for (int i = 0; i < mesh.boundaryFaces(); ++i) {
        const Vec3 centre = mesh.faceCentre[mesh.innerFaces + i];
        for (const Vec3 gate : gates)
            if (distance(centre, gate) < 0.08 * length) filling.groups.kinds[i] = GroupKind::Inlet;
    }
    for (const Vec3 centre : mesh.cellCentre) {
        const double way = std::min(distance(centre, gates[0]), distance(centre, gates[1]));
        const bool isPocket = distance(centre, pocket) < 0.15 * length;
        filling.fillTime.push_back(isPocket ? 0.0F : static_cast<float>(way / kFrontSpeed));
    }
    return filling;
}

}  // namespace weldline::performance
