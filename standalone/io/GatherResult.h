#pragma once

#include "WriteResult.h"
#include "comm/Ranks.h"
#include "partition/MeshPart.h"

namespace weldline {

// A mesh with its result.
struct MeshResult {
    CellMesh mesh;
    ResultFields fields;
};

// Rank 0 answers the whole of what the ranks have, in the order of the numbers of cells and points;
// the others nothing. The one place where a rank needs memory for all. Rank after rank sends its
// part; `cells` and `nodes` are those of the whole. Collective.
MeshResult gatherResult(Ranks& ranks, MeshPart part, ResultFields fields, std::int64_t cells,
                        std::int64_t nodes);

}  // namespace weldline
