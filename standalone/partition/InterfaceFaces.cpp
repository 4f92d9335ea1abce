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

// Puts the last values in the order of the old places that are given.
template <class Value>
void reorderTail(std::vector<Value>& values, const std::vector<int>& order) {
    std::vector<Value> tail;
    tail.reserve(order.size());
    for (const int from : order) tail.push_back(values[at(from)]);
    std::copy(tail.begin(), tail.end(), values.end() - static_cast<std::ptrdiff_t>(tail.size()));
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

// Matched faces are boundary faces, which stand behind all inner faces: those stay where they are.
void moveToEnd(FvMesh& mesh, std::vector<FaceMatch>& matches) {
    const int inner = mesh.innerFaces;
    const int boundary = mesh.faceCount() - inner;
    std::vector<int> newNumber(at(boundary), 0);  // per boundary face
    for (const FaceMatch& match : matches) newNumber[at(match.face - inner)] = -1;
    std::vector<int> order;  // old numbers in the new order
    order.reserve(at(boundary));
    for (int f = 0; f < boundary; ++f)
        if (newNumber[at(f)] == 0) order.push_back(inner + f);
    for (FaceMatch& match : matches) {
        order.push_back(match.face);
        match.face = inner + static_cast<int>(order.size()) - 1;
    }
    mesh.interfaceFaces = static_cast<int>(matches.size());

    reorderTail(mesh.owner, order);
    reorderTail(mesh.faceCentre, order);
    reorderTail(mesh.faceArea, order);
    Rows nodes;
    for (const int from : order) nodes.append(mesh.faceNodes[from]);
    mesh.faceNodes.truncate(at(inner));
    for (int f = 0; f < boundary; ++f) {
        mesh.faceNodes.append(nodes[f]);
        newNumber[at(order[at(f)] - inner)] = inner + f;
    }
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const auto begin = mesh.cellFaces.entries.begin() + mesh.cellFaces.offsets[at(c)];
        const auto end = mesh.cellFaces.entries.begin() + mesh.cellFaces.offsets[at(c) + 1];
        const auto tail = std::lower_bound(begin, end, inner);
        for (auto face = tail; face != end; ++face) *face = newNumber[at(*face - inner)];
        std::sort(tail, end);
    }
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
