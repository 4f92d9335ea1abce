#pragma once

#include <string>
#include <vector>

#include "WeldLines.h"
#include "comm/Ranks.h"
#include "mesh/BoundaryGroups.h"

namespace weldline {

// Where the inlet, outlet and symmetry patches of a part are.
struct PatchPlaces {
    std::vector<std::string> names;
    std::vector<int> patchOfFace;   // 0-based, in `names`
    std::vector<Vec3> faceCentres;  // mean of the corners
};

// Those of the whole part; walls are left out. `patches` are those of this rank, the same names on
// all. Collective.
PatchPlaces findPatchPlaces(Ranks& ranks, const FvMesh& mesh, const std::vector<Patch>& patches,
                            const BoundaryGroups& groups);

// Adds to each line the patch of the face that is nearest to its centroid; of equally near ones the
// first.
void addNearestPatches(const PatchPlaces& places, WeldLines& lines);

}  // namespace weldline
