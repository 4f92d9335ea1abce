#pragma once

#include <vector>

#include "BoundaryGroups.h"
#include "FvMesh.h"

namespace weldline {

// Number of cells on the straight way from the middle of a wall face, at right angles to it, to the
// other side of the part; for every wall face, or for every n-th of very many. In a cell the way
// leaves through the face whose plane it meets first, as it does in convex cells.
std::vector<int> layersBehindWalls(const FvMesh& mesh, const BoundaryGroups& groups);

}  // namespace weldline
