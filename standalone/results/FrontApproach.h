#pragma once

#include <vector>

#include "bind/RankPart.h"
#include "mesh/FvMesh.h"

namespace weldline {

// How the front came to each cell: straight from the earliest of the cells that are up to three
// steps through faces away. That is long enough to look past the cells at a wall, where melt lags
// behind in all directions, and short enough not to look round corners.
struct FrontApproach {
    std::vector<Vec3> direction;  // of unit length; zero where there is no earlier cell
    std::vector<float> slowness;  // time per length on the way; 0 where there is none
};

// `fillTime` per cell, 0 where not reached. Of cells that were reached at the same time the one
// with the smallest x counts, then y, then z: the same on any number of ranks. Collective.
FrontApproach frontApproach(const RankPart& part, const FvMesh& mesh,
                            const std::vector<float>& fillTime);

// Of the values above 0 on all ranks the largest that no more than a quarter of them lies below; 0
// without any. Collective.
float lowerQuartile(Ranks& ranks, const std::vector<float>& values);

}  // namespace weldline
