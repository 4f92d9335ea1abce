// Smoothing: each pass replaces every cell value by the area-weighted mean of the face values
// around the cell,
//
//   phi[c] = S[c] / (W[c] + 1e-30),   S = sum of phi_f A_f,   W = sum of A_f,
//
// over the faces that take part. Face order: inner, interface, inlet, symmetry, wall. All sums of a
// pass use the values of the pass before.

#include "Smoothing.h"

#include "Exchange.h"
#include "FaceViews.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

void addToBoth(double* S, int a, int b, double value) {
    S[a] += value;
    S[b] += value;
}

void addInnerFaces(std::span<const SmoothedInnerFace> faces, const double* phi, double* S) {
    for (const SmoothedInnerFace& f : faces) {
        addToBoth(S, f.a, f.b, ((1.0 - f.lambda) * phi[f.a] + f.lambda * phi[f.b]) * f.area);
    }
}

void addInterfaceFaces(const InterfaceFaces& faces, const Participation& part, const double* phi,
                       double* S) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int a = faces.ownCell(i);
        const int b = faces.haloSlot(i);
        if (!part.takesPart(a, b)) continue;
        const double lambda = faces.lambda(i);
        addToBoth(S, a, b, ((1.0 - lambda) * phi[a] + lambda * phi[b]) * length(faces.area(i)));
    }
}

// On purpose: the own value enters with the factor 0.0, so that an infinite or undefined one makes
// the sum undefined.
void addBoundaryFaces(std::span<const SmoothedBoundaryFace> faces, const double* phi, double* S) {
    for (const SmoothedBoundaryFace& f : faces) {
        addToBoth(S, f.cell, f.slot, (phi[f.cell] * 0.0 + phi[f.slot]) * f.area);
    }
}

void copyToSlots(const BoundaryGroup& faces, const Extent& extent, double* phi) {
    for (int i = 1; i <= faces.count; ++i) {
        if (extent.holds(faces.cell[i], faces.slot[i])) phi[faces.slot[i]] = phi[faces.cell[i]];
    }
}

}  // namespace

void CKVR3DWeldLine::Smooth_Variable(double* phi, int nPass) {
    Smoothing(*this).smooth(phi, nPass);
}

void Smoothing::smooth(double* phi, int nPass) {
    trace(m_record, "calWeldLine: Smooth_Variable\n");
    if (nPass < 1) return;
    if (!m_faces.has_value()) m_faces.emplace(m_record);
    for (int pass = 1; pass <= nPass; ++pass) smoothOnce(phi);
}

void Smoothing::smoothOnce(double* phi) const {
    const Participation part = participation(m_record);
    const int slots = part.extent.slots;
    double* S = m_record.m_pWork1Y;
    const double* W = m_record.m_pWork1Z;
    for (int c = 1; c <= slots; ++c) S[c] = 0.0;
    addInnerFaces(m_faces->inner(), phi, S);
    addInterfaceFaces(InterfaceFaces(m_record.m_pPartitionFace), part, phi, S);
    addBoundaryFaces(m_faces->boundary(), phi, S);
    for (int c = 1; c <= slots; ++c) phi[c] = S[c] / (W[c] + kEps);
    // On purpose: inlet slots keep their weighted mean.
    copyToSlots(wallFaces(m_record), part.extent, phi);
    copyToSlots(symmetryFaces(m_record), part.extent, phi);
    exchange(m_record, phi);
}
