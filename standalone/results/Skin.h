#pragma once

#include <array>
#include <vector>

#include "mesh/FvMesh.h"

namespace weldline {

// Where the skin bends by more than 30 degrees, it has an edge.
inline constexpr double kCosOfBend = 0.8660254037844387;

// The outside of a part as triangles, for pictures. 0-based.
struct Skin {
    std::vector<Vec3> points;
    std::vector<std::array<int, 3>> triangles;  // oriented outwards
    std::vector<bool> isReached;                // per triangle: whether the melt came there
    std::vector<float> time;                // per point: mean fill time of the reached cells that
                                            // have it on a boundary face; -1 without any
    std::vector<std::array<int, 2>> edges;  // where the skin bends sharply
};

// The boundary faces of a mesh; polygons are split into triangles at their first corner. `fillTime`
// has one value per cell (exactly 0 where the melt did not come).
Skin skinOf(const FvMesh& mesh, const std::vector<float>& fillTime);

}  // namespace weldline
