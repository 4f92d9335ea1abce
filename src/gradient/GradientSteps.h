#pragma once

#include "Extent.h"
#include "FaceViews.h"

// Steps that several gradient schemes share.

namespace weldline::core {

// Zeros at cell slots `first` to `last`.
void clear(const CellVectors& g, int first, int last);

// Boundary-value slots of a group take their own cell's gradient.
void copyToSlots(const BoundaryGroup& faces, const Extent& extent, const CellVectors& g);

// Own cells with |g| below `limit` get an exact zero gradient and flag 1. On purpose: no flag is
// ever cleared here, and a length that is not a number is not below the limit.
void zeroFlatGradients(const CellVectors& g, double limit, int ownCells, int* zeroGradFlag);

// Limit of the upwind, iterative and RBF schemes; the default scheme has its own.
inline constexpr double kFlatGradient = 0.001;

}  // namespace weldline::core
