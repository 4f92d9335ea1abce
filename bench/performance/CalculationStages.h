#pragma once

#include "Calculation.h"
#include "Stage.h"

namespace weldline::performance {

// The steps of the calculation and the whole of it, each by the library ("library") and by the
// plain transcription of the tests ("naive"). Borrows `bound`.
Stages calculationStages(BoundCase& bound);

// One smoothing pass as what it is at heart: a sparse matrix-vector product with the weights of the
// pass ("csr"), and the triad a = b + s c over arrays beyond the caches ("triad"), per million
// elements. Borrows `bound`.
Stages graphStages(BoundCase& bound);

}  // namespace weldline::performance
