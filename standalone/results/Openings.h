#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bind/RankPart.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline {

// Faces of walls through which the melt seems to come in, and the air to go out.
struct Openings {
    std::vector<int> inlets;  // boundary faces of this rank, counted from 0, ascending
    std::vector<int> outlets;
};

// Inlets lie on cells that are reached within the first twentieth of the filling, and the flow
// leads away from them. Outlets lie where the front runs out: on cells of the last quarter, towards
// which it comes as fast as to the faster cells of the part; it is slowed down where air has to go
// aside. Both at less than 45 degrees from the normal of the face. Inlets are looked for only where
// `groups` has none on any rank, outlets likewise. `fillTime` and `directions` per cell, 0 where
// not reached. Collective.
Openings findOpenings(const RankPart& part, const FvMesh& mesh, const BoundaryGroups& groups,
                      const std::vector<float>& fillTime, const std::vector<Vec3>& directions);

// A patch made of found faces, of the whole part.
struct MadePatch {
    struct Source {
        std::string patch;
        std::int64_t faces = 0;
    };
    std::string name;
    GroupKind kind = GroupKind::Wall;
    std::int64_t faces = 0;
    Vec3 low, high;            // box of the middles of the faces
    std::vector<Source> from;  // patches that the faces were in
};

// Moves the faces out of their patches into patches of their own, on every rank the same ones, and
// lets the patterns find these. Collective.
std::vector<MadePatch> makePatches(Ranks& ranks, const FvMesh& mesh, const Openings& openings,
                                   std::vector<Patch>& patches, GroupPatterns& patterns);

}  // namespace weldline
