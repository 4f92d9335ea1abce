#include "CellSides.h"

#include <limits>
#include <string>

#include "base/Errors.h"

namespace weldline {
namespace {

struct ShapeSide {
    int size;
    std::array<int, 4> corners;
};

// Sides of the fixed shapes, corners counter-clockwise seen from outside.
constexpr ShapeSide tetrahedronSides[] = {
    {3, {0, 2, 1}}, {3, {0, 1, 3}}, {3, {1, 2, 3}}, {3, {2, 0, 3}}};
constexpr ShapeSide pyramidSides[] = {
    {4, {0, 3, 2, 1}}, {3, {0, 1, 4}}, {3, {1, 2, 4}}, {3, {2, 3, 4}}, {3, {3, 0, 4}}};
// The first triangle points away from the second one, unlike the bottom of the other shapes.
constexpr ShapeSide wedgeSides[] = {
    {3, {0, 1, 2}}, {3, {3, 5, 4}}, {4, {0, 3, 4, 1}}, {4, {1, 4, 5, 2}}, {4, {2, 5, 3, 0}}};
constexpr ShapeSide hexahedronSides[] = {{4, {0, 3, 2, 1}}, {4, {4, 5, 6, 7}}, {4, {0, 1, 5, 4}},
                                         {4, {1, 2, 6, 5}}, {4, {2, 3, 7, 6}}, {4, {3, 0, 4, 7}}};

struct Shape {
    const char* name;
    std::size_t nodes;
    std::span<const ShapeSide> sides;
};

// By CellKind; the polyhedron has no table.
constexpr std::array<Shape, 5> shapes{{{"tetrahedron", 4, tetrahedronSides},
                                       {"pyramid", 5, pyramidSides},
                                       {"wedge", 6, wedgeSides},
                                       {"hexahedron", 8, hexahedronSides},
                                       {"polyhedron", 0, {}}}};

const Shape& shapeOf(const CellMesh& mesh, int cell) {
    return shapes[static_cast<std::size_t>(mesh.kinds[static_cast<std::size_t>(cell)])];
}

bool isPolyhedron(const CellMesh& mesh, int cell) {
    return mesh.kinds[static_cast<std::size_t>(cell)] == CellKind::Polyhedron;
}

// Finds repetitions within a list in one pass over it, whatever the number of lists.
class SeenOnce {
  public:
    explicit SeenOnce(std::size_t values) : lastList_(values, -1) {}
    void startList() { ++list_; }
    bool add(int value) {
        std::int64_t& last = lastList_[static_cast<std::size_t>(value)];
        const bool isNew = last != list_;
        last = list_;
        return isNew;
    }

  private:
    std::vector<std::int64_t> lastList_;
    std::int64_t list_ = -1;
};

void checkNodes(const CellMesh& mesh, std::span<const int> nodes, SeenOnce& seen, int cell) {
    seen.startList();
    for (const int node : nodes) {
        if (node < 0 || node >= static_cast<int>(mesh.points.size())) {
            throw InputError(cellName(mesh, cell) + " names point " + std::to_string(node) +
                             ", but the points are 0 to " +
                             std::to_string(static_cast<long long>(mesh.points.size()) - 1));
        }
        if (!seen.add(node)) {
            throw InputError(cellName(mesh, cell) + " names point " + std::to_string(node) +
                             " twice; a collapsed cell has to be given as the shape that it is");
        }
    }
}

void checkPolyhedron(const CellMesh& mesh, SeenOnce& seen, int cell) {
    const std::span<const int> faces = mesh.cellPolygons[cell];
    if (faces.size() < 4) {
        throw InputError(cellName(mesh, cell) + " is a polyhedron with " +
                         std::to_string(faces.size()) + " faces; at least 4 are needed");
    }
    for (const int face : faces) {
        if (face < 0 || face >= mesh.polygons.count()) {
            throw InputError(cellName(mesh, cell) + " names face " + std::to_string(face) +
                             ", but there are " + std::to_string(mesh.polygons.count()));
        }
        const std::span<const int> corners = mesh.polygons[face];
        if (corners.size() < 3) {
            throw InputError(cellName(mesh, cell) + " has a face with " +
                             std::to_string(corners.size()) + " corners; at least 3 are needed");
        }
        checkNodes(mesh, corners, seen, cell);
    }
}

void checkCell(const CellMesh& mesh, SeenOnce& seen, int cell) {
    const std::span<const int> nodes = mesh.cellNodes[cell];
    const Shape& shape = shapeOf(mesh, cell);
    if (!isPolyhedron(mesh, cell) && nodes.size() != shape.nodes) {
        throw InputError(cellName(mesh, cell) + " is a " + shape.name + " with " +
                         std::to_string(nodes.size()) + " nodes; it needs " +
                         std::to_string(shape.nodes));
    }
    checkNodes(mesh, nodes, seen, cell);
    if (isPolyhedron(mesh, cell)) {
        checkPolyhedron(mesh, seen, cell);
    }
}

std::size_t sideCount(const CellMesh& mesh, int cell) {
    return isPolyhedron(mesh, cell) ? mesh.cellPolygons[cell].size()
                                    : shapeOf(mesh, cell).sides.size();
}

}  // namespace

CellSides::CellSides(const CellMesh& mesh) : mesh_(mesh) {
    const int cells = mesh.cellCount();
    SeenOnce seen(mesh.points.size());
    std::int64_t sides = 0;
    first_.reserve(static_cast<std::size_t>(cells) + 1);
    first_.push_back(0);
    for (int c = 0; c < cells; ++c) {
        checkCell(mesh, seen, c);
        sides += static_cast<std::int64_t>(sideCount(mesh, c));
        if (sides > std::numeric_limits<int>::max()) {
            throw InputError("the mesh has more cell faces than 32-bit numbers can count");
        }
        first_.push_back(static_cast<int>(sides));
    }
    cell_.reserve(static_cast<std::size_t>(sides));
    for (int c = 0; c < cells; ++c) {
        cell_.resize(static_cast<std::size_t>(end(c)), c);
    }
}

std::span<const int> CellSides::polygon(int side, Corners& space) const {
    const int c = cell(side);
    const int local = side - first(c);
    if (isPolyhedron(mesh_, c)) {
        return mesh_.polygons[mesh_.cellPolygons[c][static_cast<std::size_t>(local)]];
    }
    const std::span<const int> nodes = mesh_.cellNodes[c];
    const ShapeSide& shape = shapeOf(mesh_, c).sides[static_cast<std::size_t>(local)];
    const auto size = static_cast<std::size_t>(shape.size);
    for (std::size_t i = 0; i < size; ++i) {
        space[i] = nodes[static_cast<std::size_t>(shape.corners[i])];
    }
    return {space.data(), size};
}

std::string cellName(const CellMesh& mesh, int cell) {
    const auto c = static_cast<std::size_t>(cell);
    return cellName(mesh.fileNumbers.empty() ? std::int64_t{cell} : mesh.fileNumbers[c]);
}

std::string cellName(std::int64_t fileNumber) {
    return "cell " + std::to_string(fileNumber);
}

}  // namespace weldline
