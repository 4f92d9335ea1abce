// Fills the tables face by face: stencil, centres, weights.

#include "FaceTables.h"

#include <algorithm>
#include <array>

#include "CKVR3DFiniteVolumeMesh.h"
#include "FaceStencils.h"
#include "FaceWeights.h"

namespace weldline {

namespace {

// Room for all rows at their largest size. The memory stays untouched, and thus not resident,
// beyond what the rows really need.
FaceTables allocate(const FaceStencils& stencils, int faces) {
    const auto rows = static_cast<std::size_t>(faces) + 1;
    std::size_t entries = 0;
    for (int f = 1; f <= faces; ++f) entries += 1 + stencils.largestSize(f);
    FaceTables tables;
    tables.stencilRows = std::make_unique<int*[]>(rows);
    tables.weightRows = std::make_unique<double*[]>(rows);
    tables.stencils = std::make_unique_for_overwrite<int[]>(entries);
    tables.weights = std::make_unique_for_overwrite<double[]>(entries);
    return tables;
}

}  // namespace

FaceTables buildFaceTables(const CKVR3DFiniteVolumeMesh& mesh, const CKvr3dGV* globalVariables,
                           CPartitionFace_DLL* partition) {
    FaceStencils stencils(mesh, globalVariables, partition);
    FaceTables tables = allocate(stencils, mesh.m_nInnerFace);
    int* stencilRow = tables.stencils.get();
    double* weightRow = tables.weights.get();
    std::array<Vec3, kMaxStencil> centres;
    for (int f = 1; f <= mesh.m_nInnerFace; ++f) {
        const std::span<const int> slots = stencils.choose(f);
        std::size_t n = slots.size();
        for (std::size_t j = 0; j < n; ++j) centres[j] = stencils.cellCentre(slots[j]);
        const WeightKind kind = faceWeights({centres.data(), n}, stencils.faceCentre(f),
                                            mesh.m_pInnerFaceLambda[f], {weightRow + 1, n});
        if (kind == WeightKind::TwoCell) n = 2;

        stencilRow[0] = static_cast<int>(n);
        std::copy_n(slots.begin(), n, stencilRow + 1);
        weightRow[0] = 0.0;
        tables.stencilRows[static_cast<std::size_t>(f)] = stencilRow;
        tables.weightRows[static_cast<std::size_t>(f)] = weightRow;
        stencilRow += n + 1;
        weightRow += n + 1;
    }
    return tables;
}

}  // namespace weldline
