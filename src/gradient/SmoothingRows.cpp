// Smoothing by rows: phi[c] = S[c] / (W[c] + 1e-30) as in Smoothing.cpp, S[c] summed slot by slot
// instead of face by face.

#include "SmoothingRows.h"

#include <cstdint>
#include <cstdlib>
#include <utility>

namespace weldline::core {

namespace {

// On purpose: a boundary face is an inner one whose slot has the whole weight, and its cell the
// weight 0.0, so that an infinite or undefined value there makes the sum undefined.
constexpr double kBoundaryLambda = 1.0;

// Calls visit(a, b, lambda, area) for each face in the order of the sums.
template <class Visit>
void visitFaces(const SmoothingFaces& faces, Visit visit) {
    const SmoothedInnerFaces& inner = faces.inner();
    for (std::size_t i = 0; i < inner.count; ++i) {
        visit(inner.a[i], inner.b[i], inner.lambda[i], inner.area[i]);
    }
    for (const SmoothedBoundaryFace& f : faces.boundary()) {
        visit(f.cell, f.slot, kBoundaryLambda, f.area);
    }
}

Rows<int> neighboursOfSlots(const SmoothingFaces& faces, int slots) {
    Rows<int> neighbours(slots);
    visitFaces(faces, [&](int a, int b, double, double) {
        neighbours.count(a);
        neighbours.count(b);
    });
    neighbours.makeRoom();
    visitFaces(faces, [&](int a, int b, double, double) {
        neighbours.add(a, b);
        neighbours.add(b, a);
    });
    return neighbours;
}

}  // namespace

// Two numbers by chance are a third of the slots apart in the mean. Numbered layer by layer, the
// cells of a face are apart by one layer at most, by a third of one in the mean.
bool isScattered(const SmoothedInnerFaces& faces, int slots) {
    std::int64_t apart = 0;
    for (std::size_t i = 0; i < faces.count; ++i) apart += std::abs(faces.a[i] - faces.b[i]);
    return apart > static_cast<std::int64_t>(faces.count) * slots / 8;
}

SmoothingRows::SmoothingRows(CKVR3DWeldLine& record, const SmoothingFaces& faces)
    : m_record(record), m_extent(extentOf(record)), m_terms(m_extent.slots) {
    const std::size_t size = slotsUpTo(m_extent.slots);
    ArrayOwner scratch;
    int* placeOf = scratch.zeros<int>(size);
    m_weights = m_memory.zeros<double>(size);
    placeSlots(neighboursOfSlots(faces, m_extent.slots), placeOf);
    placeTerms(faces, placeOf);
    placeCopies(wallFaces(record), placeOf);
    placeCopies(symmetryFaces(record), placeOf);
    m_values = m_memory.zeros<Vec3>(size);
    m_next = m_memory.zeros<Vec3>(size);
}

void SmoothingRows::placeSlots(const Rows<int>& neighbours, int* placeOf) {
    m_slotAt = breadthFirst(neighbours, m_extent.slots, m_memory);
    for (int place = 1; place <= m_extent.slots; ++place) {
        const int slot = m_slotAt[place];
        placeOf[slot] = place;
        m_weights[place] = m_record.m_pWork1Z[slot];
        m_terms.count(place, neighbours[slot].size());
    }
    m_terms.makeRoom();
}

void SmoothingRows::placeTerms(const SmoothingFaces& faces, const int* placeOf) {
    visitFaces(faces, [&](int a, int b, double lambda, double area) {
        const Term term{placeOf[a], placeOf[b], lambda, area};
        m_terms.add(term.a, term);
        m_terms.add(term.b, term);
    });
}

void SmoothingRows::placeCopies(const BoundaryGroup& faces, const int* placeOf) {
    for (int i = 1; i <= faces.count; ++i) {
        const int slot = faces.slot[i];
        const int cell = faces.cell[i];
        if (m_extent.holds(cell, slot)) m_copies.push_back({placeOf[slot], placeOf[cell]});
    }
}

template <class Take>
void SmoothingRows::visitSums(const Vec3* phi, Take take) const {
    for (int place = 1; place <= m_extent.slots; ++place) {
        Vec3 S{0.0, 0.0, 0.0};
        for (const Term& t : m_terms[place]) {
            S = S + (phi[t.a] * (1.0 - t.lambda) + phi[t.b] * t.lambda) * t.area;
        }
        take(place, S);
    }
}

void SmoothingRows::pass(const Vec3* phi, Vec3* next) const {
    visitSums(phi, [&](int place, const Vec3& S) { next[place] = S / (m_weights[place] + kEps); });
    for (const Copy& copy : m_copies) next[copy.slot] = next[copy.cell];
}

void SmoothingRows::smooth(const CellVectors& g, int nPass) {
    for (int place = 1; place <= m_extent.slots; ++place) m_values[place] = g[m_slotAt[place]];
    for (int k = 1; k <= nPass; ++k) {
        pass(m_values, m_next);
        std::swap(m_values, m_next);
    }
    for (int place = 1; place <= m_extent.slots; ++place) g.set(m_slotAt[place], m_values[place]);
    // The sums of the component that comes last lie where smoothing one after another leaves them.
    visitSums(m_next, [&](int place, const Vec3& S) { m_record.m_pWork1Y[m_slotAt[place]] = S.z; });
}

}  // namespace weldline::core
