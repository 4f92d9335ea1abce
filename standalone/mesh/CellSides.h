#pragma once

#include <array>
#include <span>
#include <vector>

#include "CellMesh.h"
#include "CellShapes.h"

namespace weldline {

// A side is a face as one of its cells sees it: an inner face has two sides, a boundary face one.
// Sides are numbered cell by cell, 0-based; within a cell in the order of the shape's table or of
// the polyhedron's polygons.
class CellSides {
  public:
    using Corners = std::array<int, 4>;

    // Throws InputError when a cell or polygon is malformed: numbers out of range, a node twice,
    // too few nodes or faces.
    explicit CellSides(const CellMesh& mesh);

    int count() const { return static_cast<int>(cell_.size()); }
    int first(int cell) const { return first_[static_cast<std::size_t>(cell)]; }
    int end(int cell) const { return first_[static_cast<std::size_t>(cell) + 1]; }
    int cell(int side) const { return cell_[static_cast<std::size_t>(side)]; }

    // Corners of a side as the data set gives them. Sides of fixed shapes point out of a cell in
    // the shape's standard order. The result may lie in `space`.
    std::span<const int> polygon(int side, Corners& space) const {
        return polygonOf(cell(side), side, space);
    }

    // The same where the side's cell is known.
    std::span<const int> polygonOf(int cell, int side, Corners& space) const {
        const auto local = static_cast<std::size_t>(side - first(cell));
        if (isPolyhedron(mesh_, cell)) {
            return mesh_.polygons[mesh_.cellPolygons[cell][local]];
        }
        const std::span<const int> nodes = mesh_.cellNodes[cell];
        const ShapeSide& shape = shapeOf(mesh_, cell).sides[local];
        // On purpose: always four, so that nothing depends on the size.
        for (std::size_t i = 0; i < space.size(); ++i) {
            space[i] = nodes[static_cast<std::size_t>(shape.corners[i])];
        }
        return {space.data(), shape.size};
    }

    // Calls visit(side, corners) for each side of a cell.
    template <class Visit>
    void visit(int cell, Visit visit) const {
        if (isPolyhedron(mesh_, cell)) {
            int side = first(cell);
            for (const int polygon : mesh_.cellPolygons[cell]) {
                visit(side++, mesh_.polygons[polygon]);
            }
            return;
        }
        const int* nodes = mesh_.cellNodes[cell].data();
        int side = first(cell);
        for (const ShapeSide& shape : shapeOf(mesh_, cell).sides) {
            const Corners corners{nodes[shape.corners[0]], nodes[shape.corners[1]],
                                  nodes[shape.corners[2]], nodes[shape.corners[3]]};
            visit(side++, std::span<const int>(corners.data(), shape.size));
        }
    }

  private:
    const CellMesh& mesh_;  // borrowed
    std::vector<int> first_;
    std::vector<int> cell_;
};

// "cell 17", 0-based as in the data set.
std::string cellName(const CellMesh& mesh, int cell);
std::string cellName(std::int64_t fileNumber);

}  // namespace weldline
