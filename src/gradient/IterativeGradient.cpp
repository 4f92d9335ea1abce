// Least-squares gradient over the neighbours of each cell: the normal equations
//
//   | Axx Axy Axz |       | Bx |
//   | Axy Ayy Ayz | g  =  | By |     Axy = sum of dx dy,  Bx = sum of dphi dx,
//   | Axz Ayz Azz |       | Bz |
//
// with d from the cell centre to the neighbour's centre or to the boundary face, solved by Gaussian
// elimination without pivoting. Face order: inner, interface, inlet, wall, symmetry. One pass,
// although the trace calls it iterative.

#include "CKVR3DWeldLine.h"
#include "Displacements.h"
#include "Exchange.h"
#include "GradientSteps.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

// One neighbour's products, or their sums: a row of numbers that are added in pairs.
struct NormalEquations {
    double Axx, Ayy, Azz, Axy, Axz, Ayz, Bx, By, Bz;

    NormalEquations& operator+=(const NormalEquations& n) {
        Axx += n.Axx;
        Ayy += n.Ayy;
        Azz += n.Azz;
        Axy += n.Axy;
        Axz += n.Axz;
        Ayz += n.Ayz;
        Bx += n.Bx;
        By += n.By;
        Bz += n.Bz;
        return *this;
    }
};

NormalEquations products(const Vec3& d, double dphi) {
    return {d.x * d.x, d.y * d.y,  d.z * d.z,  d.y * d.x, d.z * d.x,
            d.z * d.y, dphi * d.x, dphi * d.y, dphi * d.z};
}

// On purpose: no guard on the pivots; neighbours that do not span three dimensions give values that
// are not finite. The quotient is formed anew for each column.
Vec3 solve(const NormalEquations& n) {
    double a[3][4] = {
        {n.Axx, n.Axy, n.Axz, n.Bx}, {n.Axy, n.Ayy, n.Ayz, n.By}, {n.Axz, n.Ayz, n.Azz, n.Bz}};
    for (int k = 0; k < 2; ++k) {
        for (int r = k + 1; r < 3; ++r) {
            for (int j = k + 1; j < 4; ++j) a[r][j] = a[r][j] - (a[r][k] / a[k][k]) * a[k][j];
        }
    }
    const double gz = a[2][3] / a[2][2];
    const double gy = (a[1][3] - gz * a[1][2]) / a[1][1];
    const double gx = ((a[0][3] - gy * a[0][1]) - gz * a[0][2]) / a[0][0];
    return {gx, gy, gz};
}

}  // namespace

void CKVR3DWeldLine::GradVarb_Iterative(const double* phi, double* gx, double* gy, double* gz) {
    const Extent extent = extentOf(*this);
    const CellVectors X = cellCentres(*this);
    const CellVectors g{gx, gy, gz};
    ArrayOwner memory;
    NormalEquations* equations = memory.zeros<NormalEquations>(slotsUpTo(m_nCV_Total));
    const auto addToBoth = [&](int a, int b, const Vec3& d) {
        const NormalEquations n = products(d, phi[b] - phi[a]);
        equations[a] += n;
        equations[b] += n;
    };
    trace(*this, "..Start iterative calculation of gradients\n");
    clear(g, 1, extent.slots);
    trace(*this, "// Contribution from inner cell faces\n");
    visitInnerDisplacements(innerFaces(*this), extent, X, addToBoth);
    visitInterfaceDisplacements(InterfaceFaces(m_pPartitionFace), extent, X, addToBoth);
    trace(*this, "// Contribution from Inlet Boundaries\n");
    visitBoundaryDisplacements(inletFaces(*this), extent, X, addToBoth);
    trace(*this, "// Contribution from Wall Boundaries\n");
    visitBoundaryDisplacements(wallFaces(*this), extent, X, addToBoth);
    trace(*this, "// Contribution from Symmetry Boundaries\n");
    visitBoundaryDisplacements(symmetryFaces(*this), extent, X, addToBoth);
    trace(*this, "// Calculate Gradient Components at CV-centers\n");
    for (int c = 1; c <= extent.ownCells; ++c) g.set(c, solve(equations[c]));
    // On purpose: boundary slots keep their zeros.
    exchange(*this, g);
    zeroFlatGradients(g, kFlatGradient, extent.ownCells, m_pZeroGradFlag);
}
