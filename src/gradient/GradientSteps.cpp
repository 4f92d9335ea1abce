#include "GradientSteps.h"

namespace weldline::core {

void clear(const CellVectors& g, int first, int last) {
    for (int c = first; c <= last; ++c) g.set(c, {0.0, 0.0, 0.0});
}

void copyToSlots(const BoundaryGroup& faces, const Extent& extent, const CellVectors& g) {
    for (int i = 1; i <= faces.count; ++i) {
        const int c = faces.cell[i];
        const int s = faces.slot[i];
        if (extent.holds(c, s)) g.set(s, g[c]);
    }
}

void zeroFlatGradients(const CellVectors& g, double limit, int ownCells, int* zeroGradFlag) {
    for (int c = 1; c <= ownCells; ++c) {
        if (length(g[c]) < limit) {
            g.set(c, {0.0, 0.0, 0.0});
            zeroGradFlag[c] = 1;
        }
    }
}

}  // namespace weldline::core
