#include "Case.h"

#include "CutMesh.h"

namespace weldline::reference {

namespace {

std::vector<PartitionData> buildMesh(const CaseParameters& parameters, int variant,
                                     std::vector<std::vector<int>>& origin) {
    if (parameters.kind == 4) return arbitraryGraph(parameters, variant, origin);
    if (parameters.kind == 5) return stagedCells(parameters, variant, origin);
    return cutBox(buildBox(parameters, variant), parameters, variant, origin);
}

}  // namespace

Case buildCase(const CaseParameters& parameters) {
    Case built;
    built.parameters = parameters;
    for (int run = 0; run < parameters.runs; ++run) {
        built.controls.push_back(controlText(parameters, run));
        const bool binds = run == 0 || (parameters.rebind & (1 << (run - 1))) != 0;
        if (!binds) continue;
        std::vector<std::vector<int>> origin;
        std::vector<PartitionData> data = buildMesh(parameters, run, origin);
        fillValues(data, parameters, run, origin);
        built.bindings.push_back(std::move(data));
    }
    return built;
}

}  // namespace weldline::reference
