#include "InterfaceFaces.h"

#include <algorithm>
#include <tuple>

#include "comm/Agreement.h"
#include "comm/Packing.h"
#include "mesh/CellGeometry.h"
#include "mesh/CellSides.h"
#include "mesh/MeshFaults.h"

namespace weldline {

namespace {

std::int64_t ownCell(const MeshPart& part, const FvMesh& mesh, const FaceMatch& match) {
    return part.cellNumber[at(mesh.owner[at(match.face)])];
}

// Numbers, in the whole mesh, of the corners of a face.
std::vector<std::int64_t> cornersOf(const MeshPart& part, const FvMesh& mesh, int face) {
    std::vector<std::int64_t> corners;
    for (const int node : mesh.faceNodes[face]) corners.push_back(part.nodeNumber[at(node)]);
    return corners;
}

// Both polygons name the same nodes; true when they run around them in opposite directions.
bool areOpposite(const std::vector<std::int64_t>& a, const std::vector<std::int64_t>& b) {
    const auto start = std::find(b.begin(), b.end(), a.front()) - b.begin();
    const std::size_t n = b.size();
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[(static_cast<std::size_t>(start) + n - i) % n]) return false;
    return true;
}

}  // namespace

void orderMatches(const MeshPart& part, const FvMesh& mesh, std::vector<FaceMatch>& matches) {
    const auto rank = [&](const FaceMatch& match) {
        const std::int64_t own = ownCell(part, mesh, match);
        const int lowerFace = own < match.otherCell ? match.face : match.otherFace;
        return std::tuple{own, match.otherCell, lowerFace};
    };
    std::sort(matches.begin(), matches.end(),
              [&](const FaceMatch& a, const FaceMatch& b) { return rank(a) < rank(b); });
}

void alignFaces(Ranks& ranks, const MeshPart& part, FvMesh& mesh,
                const std::vector<FaceMatch>& matches) {
    std::vector<Packer> packers(at(ranks.size()));
    for (const FaceMatch& match : matches) {
        const std::int64_t own = ownCell(part, mesh, match);
        if (own > match.otherCell) continue;
        packers[at(match.otherRank)]
            .put(match.otherFace)
            .put(part.fileNumber(mesh.owner[at(match.face)]))
            .put(cornersOf(part, mesh, match.face))
            .put(mesh.faceCentre[at(match.face)])
            .put(mesh.faceArea[at(match.face)]);
    }
    std::vector<Bytes> messages;
    messages.reserve(packers.size());
    for (Packer& packer : packers) messages.push_back(packer.take());
    messages = ranks.exchange(std::move(messages));
    together(ranks, [&] {
        for (const Bytes& message : messages) {
            Unpacker unpacker(message);
            while (!unpacker.atEnd()) {
                const int face = unpacker.get<int>();
                const auto lower = unpacker.get<std::int64_t>();
                std::vector<std::int64_t> corners;
                unpacker.get(corners);
                unpacker.get(mesh.faceCentre[at(face)]);
                mesh.faceArea[at(face)] = -1.0 * unpacker.get<Vec3>();
                if (!areOpposite(corners, cornersOf(part, mesh, face)))
                    failOnSameSide(cellName(lower),
                                   cellName(part.fileNumber(mesh.owner[at(face)])));
            }
        }
    });
}

void moveToEnd(FvMesh& mesh, std::vector<FaceMatch>& matches) {
    const int faces = mesh.faceCount();
    std::vector<int> newNumber(at(faces), 0);
    for (const FaceMatch& match : matches) newNumber[at(match.face)] = -1;
    std::vector<int> order;  // old numbers in the new order
    order.reserve(at(faces));
    for (int f = 0; f < faces; ++f)
        if (newNumber[at(f)] == 0) order.push_back(f);
    for (FaceMatch& match : matches) {
        order.push_back(match.face);
        match.face = static_cast<int>(order.size()) - 1;
    }
    mesh.interfaceFaces = static_cast<int>(matches.size());

    FvMesh old;
    std::swap(old.owner, mesh.owner);
    std::swap(old.faceNodes, mesh.faceNodes);
    std::swap(old.faceCentre, mesh.faceCentre);
    std::swap(old.faceArea, mesh.faceArea);
    for (int f = 0; f < faces; ++f) {
        const int from = order[at(f)];
        newNumber[at(from)] = f;
        mesh.owner.push_back(old.owner[at(from)]);
        mesh.faceNodes.append(old.faceNodes[from]);
        mesh.faceCentre.push_back(old.faceCentre[at(from)]);
        mesh.faceArea.push_back(old.faceArea[at(from)]);
    }
    for (int& face : mesh.cellFaces.entries) face = newNumber[at(face)];
    for (int c = 0; c < mesh.cellCount(); ++c)
        std::sort(mesh.cellFaces.entries.begin() + mesh.cellFaces.offsets[at(c)],
                  mesh.cellFaces.entries.begin() + mesh.cellFaces.offsets[at(c) + 1]);
}

void recomputeCells(const MeshPart& part, FvMesh& mesh, const std::vector<FaceMatch>& matches) {
    const int firstInterface = mesh.firstInterfaceFace();
    const auto across = [&](int cell, int face) {
        if (face >= firstInterface) return matches[at(face - firstInterface)].otherCell;
        const bool isOwner = mesh.owner[at(face)] == cell;
        return part.cellNumber[at(isOwner ? mesh.neighbour[at(face)] : mesh.owner[at(face)])];
    };
    std::vector<std::pair<std::int64_t, int>> inside;
    std::vector<int> faces;
    int last = -1;
    for (const FaceMatch& match : matches) {  // ascending by own cell
        const int cell = mesh.owner[at(match.face)];
        if (cell == last) continue;
        last = cell;
        inside.clear();
        faces.clear();
        for (const int face : mesh.cellFaces[cell])
            if (face < mesh.innerFaces || face >= firstInterface)
                inside.emplace_back(across(cell, face), face);
        std::stable_sort(inside.begin(), inside.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        for (const auto& [other, face] : inside) faces.push_back(face);
        for (const int face : mesh.cellFaces[cell])
            if (face >= mesh.innerFaces && face < firstInterface) faces.push_back(face);
        const CellGeometry geometry = cellGeometry(mesh, cell, faces);
        mesh.cellCentre[at(cell)] = geometry.centre;
        mesh.cellVolume[at(cell)] = geometry.volume;
    }
}

}  // namespace weldline
