// Smoothing: each pass replaces every cell value by the area-weighted mean of the face values
// around the cell,
//
//   phi[c] = S[c] / (W[c] + 1e-30),   S = sum of phi_f A_f,   W = sum of A_f,
//
// over the faces that take part: both cells loaded with melt and none flagged as flat. Face order:
// inner, interface, inlet, symmetry, wall. All sums of a pass use the values of the pass before.

#include "CKVR3DWeldLine.h"
#include "Exchange.h"
#include "Extent.h"
#include "FaceViews.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

struct Participation {
    const double* loaded;  // flow variable before any smoothing
    const int* zeroGradFlag;
    Extent extent;

    bool takesPart(int a, int b) const {
        return extent.holds(a, b) && !(loaded[a] < kEps) && !(loaded[b] < kEps) &&
               zeroGradFlag[a] != 1 && zeroGradFlag[b] != 1;
    }
};

struct Sums {
    double* S;
    double* W;

    void add(int a, int b, double phi, double area) const {
        const double v = phi * area;
        S[a] += v;
        S[b] += v;
        W[a] += area;
        W[b] += area;
    }
};

void addInnerFaces(const InnerFaces& faces, const Participation& part, const double* phi,
                   const Sums& sums) {
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.record[f];
        const int a = firstCell(face);
        const int b = secondCell(face);
        if (!part.takesPart(a, b)) continue;
        const double lambda = faces.lambda[f];
        sums.add(a, b, (1.0 - lambda) * phi[a] + lambda * phi[b], length(areaVector(face)));
    }
}

void addInterfaceFaces(const InterfaceFaces& faces, const Participation& part, const double* phi,
                       const Sums& sums) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int a = faces.ownCell(i);
        const int b = faces.haloSlot(i);
        if (!part.takesPart(a, b)) continue;
        const double lambda = faces.lambda(i);
        sums.add(a, b, (1.0 - lambda) * phi[a] + lambda * phi[b], length(faces.area(i)));
    }
}

// On purpose: the own value enters with the factor 0.0, so that an infinite or undefined one makes
// the sum undefined.
void addBoundaryFaces(const BoundaryGroup& faces, const Participation& part, const double* phi,
                      const Sums& sums) {
    for (int i = 1; i <= faces.count; ++i) {
        const int a = faces.cell[i];
        const int b = faces.slot[i];
        if (!part.takesPart(a, b)) continue;
        sums.add(a, b, phi[a] * 0.0 + phi[b], length(faces.area(i)));
    }
}

void copyToSlots(const BoundaryGroup& faces, const Extent& extent, double* phi) {
    for (int i = 1; i <= faces.count; ++i) {
        if (extent.holds(faces.cell[i], faces.slot[i])) phi[faces.slot[i]] = phi[faces.cell[i]];
    }
}

}  // namespace

void CKVR3DWeldLine::Smooth_Variable(double* phi, int nPass) {
    trace(*this, "calWeldLine: Smooth_Variable\n");
    const Extent extent = extentOf(*this);
    const Participation part{m_pVariableOrg, m_pZeroGradFlag, extent};
    const Sums sums{m_pWork1Y, m_pWork1Z};
    for (int pass = 1; pass <= nPass; ++pass) {
        for (int c = 1; c <= extent.slots; ++c) {
            sums.S[c] = 0.0;
            sums.W[c] = 0.0;
        }
        addInnerFaces(innerFaces(*this), part, phi, sums);
        addInterfaceFaces(InterfaceFaces(m_pPartitionFace), part, phi, sums);
        addBoundaryFaces(inletFaces(*this), part, phi, sums);
        addBoundaryFaces(symmetryFaces(*this), part, phi, sums);
        addBoundaryFaces(wallFaces(*this), part, phi, sums);
        for (int c = 1; c <= extent.slots; ++c) phi[c] = sums.S[c] / (sums.W[c] + kEps);
        // On purpose: inlet slots keep their weighted mean.
        copyToSlots(wallFaces(*this), extent, phi);
        copyToSlots(symmetryFaces(*this), extent, phi);
        exchange(*this, phi);
    }
}
