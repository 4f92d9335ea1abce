#include "GatherResult.h"

#include <limits>

#include "base/Errors.h"
#include "comm/Agreement.h"
#include "comm/Packing.h"
#include "partition/PackMeshPart.h"

namespace weldline {
namespace {

struct PartResult {
    MeshPart part;
    ResultFields fields;
};

Bytes pack(const PartResult& result) {
    Packer packer;
    packer.put(packMeshPart(result.part));
    packer.put(result.fields.meetingAngle).put(result.fields.weldLine);
    packer.put(result.fields.fillTime).put(result.fields.flowDirection);
    return packer.take();
}

PartResult unpack(const Bytes& message) {
    Unpacker unpacker(message);
    PartResult result;
    result.part = unpackMeshPart(unpacker.get<Bytes>());
    unpacker.get(result.fields.meetingAngle);
    unpacker.get(result.fields.weldLine);
    unpacker.get(result.fields.fillTime);
    unpacker.get(result.fields.flowDirection);
    return result;
}

// Rank 0 keeps its own and gets that of the others in their turn.
std::vector<PartResult> collect(Ranks& ranks, PartResult own) {
    Bytes message = ranks.rank() == 0 ? Bytes{} : pack(own);
    std::vector<PartResult> all;
    if (ranks.rank() == 0) {
        all.push_back(std::move(own));
    } else {
        own = {};
    }
    for (int turn = 1; turn < ranks.size(); ++turn) {
        std::vector<Bytes> messages(static_cast<std::size_t>(ranks.size()));
        if (turn == ranks.rank()) {
            messages.front() = std::move(message);
            message = {};
        }
        messages = ranks.exchange(std::move(messages));
        if (ranks.rank() == 0) {
            all.push_back(unpack(messages[static_cast<std::size_t>(turn)]));
        }
    }
    return all;
}

void placePoints(const PartResult& from, MeshResult& whole) {
    for (std::size_t p = 0; p < from.part.nodeNumber.size(); ++p) {
        const auto node = static_cast<std::size_t>(from.part.nodeNumber[p]);
        whole.mesh.points[node] = from.part.mesh.points[p];
        whole.fields.meetingAngle[node] = from.fields.meetingAngle[p];
        whole.fields.weldLine[node] = from.fields.weldLine[p];
    }
}

void appendRow(const MeshPart& part, std::span<const int> nodes, Rows& rows) {
    for (const int node : nodes) {
        rows.entries.push_back(static_cast<int>(part.nodeNumber[static_cast<std::size_t>(node)]));
    }
    rows.append({});
}

void appendCell(const PartResult& from, std::size_t cell, MeshResult& whole) {
    const CellMesh& mesh = from.part.mesh;
    const auto c = static_cast<int>(cell);
    whole.mesh.kinds.push_back(mesh.kinds[cell]);
    appendRow(from.part, mesh.cellNodes[c], whole.mesh.cellNodes);
    for (const int polygon : mesh.cellPolygons[c]) {
        whole.mesh.cellPolygons.entries.push_back(whole.mesh.polygons.count());
        appendRow(from.part, mesh.polygons[polygon], whole.mesh.polygons);
    }
    whole.mesh.cellPolygons.append({});
    whole.fields.fillTime.push_back(from.fields.fillTime[cell]);
    whole.fields.flowDirection.push_back(from.fields.flowDirection[cell]);
}

// Every part has its cells in ascending order, so that each cell is the next one of its part.
MeshResult assemble(const std::vector<PartResult>& parts, std::int64_t cells, std::int64_t nodes) {
    MeshResult whole;
    const auto nodeCount = static_cast<std::size_t>(nodes);
    whole.mesh.points.resize(nodeCount);
    whole.fields.meetingAngle.resize(nodeCount);
    whole.fields.weldLine.resize(nodeCount);
    std::vector<int> partOfCell(static_cast<std::size_t>(cells));
    for (std::size_t p = 0; p < parts.size(); ++p) {
        placePoints(parts[p], whole);
        for (const std::int64_t cell : parts[p].part.cellNumber) {
            partOfCell[static_cast<std::size_t>(cell)] = static_cast<int>(p);
        }
    }
    std::vector<std::size_t> next(parts.size(), 0);
    for (const int p : partOfCell) {
        appendCell(parts[static_cast<std::size_t>(p)], next[static_cast<std::size_t>(p)]++, whole);
    }
    return whole;
}

}  // namespace

MeshResult gatherResult(Ranks& ranks, MeshPart part, ResultFields fields, std::int64_t cells,
                        std::int64_t nodes) {
    if (ranks.size() == 1) {
        return {std::move(part.mesh), std::move(fields)};
    }
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    if (cells > most || nodes > most) {
        agreeOnFailure(ranks, [] {
            throw RunError(
                "the result is larger than 32-bit cell and point numbers of one file "
                "allow; write it in pieces (-o RESULT.pvtu)");
        });
    }
    const std::vector<PartResult> parts = collect(ranks, {std::move(part), std::move(fields)});
    if (ranks.rank() != 0) {
        return {};
    }
    MeshResult whole = assemble(parts, cells, nodes);
    whole.fields.notes = parts.front().fields.notes;
    return whole;
}

}  // namespace weldline
