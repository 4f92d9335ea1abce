#pragma once

#include <array>
#include <vector>

#include "results/Skin.h"

namespace weldline {

// Directions in which the skin of a part is lit, per corner of each of its triangles; unit length,
// 0 where a triangle has no area. The normal of a corner is the mean, weighted by area, over the
// triangles around its point that do not bend sharply from its own triangle: so a round hole looks
// round and an edge stays an edge.
std::vector<std::array<Vec3, 3>> cornerNormals(const Skin& skin);

}  // namespace weldline
