#pragma once

#include <cstdint>
#include <vector>

#include "MeshPart.h"
#include "NodeSharing.h"
#include "comm/Ranks.h"
#include "mesh/FvMesh.h"

namespace weldline {

// A boundary face of this rank behind which lies a cell of another rank.
struct FaceMatch {
    int face = 0;                // of this rank's mesh
    int otherRank = 0;           // never this rank
    int otherFace = 0;           // the same face as the other rank counts it
    std::int64_t otherCell = 0;  // number in the whole mesh
};

// Finds the faces that two ranks have in common, by their nodes. Only faces whose nodes all lie on
// other ranks, too, are looked up, each on a rank that its nodes name. A face that nobody else has
// is a real boundary face. Throws InputError on all ranks when cells of several ranks claim a face
// for the third time. Collective.
std::vector<FaceMatch> matchFaces(Ranks& ranks, const MeshPart& part, const FvMesh& mesh,
                                  const std::vector<SharedNodes>& shared);

}  // namespace weldline
