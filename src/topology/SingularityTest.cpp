// Does any own cell's matrix of second moments of the displacements to its neighbours meet a zero
// pivot in the first two steps of Gaussian elimination without pivoting?
//
//       | Sxx Sxy Sxz |
//   M = | Sxy Syy Syz |     Sxy = sum of dx dy over the faces of the cell
//       | Sxz Syz Szz |

#include <cmath>
#include <memory>

#include "CKVR3DWeldLine.h"
#include "Displacements.h"

using namespace weldline::core;

namespace {

struct Moments {
    double xx, yy, zz, xy, xz, yz;

    void add(const Vec3& d) {
        xx += d.x * d.x;
        yy += d.y * d.y;
        zz += d.z * d.z;
        xy += d.x * d.y;
        xz += d.x * d.z;
        yz += d.y * d.z;
    }
};

// On purpose: the third pivot is not looked at, only an exact zero counts, and a pivot that is not
// a number does not.
bool meetsZeroPivot(const Moments& m) {
    double M[3][3] = {{m.xx, m.xy, m.xz}, {m.xy, m.yy, m.yz}, {m.xz, m.yz, m.zz}};
    for (int p = 0; p < 2; ++p) {
        if (std::fabs(M[p][p]) == 0.0) return true;
        for (int i = p + 1; i < 3; ++i) {
            for (int j = p + 1; j < 3; ++j) {
                M[i][j] = M[i][j] - (M[i][p] / M[p][p]) * M[p][j];
            }
        }
    }
    return false;
}

}  // namespace

int CKVR3DWeldLine::checkSingularLSMatrix() {
    const Extent extent = extentOf(*this);
    const CellVectors X = cellCentres(*this);
    const auto moments = std::make_unique<Moments[]>(slotsUpTo(m_nCV_Total));
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
