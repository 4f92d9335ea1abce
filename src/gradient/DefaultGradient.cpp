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

// What a face adds to its two cells. On purpose: with two or more iterations the first one, too,
// takes the corrected form, with a previous gradient of zero.
struct FaceContribution {
    bool isCorrected;
    const double* phi;
    CellVectors X;
    CellVectors previous;
    CellVectors g;

    double faceValue(int a, int b, double lambda, const Vec3& xf) const {
        const double mu = 1.0 - lambda;
        const double value = phi[a] * mu + phi[b] * lambda;
        if (!isCorrected) return value;
        return correctedFaceValue(xf, interpolated(X, a, b, mu, lambda),
                                  interpolated(previous, a, b, mu, lambda), value);
    }

    void add(int a, int b, double lambda, const Vec3& S, const Vec3& xf) const {
        const bool isFilledA = phi[a] > kEps;
        const bool isFilledB = phi[b] > kEps;
        if (isFilledA && isFilledB) {
            const double value = faceValue(a, b, lambda, xf);
            addScaled(g, a, value, S);
            subtractScaled(g, b, value, S);
        } else if (isFilledA) {
            addScaled(g, a, phi[a], S);
        } else if (isFilledB) {
            subtractScaled(g, b, phi[b], S);
        }
    }
};

FaceContribution contribution(const CKVR3DWeldLine& r, int nIter, const double* phi,
                              const CellVectors& g) {
    return {nIter >= 2, phi, cellCentres(r), {r.m_pWork1X, r.m_pWork1Y, r.m_pWork1Z}, g};
}

void addInnerFaces(const InnerFaces& faces, const Extent& extent,
                   const FaceContribution& contribution) {
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.next(f);
        const int a = firstCell(face);
        const int b = secondCell(face);
        if (!extent.holds(a, b)) continue;
        contribution.add(a, b, faces.lambda[f], areaVector(face), faceCentre(face));
    }
}

void addInterfaceFaces(const InterfaceFaces& faces, const Extent& extent,
                       const FaceContribution& contribution) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int a = faces.ownCell(i);
        const int b = faces.haloSlot(i);
        if (!extent.holds(a, b)) continue;
        const Vec3 S = faces.area(i);
        const Vec3 xf = faces.centre(i);
        contribution.add(a, b, faces.lambda(i), S, xf);
    }
}

// One iteration without its exchange: g from phi and the previous gradient.
void iterate(const CKVR3DWeldLine& r, const Extent& extent, const FaceContribution& contribution) {
    const CellVectors& g = contribution.g;
    clear(g, 0, extent.slots);
    addInnerFaces(innerFaces(r), extent, contribution);
    addInterfaceFaces(InterfaceFaces(r.m_pPartitionFace), extent, contribution);
    addBoundaryFaces(inletFaces(r), extent, contribution.phi, g);
    addBoundaryFaces(symmetryFaces(r), extent, contribution.phi, g);
    addBoundaryFaces(wallFaces(r), extent, contribution.phi, g);
    divideByVolumes(r.m_pVolume, extent.ownCells, g);
    copyToSlots(inletFaces(r), extent, g);
    copyToSlots(symmetryFaces(r), extent, g);
    copyToSlots(wallFaces(r), extent, g);
}

}  // namespace

void CKVR3DWeldLine::GradVarb_FaceContribution(int nIter, const double* phi, double* gx, double* gy,
                                               double* gz, double lambda, int a, int b, double Sx,
                                               double Sy, double Sz, double xf, double yf,
                                               double zf) {
    contribution(*this, nIter, phi, {gx, gy, gz}).add(a, b, lambda, {Sx, Sy, Sz}, {xf, yf, zf});
}

void CKVR3DWeldLine::GradVarb(int nIter, const double* phi, double* gx, double* gy, double* gz) {
    trace(*this, "calWeldLine: GradVarb\n");
    const Extent extent = extentOf(*this);
    const CellVectors g{gx, gy, gz};
    const CellVectors previous{m_pWork1X, m_pWork1Y, m_pWork1Z};
    const FaceContribution faces = contribution(*this, nIter, phi, g);
    clear(previous, 0, extent.slots);
    for (int k = 1; k <= nIter; ++k) {
        // On purpose: the first iteration is not carried over, so that the correction takes effect
        // from the third one on. Unless it is also the last, nothing remains of it but what the
        // host is asked.
        const bool isCarriedOver = k != m_nGradLoopBound;
        if (!isCarriedOver && k < nIter) {
            addInterfaceFaces(InterfaceFaces(m_pPartitionFace), extent, faces);
            continue;
        }
        iterate(*this, extent, faces);
        if (isCarriedOver) {
            copyCells(g, previous, extent.slots);
            exchange(*this, previous);
        }
    }
    exchange(*this, g);
    zeroFlatGradients(g, kVanishedGradient, extent.ownCells, m_pZeroGradFlag);
}
