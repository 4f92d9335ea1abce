#pragma once

#include "comm/Ranks.h"

namespace weldline {

// One calculation on a block of `cells` hexahedra: mesh, joining, binding, the library, the angles.
// With `byMetis` rank 0 makes the whole block, cuts it and sends the parts; else every rank makes
// its own box. Rank 0 prints one line of JSON, of the slowest rank each: seconds per step by the
// clock; "work", the seconds on a core from the mesh on without halo exchanges; seconds within
// them; memory. Collective.
void studyRun(Ranks& ranks, double cells, bool byMetis);

// Halo exchanges of rising size between two ranks: one line of JSON per size. Collective.
void studyExchange(Ranks& ranks);

// The surface of METIS cuts of a block of `cells` hexahedra into 2 to 4,096 parts.
void studyCut(double cells);

}  // namespace weldline
