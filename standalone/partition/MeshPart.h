#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "mesh/CellMesh.h"

namespace weldline {

// A local number as a place in an array.
inline std::size_t at(int number) {
    return static_cast<std::size_t>(number);
}

// What one rank holds of a mesh that is spread over the ranks of a run: its own cells with their
// points, and the parts of the patches that lie on them. Numbering inside is 0-based and local;
// cells and points ascend by their numbers in the whole mesh, which are those that one process
// would give them.
struct MeshPart {
    CellMesh mesh;
    std::vector<std::int64_t> cellNumber;         // per cell: its 0-based number in the whole mesh
    std::vector<std::int64_t> nodeNumber;         // per point: the same
    std::vector<Patch> patches;                   // the same names in the same order on every rank
    std::vector<std::vector<double>> cellFields;  // carried along with the cells; one value a cell

    // Number of a cell in the data set, for messages.
    std::int64_t fileNumber(int cell) const {
        const auto& numbers = mesh.fileNumbers.empty() ? cellNumber : mesh.fileNumbers;
        return numbers[static_cast<std::size_t>(cell)];
    }
};

}  // namespace weldline
