#pragma once

#include <vector>

#include "mesh/FvMesh.h"

namespace weldline {

// Flow direction per cell: the unit vector of the fill-time gradient, which points along the flow;
// the zero vector where the melt did not come, where it is unknown (no reached neighbour) and where
// the gradient vanishes. Gradient by Green-Gauss over the cell's faces, formed with differences
// from the cell's own fill time: sum of (face value - own value) * area vector. The face value is
// interpolated linearly between reached cells; at boundary faces and towards unreached cells it is
// the own value, which adds nothing.
// `fillTime` has one value per cell (exactly 0 where the melt did not come).
std::vector<Vec3> flowDirections(const FvMesh& mesh, const std::vector<float>& fillTime);

}  // namespace weldline
