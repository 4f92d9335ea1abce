#pragma once

#include <vector>

#include "MeshPart.h"
#include "NodeSharing.h"
#include "comm/HaloLinks.h"
#include "comm/Messages.h"
#include "comm/Ranks.h"
#include "mesh/FvMesh.h"

namespace weldline {

// A cell of another rank that shares a face with a cell of this one.
struct HaloCell {
    int rank = 0;
    std::int64_t number = 0;  // in the whole mesh
    Vec3 centre;
    double volume = 0.0;
};

// Where the part of a mesh that this rank holds meets the parts of other ranks.
struct MeshInterface {
    std::vector<HaloCell> halo;   // each cell once; by rank, then by number
    std::vector<int> haloOfFace;  // per interface face of the mesh the cell across, in `halo`
    std::vector<double> lambda;   // per interface face the interpolation weight of that cell
    HaloLinks links;  // of the library's cell slots: own cells, boundary faces, halo cells
    std::vector<SharedNodes> sharedNodes;  // by rank
};

// Joins the parts of a mesh. `mesh` is what buildFvMesh makes of this rank's cells. Its boundary
// faces behind which lie cells of other ranks become interface faces and move to the end of the
// face table. Both ranks of such a face hold the same centre and exactly opposite area vectors,
// each pointing out of its own cell: they come from the cell with the lower number. All centres,
// areas and volumes are, to the last bit, those of the uncut mesh.
//
// Throws InputError on all ranks when more than two cells have a face, or when the two cells of an
// interface face lie on the same side of it. Collective.
MeshInterface joinParts(Ranks& ranks, const MeshPart& part, FvMesh& mesh);

// The values of the halo cells, out of one value per own cell. Collective.
template <class Value>
std::vector<Value> haloValues(Ranks& ranks, const MeshInterface& interface,
                              const std::vector<Value>& values) {
    std::vector<std::vector<Value>> toRanks(static_cast<std::size_t>(ranks.size()));
    for (const HaloLinks::Link& link : interface.links.links)
        for (const int slot : link.sendSlots)
            toRanks[static_cast<std::size_t>(link.rank)].push_back(
                values[static_cast<std::size_t>(slot) - 1]);
    std::vector<Value> halo;
    for (const std::vector<Value>& list : exchangeValues(ranks, toRanks))
        halo.insert(halo.end(), list.begin(), list.end());
    return halo;
}

}  // namespace weldline
