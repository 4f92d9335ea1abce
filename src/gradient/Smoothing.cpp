// Smoothing: each pass replaces every cell value by the area-weighted mean of the face values
// around the cell,
//
//   phi[c] = S[c] / (W[c] + 1e-30),   S = sum of phi_f A_f,   W = sum of A_f,
//
// over the faces that take part. Face order: inner, interface, inlet, symmetry, wall. All sums of a
// pass use the values of the pass before.

#include "Smoothing.h"

#include <algorithm>

#include "AskFor.h"
#include "Exchange.h"
#include "FaceViews.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

// Values are numbers or vectors; a vector's components go each its own way.
template <class Value>
void addToBoth(Value* S, int a, int b, const Value& value) {
    S[a] = S[a] + value;
    S[b] = S[b] + value;
}

// Faces whose weights, or areas, fill a line of the cache.
constexpr std::size_t kFacesOfLine = 8;
// How many faces ahead their lines are asked for. The processor follows a stream by itself, but
// begins anew at every page, and with four streams that happens often.
constexpr std::size_t kFacesAhead = 16 * kFacesOfLine;

template <class Value>
void addInnerFaces(const SmoothedInnerFaces& f, const Value* phi, Value* S) {
    for (std::size_t i = 0; i < f.count; ++i) {
        const std::size_t ahead = i + kFacesAhead;
        if (i % kFacesOfLine == 0 && ahead < f.count)
            askFor(f.a + ahead, f.b + ahead, f.lambda + ahead, f.area + ahead);
        const double lambda = f.lambda[i];
        addToBoth(S, f.a[i], f.b[i],
                  (phi[f.a[i]] * (1.0 - lambda) + phi[f.b[i]] * lambda) * f.area[i]);
    }
}

void addInterfaceFaces(const InterfaceFaces& faces, const Participation& part, const double* phi,
                       double* S) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int a = faces.ownCell(i);
        const int b = faces.haloSlot(i);
        if (!part.takesPart(a, b)) continue;
        const double lambda = faces.lambda(i);
        addToBoth(S, a, b, (phi[a] * (1.0 - lambda) + phi[b] * lambda) * length(faces.area(i)));
    }
}

// On purpose: the own value enters with the factor 0.0, so that an infinite or undefined one makes
// the sum undefined.
template <class Value>
void addBoundaryFaces(std::span<const SmoothedBoundaryFace> faces, const Value* phi, Value* S) {
    for (const SmoothedBoundaryFace& f : faces) {
        addToBoth(S, f.cell, f.slot, (phi[f.cell] * 0.0 + phi[f.slot]) * f.area);
    }
}

template <class Value>
void divideByWeights(const Value* S, const double* W, int slots, Value* phi) {
    for (int c = 1; c <= slots; ++c) phi[c] = S[c] / (W[c] + kEps);
}

template <class Value>
void copyToSlots(const BoundaryGroup& faces, const Extent& extent, Value* phi) {
    for (int i = 1; i <= faces.count; ++i) {
        if (extent.holds(faces.cell[i], faces.slot[i])) phi[faces.slot[i]] = phi[faces.cell[i]];
    }
}

// On purpose: inlet slots keep their weighted mean.
template <class Value>
void copyToSlots(const CKVR3DWeldLine& r, const Extent& extent, Value* phi) {
    copyToSlots(wallFaces(r), extent, phi);
    copyToSlots(symmetryFaces(r), extent, phi);
}

}  // namespace

void CKVR3DWeldLine::Smooth_Variable(double* phi, int nPass) {
    Smoothing(*this).smooth(phi, nPass);
}

void Smoothing::pack() {
    if (!m_faces.has_value()) m_faces.emplace(m_record);
}

void Smoothing::packForSets() {
    pack();
    if (!isScattered(m_faces->inner(), extentOf(m_record).slots)) return;
    m_rows.emplace(m_record, *m_faces);
    m_faces.reset();
}

void Smoothing::smooth(double* phi, int nPass) {
    trace(m_record, "calWeldLine: Smooth_Variable\n");
    if (nPass < 1) return;
    pack();
    for (int pass = 1; pass <= nPass; ++pass) smoothOnce(phi);
}

void Smoothing::smooth(const CellVectors& g, int nPass) {
    const bool isAlone =
        m_record.m_pCommunication == nullptr && m_record.m_pPartitionFace == nullptr;
    if (isAlone && nPass >= 1) {
        smoothTogether(g, nPass);
        return;
    }
    smooth(g.x, nPass);
    smooth(g.y, nPass);
    smooth(g.z, nPass);
}

void Smoothing::smoothOnce(double* phi) const {
    const Participation part = participation(m_record);
    const int slots = part.extent.slots;
    double* S = m_record.m_pWork1Y;
    std::fill_n(S + 1, slots, 0.0);
    addInnerFaces(m_faces->inner(), phi, S);
    addInterfaceFaces(InterfaceFaces(m_record.m_pPartitionFace), part, phi, S);
    addBoundaryFaces(m_faces->boundary(), phi, S);
    divideByWeights(S, m_record.m_pWork1Z, slots, phi);
    copyToSlots(m_record, part.extent, phi);
    exchange(m_record, phi);
}

void Smoothing::smoothTogether(const CellVectors& g, int nPass) {
    for (int component = 1; component <= 3; ++component) {
        trace(m_record, "calWeldLine: Smooth_Variable\n");
    }
    if (!m_rows.has_value() && !m_faces.has_value()) packForSets();
    if (m_rows.has_value()) {
        m_rows->smooth(g, nPass);
    } else {
        smoothByFaces(g, nPass);
    }
}

void Smoothing::smoothByFaces(const CellVectors& g, int nPass) {
    const Extent extent = extentOf(m_record);
    if (m_vectorSums == nullptr) {
        m_vectors = m_memory.zeros<Vec3>(slotsUpTo(extent.slots));
        m_vectorSums = m_memory.zeros<Vec3>(slotsUpTo(extent.slots));
    }
    Vec3* phi = m_vectors;
    Vec3* S = m_vectorSums;
    for (int c = 1; c <= extent.slots; ++c) phi[c] = g[c];
    for (int pass = 1; pass <= nPass; ++pass) {
        std::fill_n(S + 1, extent.slots, Vec3{0.0, 0.0, 0.0});
        addInnerFaces(m_faces->inner(), phi, S);
        addBoundaryFaces(m_faces->boundary(), phi, S);
        divideByWeights(S, m_record.m_pWork1Z, extent.slots, phi);
        copyToSlots(m_record, extent, phi);
    }
    for (int c = 1; c <= extent.slots; ++c) {
        g.set(c, phi[c]);
        m_record.m_pWork1Y[c] = S[c].z;  // where the sums of the component that comes last lie
    }
}
