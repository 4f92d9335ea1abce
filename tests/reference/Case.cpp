#include "Case.h"

#include <algorithm>

#include "CutMesh.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

// The parameters of one binding's mesh. Later bindings may have another mesh than the first one.
CaseParameters meshOf(const CaseParameters& p, int binding) {
    CaseParameters mesh = p;
    if (binding == 0 || p.remesh == 0) return mesh;
    Random random(p.seed, Streams::remesh + binding);
    mesh.seed = random.next();
    if (p.remesh == 1) {
        mesh.nx = std::max(1, p.nx - random.integer(0, 2));
        mesh.ny = std::max(1, p.ny - random.integer(0, 2));
        mesh.nz = std::max(1, p.nz - 1);
    } else if (p.remesh == 2) {
        mesh.nx = p.nx + random.integer(1, 2);
        mesh.ny = p.ny + random.integer(0, 1);
        mesh.nz = p.nz + random.integer(0, 1);
    } else {
        mesh.kind = random.integer(0, 5);
        mesh.nx = random.integer(1, 3);
        mesh.ny = random.integer(1, 3);
        mesh.nz = random.integer(1, 2);
        mesh.outletSides = random.pick({0, 0, 15, 48, 63, random.integer(0, 63)});
        mesh.groupMix = random.pick({0, 0, 50});
    }
    return mesh;
}

std::vector<PartitionData> buildMesh(const CaseParameters& parameters, int variant,
                                     std::vector<std::vector<int>>& origin) {
    if (parameters.kind == 4) return arbitraryGraph(parameters, variant, origin);
    if (parameters.kind == 5) return stagedCells(parameters, variant, origin);
    return cutBox(buildBox(parameters, variant), parameters, variant, origin);
}

std::vector<PartitionData> buildBinding(const CaseParameters& p, int binding) {
    const CaseParameters mesh = meshOf(p, binding);
    std::vector<std::vector<int>> origin;
    std::vector<PartitionData> data = buildMesh(mesh, binding, origin);
    // A box with fewer cells than partitions leaves some of them without any.
    data.resize(static_cast<std::size_t>(p.partitions));
    origin.resize(data.size(), {-1});
    fillValues(data, mesh, binding, origin);
    for (PartitionData& partition : data) {
        if (p.grid == 1 && mesh.kind != 5) roundToGrid(partition, mesh);
        if (p.poison == 1) poisonSlots(partition);
    }
    if (p.empty != 0 && (p.emptyAt == 0 || p.emptyAt == binding + 1)) emptyMesh(data, p.empty);
    return data;
}

}  // namespace

int Case::bindingsBefore(const CaseParameters& parameters, int run) {
    if (run == 0) return 1 + parameters.extraBindings;
    return (parameters.rebind & (1 << (run - 1))) != 0 ? 1 : 0;
}

int Case::largestSlots() const {
    int largest = 0;
    for (const std::vector<PartitionData>& binding : bindings) {
        for (const PartitionData& data : binding) largest = std::max(largest, data.slots);
    }
    return largest;
}

Case buildCase(const CaseParameters& parameters) {
    Case built;
    built.parameters = parameters;
    int binding = 0;
    for (int run = 0; run < parameters.runs; ++run) {
        built.controls.push_back(controlText(parameters, run));
        for (int i = Case::bindingsBefore(parameters, run); i > 0; --i) {
            built.bindings.push_back(buildBinding(parameters, binding++));
        }
    }
    return built;
}

}  // namespace weldline::reference
