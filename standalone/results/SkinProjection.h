#pragma once

#include <vector>

#include "LineMesh.h"

namespace weldline {

// The point of a triangle that is nearest to `x`.
Vec3 nearestOnTriangle(Vec3 x, Vec3 a, Vec3 b, Vec3 c);

// Puts points onto the skin of a part.
class SkinProjection {
  public:
    explicit SkinProjection(const LineMesh& mesh);  // borrowed

    // The point nearest to `x` of the skin polygons around some points of the mesh, each polygon
    // split into triangles at the mean of its corners; `x` where there is none.
    Vec3 onSkin(Vec3 x, const std::vector<int>& around) const;

  private:
    Vec3 nearestOnPolygon(Vec3 x, int polygon) const;

    const LineMesh& m_mesh;
    std::vector<std::vector<int>> m_polygons;  // per point of the mesh
};

}  // namespace weldline
