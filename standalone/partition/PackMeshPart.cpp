#include "PackMeshPart.h"

#include "comm/Packing.h"

namespace weldline {

namespace {

// What a part consists of besides its patches and fields, once for both directions.
template <class Part, class Action>
void eachList(Part& part, Action action) {
    const auto rows = [&](auto& table) {
        action(table.offsets);
        action(table.entries);
    };
    action(part.mesh.points);
    action(part.mesh.kinds);
    rows(part.mesh.cellNodes);
    rows(part.mesh.polygons);
    rows(part.mesh.cellPolygons);
    action(part.mesh.fileNumbers);
    action(part.cellNumber);
    action(part.nodeNumber);
    for (auto& patch : part.patches) {
        action(patch.name);
        rows(patch.faces);
    }
    for (auto& field : part.cellFields) action(field);
}

}  // namespace

Bytes packMeshPart(const MeshPart& part) {
    Packer packer;
    packer.put(part.patches.size()).put(part.cellFields.size());
    eachList(part, [&](const auto& list) { packer.put(list); });
    return packer.take();
}

MeshPart unpackMeshPart(const Bytes& message) {
    Unpacker unpacker(message);
    MeshPart part;
    part.patches.resize(unpacker.get<std::size_t>());
    part.cellFields.resize(unpacker.get<std::size_t>());
    eachList(part, [&](auto& list) { unpacker.get(list); });
    return part;
}

}  // namespace weldline
