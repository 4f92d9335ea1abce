#pragma once

#include <vector>

#include "FrontCase.h"
#include "SolidMesh.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::accuracy {

// Edge lengths h of the meshes in mm, from coarse to fine. Every plate is three cells thick; the
// plane meshes are disturbed by 15 % of the edge length.
inline constexpr double kSizes[] = {2.0, 1.0, 0.5};
inline constexpr double kMiddleSize = kSizes[1];
inline constexpr double kFinestSize = kSizes[2];

struct CaseMesh {
    double h = 0.0;
    FvMesh mesh;
    BoundaryGroups groups;  // all wall
};

CaseMesh meshOf(const FrontCase& front, CellShape shape, double h);

// Arrival times at the cell centres. Every time is moved by up to `noise` times the time in which
// the front crosses a cell (h / speed), evenly distributed, the same for the same mesh.
std::vector<float> arrivalTimes(const FrontCase& front, const CaseMesh& mesh, double noise);

}  // namespace weldline::accuracy
