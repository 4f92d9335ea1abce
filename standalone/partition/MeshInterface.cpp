#include "MeshInterface.h"

#include <algorithm>
#include <map>
#include <set>

#include "InterfaceFaces.h"
#include "mesh/CellGeometry.h"

namespace weldline {

namespace {

void listHalo(const FvMesh& mesh, const std::vector<FaceMatch>& matches, MeshInterface& result) {
    std::map<std::pair<int, std::int64_t>, int> cells;  // rank and number, then the place in `halo`
    for (const FaceMatch& match : matches) cells[{match.otherRank, match.otherCell}] = 0;
    for (auto& [cell, place] : cells) {
        place = static_cast<int>(result.halo.size());
        result.halo.push_back({cell.first, cell.second, {}, 0.0});
    }
    for (const FaceMatch& match : matches)
        result.haloOfFace.push_back(cells.at({match.otherRank, match.otherCell}));

    // Own cells ascend by their numbers, so both ends of a link list its cells in the same order.
    std::map<int, std::set<int>> sent;
    for (const FaceMatch& match : matches)
        sent[match.otherRank].insert(mesh.owner[at(match.face)] + 1);
    for (const auto& [rank, slots] : sent)
        result.links.links.push_back({rank, {slots.begin(), slots.end()}, {}});
    auto link = result.links.links.begin();
    int slot = mesh.cellCount() + mesh.boundaryFaces();
    for (const HaloCell& cell : result.halo) {
        while (link->rank != cell.rank) ++link;
        link->receiveSlots.push_back(++slot);
    }
}

void fetchHaloCells(Ranks& ranks, const FvMesh& mesh, MeshInterface& result) {
    const std::vector<Vec3> centres = haloValues(ranks, result, mesh.cellCentre);
    const std::vector<double> volumes = haloValues(ranks, result, mesh.cellVolume);
    for (std::size_t h = 0; h < result.halo.size(); ++h) {
        result.halo[h].centre = centres[h];
        result.halo[h].volume = volumes[h];
    }
}

}  // namespace

MeshInterface joinParts(Ranks& ranks, const MeshPart& part, FvMesh& mesh) {
    MeshInterface result;
    if (ranks.size() == 1) return result;
    result.sharedNodes = findSharedNodes(ranks, part.nodeNumber);
    std::vector<FaceMatch> matches = matchFaces(ranks, part, mesh, result.sharedNodes);
    orderMatches(part, mesh, matches);
    alignFaces(ranks, part, mesh, matches);
    moveToEnd(mesh, matches);
    recomputeCells(part, mesh, matches);
    listHalo(mesh, matches, result);
    fetchHaloCells(ranks, mesh, result);
    for (int i = 0; i < mesh.interfaceFaces; ++i) {
        const std::size_t face = at(mesh.firstInterfaceFace() + i);
        const HaloCell& other = result.halo[at(result.haloOfFace[at(i)])];
        result.lambda.push_back(weightOfNeighbour(mesh.faceCentre[face], mesh.faceArea[face],
                                                  mesh.cellCentre[at(mesh.owner[face])],
                                                  other.centre));
    }
    return result;
}

}  // namespace weldline
