// Does any own cell's matrix of second moments of the displacements to its neighbours meet a zero
// pivot in the first two steps of Gaussian elimination without pivoting?
//
//       | Sxx Sxy Sxz |
//   M = | Sxy Syy Syz |     Sxy = sum of dx dy over the faces of the cell
//       | Sxz Syz Szz |
//
// The first pivot is Sxx, the second Syy - (Sxy / Sxx) Sxy.

#include "CKVR3DWeldLine.h"
#include "Displacements.h"

using namespace weldline::core;

namespace {

// Of the moments only these three enter the first two pivots.
struct Moments {
    double xx, yy, xy;

    void add(const Vec3& d) {
        xx += d.x * d.x;
        yy += d.y * d.y;
        xy += d.x * d.y;
    }
};

// On purpose: the third pivot is not looked at, only an exact zero counts, and a pivot that is not
// a number does not.
bool meetsZeroPivot(const Moments& m) {
    return m.xx == 0.0 || m.yy - (m.xy / m.xx) * m.xy == 0.0;
}

}  // namespace

int CKVR3DWeldLine::checkSingularLSMatrix() {
    const Extent extent = extentOf(*this);
    const CellVectors X = cellCentres(*this);
    ArrayOwner memory;
    Moments* moments = memory.zeros<Moments>(slotsUpTo(m_nCV_Total));
    const auto addToBoth = [&](int a, int b, const Vec3& d) {
        moments[a].add(d);
        moments[b].add(d);
    };
    visitInnerDisplacements(innerFaces(*this), extent, X, addToBoth);
    visitInterfaceDisplacements(InterfaceFaces(m_pPartitionFace), extent, X, addToBoth);
    visitBoundaryDisplacements(inletFaces(*this), extent, X, addToBoth);
    visitBoundaryDisplacements(wallFaces(*this), extent, X, addToBoth);
    visitBoundaryDisplacements(symmetryFaces(*this), extent, X, addToBoth);

    for (int c = 1; c <= extent.ownCells; ++c) {
        if (meetsZeroPivot(moments[c])) return 1;
    }
    return 0;
}
