#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "Extent.h"

namespace weldline::core {

// Which faces take part in the smoothing: those with both cells loaded with melt and none of them
// flagged as flat.
struct Participation {
    const double* loaded;  // flow variable before any smoothing
    const int* zeroGradFlag;
    Extent extent;

    bool takesPart(int a, int b) const {
        return extent.holds(a, b) && !(loaded[a] < kEps) && !(loaded[b] < kEps) &&
               zeroGradFlag[a] != 1 && zeroGradFlag[b] != 1;
    }
};
Participation participation(const CKVR3DWeldLine& record);

// The inner faces that take part, 0-based, in four arrays: a pass reads four streams at once faster
// than one of records.
struct SmoothedInnerFaces {
    std::size_t count;
    int* a;
    int* b;
    double* lambda;  // weight of b
    double* area;
};

struct SmoothedBoundaryFace {
    int cell;
    int slot;
    double area;
};

// The faces that take part, packed in the order of the sums: what a pass reads streams, 24 bytes a
// face, instead of being picked from the host's records, flags and loaded values each time.
// Interface faces are not among them: the host is asked for these anew in each pass.
//
// Making it also forms the weights W, the sum of the areas around each cell, in m_pWork1Z: they are
// the same in every pass. Both hold as long as nothing is flagged.
class SmoothingFaces {
  public:
    explicit SmoothingFaces(CKVR3DWeldLine& record);

    const SmoothedInnerFaces& inner() const { return m_inner; }
    // Inlet, then symmetry, then wall faces.
    std::span<const SmoothedBoundaryFace> boundary() const { return m_boundary; }

  private:
    ArrayOwner m_memory;
    SmoothedInnerFaces m_inner;
    std::vector<SmoothedBoundaryFace> m_boundary;
};

}  // namespace weldline::core
