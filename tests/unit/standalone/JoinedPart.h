#pragma once

#include "mesh/BoundaryGroups.h"
#include "partition/MeshInterface.h"

namespace weldline::test {

// The part of a rank, joined with those of the others; making it is collective.
struct JoinedPart {
    MeshPart part;
    FvMesh mesh;
    MeshInterface interface;
    BoundaryGroups groups;

    JoinedPart(Ranks& ranks, MeshPart own)
        : part(std::move(own)),
          mesh(buildFvMesh(part.mesh)),
          interface(joinParts(ranks, part, mesh)),
          groups(groupBoundaryFaces(mesh, part.patches, {})) {}
};

}  // namespace weldline::test
