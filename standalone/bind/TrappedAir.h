#pragma once

#include <cstdint>
#include <vector>

#include "RankPart.h"
#include "mesh/FvMesh.h"

namespace weldline {

// What becomes of cells that the melt did not reach; see docs/decisions/trapped-air.md.
enum class TrappedAir {
    Keep,  // they stay empty
    Close  // the melt goes on into them
};

// Gives the cells that were not reached the time at which the melt would have closed the gap:
//
//     t(c) = min over the neighbours n of c of t(n) + s |x(c) - x(n)|,
//
// over paths that begin at a reached cell, x the cell centres. The slowness s is the latest fill
// time divided by the diagonal of the box of all cell centres: the pace at which the part filled.
// Of `fillTime` (one value per cell of this rank, 0: not reached) reached cells keep their values,
// and so do cells that no path reaches. The values are, to the last bit, the same on any number of
// ranks. Returns the number of closed cells of the whole part. Collective.
std::int64_t closeTrappedAir(const RankPart& part, const FvMesh& mesh,
                             std::vector<float>& fillTime);

}  // namespace weldline
