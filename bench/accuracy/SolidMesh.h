#pragma once

#include <array>
#include <string>

#include "PlaneMesh.h"
#include "mesh/CellMesh.h"

namespace weldline::accuracy {

enum class CellShape { Hexahedra, Wedges, Tetrahedra, Polyhedra };
inline constexpr std::array<CellShape, 4> kCellShapes{CellShape::Hexahedra, CellShape::Wedges,
                                                      CellShape::Tetrahedra, CellShape::Polyhedra};
std::string nameOf(CellShape shape);

// A plate of `layers` layers, each h thick, over a plane mesh of quadrangles: these extruded, their
// halves extruded, the latter cut into three tetrahedra each, or the dual of their halves extruded
// (prisms over polygons of mostly six edges).
CellMesh plate(const PlaneMesh& quadrangles, CellShape shape, int layers, double h);

}  // namespace weldline::accuracy
