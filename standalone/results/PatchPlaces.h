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

// The boundary groups of a mesh whose inlet, outlet and symmetry faces are at these places;
// `ofPatch` has the group of each name. Every other face is wall. `lost` counts the places where
// no boundary face is.
struct PlacedGroups {
    BoundaryGroups groups;
    int lost = 0;
};
PlacedGroups groupsAt(const FvMesh& mesh, const PatchPlaces& places,
                      const std::vector<GroupKind>& ofPatch);

// Adds to each line the patch of the face that is nearest to its centroid; of equally near ones the
// first.
void addNearestPatches(const PatchPlaces& places, WeldLines& lines);

}  // namespace weldline
