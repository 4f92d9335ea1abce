#pragma once

#include <utility>
#include <vector>

#include "GridMesh.h"
#include "mesh/BoundaryGroups.h"
#include "partition/MeshInterface.h"
#include "partition/SplitMesh.h"

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

// Every cell goes to any of the parts.
inline std::vector<MeshPart> cutAtRandom(const MeshPart& whole, int ranks) {
    std::vector<int> partOfCell(static_cast<std::size_t>(whole.mesh.cellCount()));
    for (unsigned c = 0; c < partOfCell.size(); ++c)
        partOfCell[c] = static_cast<int>(hashed(c, 4, 5, 6) * ranks);
    MeshSplitter splitter(whole, partOfCell, ranks);
    std::vector<MeshPart> parts;
    for (int p = 0; p < ranks; ++p) parts.push_back(splitter.part(p));
    return parts;
}

}  // namespace weldline::test
