#pragma once

#include "CKVR3DWeldLine.h"
#include "Vec3.h"

namespace weldline::core {

// Halo exchange of a cell array; collective. Without a host object there is one process and nothing
// to exchange.
void exchange(const CKVR3DWeldLine& record, double* cellArray);

// On purpose: always x, then y, then z; every process makes the same sequence of exchanges.
void exchange(const CKVR3DWeldLine& record, const CellVectors& g);

}  // namespace weldline::core
