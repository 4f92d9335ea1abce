#pragma once

#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::fuzz {

// What buildFvMesh promises of every mesh that it gives; ends the process where it does not hold.
void checkMesh(const FvMesh& mesh);

// What groupBoundaryFaces promises.
void checkGroups(const FvMesh& mesh, const BoundaryGroups& groups);

}  // namespace weldline::fuzz
