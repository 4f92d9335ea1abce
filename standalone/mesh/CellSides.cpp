#include "CellSides.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/Errors.h"

namespace weldline {
namespace {

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
    cell_.resize(static_cast<std::size_t>(sides));
    for (int c = 0; c < cells; ++c) {
        std::fill(cell_.begin() + first(c), cell_.begin() + end(c), c);
    }
}

std::string cellName(const CellMesh& mesh, int cell) {
    const auto c = static_cast<std::size_t>(cell);
    return cellName(mesh.fileNumbers.empty() ? std::int64_t{cell} : mesh.fileNumbers[c]);
}

std::string cellName(std::int64_t fileNumber) {
    return "cell " + std::to_string(fileNumber);
}

}  // namespace weldline
