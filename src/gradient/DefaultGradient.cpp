// Gauss gradient with deferred correction. The face value is the linear interpolation of the two
// cell values, carried from the interpolated cell centre to the true face centre by the gradient of
// the iteration before:
//
//   phi_f = mu phi_a + lambda phi_b + (x_f - x_bar) . (mu G_a + lambda G_b),   mu = 1 - lambda.
//
// Face order: inner, interface, inlet, symmetry, wall.

#include "CKVR3DWeldLine.h"
#include "Displacements.h"
#include "Exchange.h"
#include "GradientSteps.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

constexpr double kVanishedGradient = 1e-30;

Vec3 interpolated(const CellVectors& v, int a, int b, double mu, double lambda) {
    return {mu * v.x[a] + lambda * v.x[b], mu * v.y[a] + lambda * v.y[b],
            mu * v.z[a] + lambda * v.z[b]};
}

// On purpose: the order of this sum, which is not that of a dot product.
double correctedFaceValue(const Vec3& xf, const Vec3& xBar, const Vec3& G, double phi) {
    return (((xf.x - xBar.x) * G.x + phi) + (xf.y - xBar.y) * G.y) + (xf.z - xBar.z) * G.z;
}

void addScaled(const CellVectors& g, int cell, double value, const Vec3& S) {
    g.x[cell] += value * S.x;
    g.y[cell] += value * S.y;
    g.z[cell] += value * S.z;
}

void subtractScaled(const CellVectors& g, int cell, double value, const Vec3& S) {
    g.x[cell] -= value * S.x;
    g.y[cell] -= value * S.y;
    g.z[cell] -= value * S.z;
}

// On purpose: no test whether the cell is reached, and the slot's value, whatever it is.
void addBoundaryFaces(const BoundaryGroup& faces, const Extent& extent, const double* phi,
                      const CellVectors& g) {
    for (int i = 1; i <= faces.count; ++i) {
        const int c = faces.cell[i];
        const int s = faces.slot[i];
        if (extent.holds(c, s)) addScaled(g, c, phi[s], faces.area(i));
    }
}

void divideByVolumes(const double* V, int ownCells, const CellVectors& g) {
    for (int c = 1; c <= ownCells; ++c) {
        const double r = 1.0 / (V[c] + kEps);
        g.x[c] *= r;
        g.y[c] *= r;
        g.z[c] *= r;
    }
}

void copyCells(const CellVectors& from, const CellVectors& to, int slots) {
    for (int c = 1; c <= slots; ++c) to.set(c, from[c]);
}

}  // namespace

// On purpose: with two or more iterations the first one, too, takes the corrected form, with a
// previous gradient of zero.
void CKVR3DWeldLine::GradVarb_FaceContribution(int nIter, const double* phi, double* gx, double* gy,
                                               double* gz, double lambda, int a, int b, double Sx,
                                               double Sy, double Sz, double xf, double yf,
                                               double zf) {
    const CellVectors g{gx, gy, gz};
    const Vec3 S{Sx, Sy, Sz};
    const double mu = 1.0 - lambda;
    const bool isFilledA = phi[a] > kEps;
    const bool isFilledB = phi[b] > kEps;
    if (isFilledA && isFilledB) {
        double value = phi[a] * mu + phi[b] * lambda;
        if (nIter >= 2) {
            const Vec3 xBar = interpolated(cellCentres(*this), a, b, mu, lambda);
            const Vec3 G = interpolated({m_pWork1X, m_pWork1Y, m_pWork1Z}, a, b, mu, lambda);
            value = correctedFaceValue({xf, yf, zf}, xBar, G, value);
        }
        addScaled(g, a, value, S);
        subtractScaled(g, b, value, S);
    } else if (isFilledA) {
        addScaled(g, a, phi[a], S);
    } else if (isFilledB) {
        subtractScaled(g, b, phi[b], S);
    }
}

void CKVR3DWeldLine::GradVarb(int nIter, const double* phi, double* gx, double* gy, double* gz) {
    trace(*this, "calWeldLine: GradVarb\n");
    const Extent extent = extentOf(*this);
    const CellVectors g{gx, gy, gz};
    const CellVectors previous{m_pWork1X, m_pWork1Y, m_pWork1Z};
    clear(previous, 0, extent.slots);
    for (int k = 1; k <= nIter; ++k) {
        clear(g, 0, extent.slots);
        const InnerFaces inner = innerFaces(*this);
        for (int f = 1; f <= inner.count; ++f) {
            const double* face = inner.record[f];
            const int a = firstCell(face);
            const int b = secondCell(face);
            if (!extent.holds(a, b)) continue;
            GradVarb_FaceContribution(nIter, phi, gx, gy, gz, inner.lambda[f], a, b, face[3],
                                      face[4], face[5], face[6], face[7], face[8]);
        }
        const InterfaceFaces interface(m_pPartitionFace);
        for (int i = 1; i <= interface.count(); ++i) {
            const int a = interface.ownCell(i);
            const int b = interface.haloSlot(i);
            if (!extent.holds(a, b)) continue;
            const Vec3 S = interface.area(i);
            const Vec3 xf = interface.centre(i);
            GradVarb_FaceContribution(nIter, phi, gx, gy, gz, interface.lambda(i), a, b, S.x, S.y,
                                      S.z, xf.x, xf.y, xf.z);
        }
        addBoundaryFaces(inletFaces(*this), extent, phi, g);
        addBoundaryFaces(symmetryFaces(*this), extent, phi, g);
        addBoundaryFaces(wallFaces(*this), extent, phi, g);
        divideByVolumes(m_pVolume, extent.ownCells, g);
        copyToSlots(inletFaces(*this), extent, g);
        copyToSlots(symmetryFaces(*this), extent, g);
        copyToSlots(wallFaces(*this), extent, g);
        // On purpose: the first iteration is not carried over, so that the correction takes effect
        // from the third one on.
        if (k != m_nGradLoopBound) {
            copyCells(g, previous, extent.slots);
            exchange(*this, previous);
        }
    }
    exchange(*this, g);
    zeroFlatGradients(g, kVanishedGradient, extent.ownCells, m_pZeroGradFlag);
}
