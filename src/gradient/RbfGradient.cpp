// Gauss gradient with inner face values interpolated by the host's radial basis functions,
//
//   g[c] = sum over the faces of (1 / V[c]) S phi_f,   phi_f = sum over the stencil of w_j
//   phi[c_j],
//
// in one pass over the faces in the order inner, wall, inlet, symmetry, interface. Boundary faces
// take their slot's value, interface faces the mean of the two sides.

#include <cmath>

#include "CKVR3DWeldLine.h"
#include "Exchange.h"
#include "GradientSteps.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

// On purpose: all five objects are prepared at every call, although only the first one is read; the
// fourth and fifth in reverse order.
void prepareStencils(CKVR3DWeldLine& r) {
    struct Preparation {
        int object;
        int code;
    };
    constexpr Preparation kPreparations[] = {{0, 1}, {1, 2}, {2, 3}, {4, 5}, {3, 6}};
    for (const Preparation& p : kPreparations) {
        CKvrFaceRBFInternalObject& object = r.m_RBF[p.object];
        object.getKvr3dGV(r.m_pGV, nullptr, nullptr, r.m_pMesh);
        object.getPartitionFace(r.m_pPartitionFace);
        object.Initialize_FaceInterpolateData(p.code);
    }
}

// One inner face: the area vector times the inverse volume of each cell.
struct FaceFlux {
    int a, b;
    Vec3 Sa, Sb;
};

// Hands weight and value of each cell of a stencil to `add`, one after another.
template <class Add>
void forEachTerm(const int* stencil, const double* weight, const Extent& extent, const double* phi,
                 Add add) {
    for (int j = 1; j <= stencil[0]; ++j)
        if (extent.holds(stencil[j])) add(weight[j], phi[stencil[j]]);
}

// On purpose: each stencil term is added on its own; the face value is never formed as a sum. The
// two cells' gradients are held in registers meanwhile, because six additions per term would wait
// for memory; a face between a cell and itself adds and subtracts in turn.
void addStencil(const FaceFlux& flux, const int* stencil, const double* weight,
                const Extent& extent, const double* phi, const CellVectors& g) {
    Vec3 ga = g[flux.a];
    if (flux.a == flux.b) {
        forEachTerm(stencil, weight, extent, phi, [&](double w, double value) {
            ga = ga + flux.Sa * w * value;
            ga = ga - flux.Sb * w * value;
        });
        g.set(flux.a, ga);
        return;
    }
    Vec3 gb = g[flux.b];
    forEachTerm(stencil, weight, extent, phi, [&](double w, double value) {
        ga = ga + flux.Sa * w * value;
        gb = gb - flux.Sb * w * value;
    });
    g.set(flux.a, ga);
    g.set(flux.b, gb);
}

// A host without stencil tables has empty stencils.
void addInnerFaces(const InnerFaces& faces, const CKvrFaceRBFInternalObject& rbf,
                   const Extent& extent, const double* V, const double* phi, const CellVectors& g,
                   double& faceAreaMag) {
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.next(f);
        const int a = firstCell(face);
        const int b = secondCell(face);
        if (!extent.holds(a, b)) continue;
        const Vec3 S = areaVector(face);
        if (phi[a] < kEps || phi[b] < kEps) {
            g.add(a, 1.0 / V[a], S, phi[a]);
            g.subtract(b, 1.0 / V[b], S, phi[b]);
            continue;
        }
        faceAreaMag = length(S);
        if (rbf.m_ppFaceStencil == nullptr || rbf.m_ppFaceWeight == nullptr) continue;
        const FaceFlux flux{a, b, S * (1.0 / V[a]), S * (1.0 / V[b])};
        addStencil(flux, rbf.m_ppFaceStencil[f], rbf.m_ppFaceWeight[f], extent, phi, g);
    }
}

void addBoundaryFaces(const BoundaryGroup& faces, const Extent& extent, const double* V,
                      const double* phi, const CellVectors& g) {
    for (int i = 1; i <= faces.count; ++i) {
        const int c = faces.cell[i];
        const int s = faces.slot[i];
        if (extent.holds(c, s)) g.add(c, 1.0 / V[c], faces.area(i), phi[s]);
    }
}

// The mean is formed as ((1 / V) S) 0.5 (phi_o + phi_h), from left to right.
void addInterfaceFaces(const InterfaceFaces& faces, const Extent& extent, const double* V,
                       const double* phi, const CellVectors& g) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int o = faces.ownCell(i);
        const int h = faces.haloSlot(i);
        if (!extent.holds(o, h)) continue;
        const Vec3 S = faces.area(i);
        const double inverseV = 1.0 / V[o];
        if (phi[h] < kEps || phi[o] < kEps) {
            g.add(o, inverseV, S, phi[o]);
            continue;
        }
        const double sum = phi[o] + phi[h];
        g.x[o] += inverseV * S.x * 0.5 * sum;
        g.y[o] += inverseV * S.y * 0.5 * sum;
        g.z[o] += inverseV * S.z * 0.5 * sum;
    }
}

}  // namespace

void CKVR3DWeldLine::GradVarb_RBF(const double* phi, double* gx, double* gy, double* gz) {
    prepareStencils(*this);
    trace(*this, "..Start RBF calculation of gradients\n");
    const Extent extent = extentOf(*this);
    const CellVectors g{gx, gy, gz};
    clear(g, 1, extent.slots);
    addInnerFaces(innerFaces(*this), m_RBF[0], extent, m_pVolume, phi, g, m_FaceAreaMag);
    addBoundaryFaces(wallFaces(*this), extent, m_pVolume, phi, g);
    addBoundaryFaces(inletFaces(*this), extent, m_pVolume, phi, g);
    addBoundaryFaces(symmetryFaces(*this), extent, m_pVolume, phi, g);
    addInterfaceFaces(InterfaceFaces(m_pPartitionFace), extent, m_pVolume, phi, g);
    copyToSlots(wallFaces(*this), extent, g);
    copyToSlots(inletFaces(*this), extent, g);
    copyToSlots(symmetryFaces(*this), extent, g);
    exchange(*this, g);
    zeroFlatGradients(g, kFlatGradient, extent.ownCells, m_pZeroGradFlag);
}
