#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "CellMesh.h"

namespace weldline {

struct ShapeSide {
    std::size_t size;
    std::array<int, 4> corners;
};

struct Shape {
    const char* name;
    std::size_t nodes;
    std::span<const ShapeSide> sides;
};

namespace shapes {

// Sides of the fixed shapes, corners counter-clockwise seen from outside.
inline constexpr ShapeSide tetrahedronSides[] = {
    {3, {0, 2, 1}}, {3, {0, 1, 3}}, {3, {1, 2, 3}}, {3, {2, 0, 3}}};
inline constexpr ShapeSide pyramidSides[] = {
    {4, {0, 3, 2, 1}}, {3, {0, 1, 4}}, {3, {1, 2, 4}}, {3, {2, 3, 4}}, {3, {3, 0, 4}}};
// The first triangle points away from the second one, unlike the bottom of the other shapes.
inline constexpr ShapeSide wedgeSides[] = {
    {3, {0, 1, 2}}, {3, {3, 5, 4}}, {4, {0, 3, 4, 1}}, {4, {1, 4, 5, 2}}, {4, {2, 5, 3, 0}}};
inline constexpr ShapeSide hexahedronSides[] = {{4, {0, 3, 2, 1}}, {4, {4, 5, 6, 7}},
                                                {4, {0, 1, 5, 4}}, {4, {1, 2, 6, 5}},
                                                {4, {2, 3, 7, 6}}, {4, {3, 0, 4, 7}}};

// By CellKind; the polyhedron has no table.
inline constexpr std::array<Shape, 5> all{{{"tetrahedron", 4, tetrahedronSides},
                                           {"pyramid", 5, pyramidSides},
                                           {"wedge", 6, wedgeSides},
                                           {"hexahedron", 8, hexahedronSides},
                                           {"polyhedron", 0, {}}}};

}  // namespace shapes

inline const Shape& shapeOf(const CellMesh& mesh, int cell) {
    return shapes::all[static_cast<std::size_t>(mesh.kinds[static_cast<std::size_t>(cell)])];
}

inline bool isPolyhedron(const CellMesh& mesh, int cell) {
    return mesh.kinds[static_cast<std::size_t>(cell)] == CellKind::Polyhedron;
}

}  // namespace weldline
