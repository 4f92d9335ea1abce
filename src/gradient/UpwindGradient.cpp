// Gauss gradient with upwind face values,
//
//   g[c] = sum over the faces of (1 / V[c]) S q,   q = the smaller of the two cell values,
//
// in one pass over the faces in the order inner, wall, inlet, symmetry, interface. Beside an empty
// cell and on the boundary every cell sees its own value.

#include "CKVR3DWeldLine.h"
#include "Exchange.h"
#include "GradientSteps.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

// On purpose: where the difference of the two values is not a number, both cells keep the face
// values of the face before; before the first face these are 0.
void addInnerFaces(const InnerFaces& faces, const Extent& extent, const double* V,
                   const double* phi, const CellVectors& g) {
    double qa = 0.0;
    double qb = 0.0;
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.next(f);
        const int a = firstCell(face);
        const int b = secondCell(face);
        if (!extent.holds(a, b)) continue;
        const double difference = phi[a] - phi[b];
        if (phi[a] < kEps || phi[b] < kEps) {
            qa = phi[a];
            qb = phi[b];
        } else if (difference > 0.0) {
            qa = phi[b];
            qb = phi[b];
        } else if (difference <= 0.0) {
            qa = phi[a];
            qb = phi[a];
        }
        const Vec3 S = areaVector(face);
        g.add(a, 1.0 / V[a], S, qa);
        g.subtract(b, 1.0 / V[b], S, qb);
    }
}

void addBoundaryFaces(const BoundaryGroup& faces, const Extent& extent, const double* V,
                      const double* phi, const CellVectors& g) {
    for (int i = 1; i <= faces.count; ++i) {
        const int c = faces.cell[i];
        if (extent.holds(c)) g.add(c, 1.0 / V[c], faces.area(i), phi[c]);
    }
}

// On purpose: a tie takes the halo value, and a difference that is not a number adds nothing.
void addInterfaceFaces(const InterfaceFaces& faces, const Extent& extent, const double* V,
                       const double* phi, const CellVectors& g) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int h = faces.haloSlot(i);
        const int o = faces.ownCell(i);
        if (!extent.holds(o, h)) continue;
        const double difference = phi[h] - phi[o];
        double q = phi[o];
        if (!(phi[h] < kEps || phi[o] < kEps || difference > 0.0)) {
            if (!(difference <= 0.0)) continue;
            q = phi[h];
        }
        g.add(o, 1.0 / V[o], faces.area(i), q);
    }
}

}  // namespace

void CKVR3DWeldLine::GradVarb_Upwind(const double* phi, double* gx, double* gy, double* gz) {
    trace(*this, "..Start UPWIND calculation of gradients\n");
    const Extent extent = extentOf(*this);
    const CellVectors g{gx, gy, gz};
    clear(g, 1, extent.slots);
    addInnerFaces(innerFaces(*this), extent, m_pVolume, phi, g);
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
