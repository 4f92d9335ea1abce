#pragma once

#include <memory>

class CKVR3DFiniteVolumeMesh;
class CKvr3dGV;
class CPartitionFace_DLL;

namespace weldline {

// Stencils and weights of all inner faces in two flat arrays, with the row pointers that the host
// contract asks for. Row 0 is null. A stencil row is n, then n cell slots; a weight row an unused
// 0, then n weights. Memory: 12 bytes per entry and 28 bytes per face, that is 172 bytes a face on
// hexahedra (12 cells) and 124 on tetrahedra (8 cells).
struct FaceTables {
    std::unique_ptr<int*[]> stencilRows;
    std::unique_ptr<double*[]> weightRows;
    std::unique_ptr<int[]> stencils;
    std::unique_ptr<double[]> weights;
};

// Measured on one core: see docs/performance.md. Nothing is allocated per face.
FaceTables buildFaceTables(const CKVR3DFiniteVolumeMesh& mesh, const CKvr3dGV* globalVariables,
                           CPartitionFace_DLL* partition);

}  // namespace weldline
