#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Rows.h"
#include "Vec3.h"

namespace weldline {

enum class CellKind : std::uint8_t { Tetrahedron, Pyramid, Wedge, Hexahedron, Polyhedron };

// Points and volume cells as a data set gives them. All numbering is 0-based.
struct CellMesh {
    std::vector<Vec3> points;
    std::vector<CellKind> kinds;  // per cell; a voxel is stored as a hexahedron

    // Per cell its nodes, each once. For the fixed shapes in VTK's order of the shape (bottom
    // polygon, then top; of a wedge either triangle may point outwards); for a polyhedron in order
    // of first appearance in its faces.
    Rows cellNodes;

    // Polygons of the polyhedra, and per cell the polygons that bound it; the row of a fixed shape
    // is empty. A polygon shared by two polyhedra may stand once or twice.
    Rows polygons;
    Rows cellPolygons;

    // Per cell its 0-based number in the data set, for messages; empty where both agree.
    std::vector<std::int64_t> fileNumbers;

    int cellCount() const { return static_cast<int>(kinds.size()); }
};

// A named part of the boundary: per face the nodes that span it, in any order and orientation.
struct Patch {
    std::string name;
    Rows faces;
};

}  // namespace weldline
