#pragma once

#include "Extent.h"
#include "FaceViews.h"

// Vectors from a cell centre to what lies across each face, group by group: to the neighbouring
// cell's centre across an inner or interface face, to the face centre on the boundary.

namespace weldline::core {

inline CellVectors cellCentres(const CKVR3DWeldLine& r) {
    return {r.m_pXc, r.m_pYc, r.m_pZc};
}

// Calls visit(a, b, centre of b - centre of a) for each inner face with first cell a, second b.
template <class Visit>
void visitInnerDisplacements(const InnerFaces& faces, const Extent& extent, const CellVectors& X,
                             Visit visit) {
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.next(f);
        const int a = firstCell(face);
        const int b = secondCell(face);
        if (extent.holds(a, b)) visit(a, b, X[b] - X[a]);
    }
}

// The same for each interface face with own cell a and halo slot b.
template <class Visit>
void visitInterfaceDisplacements(const InterfaceFaces& faces, const Extent& extent,
                                 const CellVectors& X, Visit visit) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int a = faces.ownCell(i);
        const int b = faces.haloSlot(i);
        if (extent.holds(a, b)) visit(a, b, X[b] - X[a]);
    }
}

// Calls visit(cell, slot, face centre - cell centre) for each face of a boundary group.
template <class Visit>
void visitBoundaryDisplacements(const BoundaryGroup& faces, const Extent& extent,
                                const CellVectors& X, Visit visit) {
    for (int i = 1; i <= faces.count; ++i) {
        const int c = faces.cell[i];
        const int s = faces.slot[i];
        if (extent.holds(c, s)) visit(c, s, faces.centre(i) - X[c]);
    }
}

}  // namespace weldline::core
