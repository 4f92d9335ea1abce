// Stencils of inner faces: the two cells and the cells around them, see FaceStencils.h.

#include "FaceStencils.h"

#include <algorithm>
#include <numeric>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKvr3dGV.h"
#include "CPartitionFace_DLL.h"
#include "FaceWeights.h"

namespace weldline {

namespace {

constexpr float kReached = 1e-30F;

std::span<const int> rowMembers(const int* row) {
    if (row == nullptr || row[0] <= 0) return {};
    return {row + 1, static_cast<std::size_t>(row[0])};
}

}  // namespace

FaceStencils::FaceStencils(const CKVR3DFiniteVolumeMesh& mesh, const CKvr3dGV* globalVariables,
                           CPartitionFace_DLL* partition)
    : m_mesh(mesh),
      m_value(globalVariables == nullptr ? nullptr : globalVariables->m_pFlowVariable),
      m_offset(static_cast<std::size_t>(mesh.m_nCV) + 2, 0),
      m_seenBy(static_cast<std::size_t>(mesh.m_nCV_Total) + 1, 0) {
    const int interfaces = partition == nullptr ? 0 : partition->NParInterFace();
    if (interfaces <= 0) return;
    // Counting sort of the interface faces by own cell.
    const int* own = partition->ijParCV();
    const int* far = partition->ijPar();
    for (int i = 1; i <= interfaces; ++i) ++m_offset[static_cast<std::size_t>(own[i]) + 1];
    std::partial_sum(m_offset.begin(), m_offset.end(), m_offset.begin());
    m_halo.resize(static_cast<std::size_t>(interfaces));
    std::vector<std::size_t> next(m_offset);
    for (int i = 1; i <= interfaces; ++i) m_halo[next[static_cast<std::size_t>(own[i])]++] = far[i];
}

Vec3 FaceStencils::faceCentre(int face) const {
    const double* row = m_mesh.m_ppInnerFace[face];
    return {row[6], row[7], row[8]};
}

Vec3 FaceStencils::cellCentre(int slot) const {
    return {m_mesh.m_pXc[slot], m_mesh.m_pYc[slot], m_mesh.m_pZc[slot]};
}

int FaceStencils::firstCell(int face) const {
    return static_cast<int>(m_mesh.m_ppInnerFace[face][1]);
}

int FaceStencils::secondCell(int face) const {
    return static_cast<int>(m_mesh.m_ppInnerFace[face][2]);
}

std::span<const int> FaceStencils::neighbours(int cell) const {
    if (m_mesh.m_ppCellNeighbour == nullptr) return {};
    return rowMembers(m_mesh.m_ppCellNeighbour[cell]);
}

std::span<const int> FaceStencils::halo(int cell) const {
    const std::size_t begin = m_offset[static_cast<std::size_t>(cell)];
    const std::size_t end = m_offset[static_cast<std::size_t>(cell) + 1];
    return std::span<const int>(m_halo).subspan(begin, end - begin);
}

bool FaceStencils::reached(int slot) const {
    return m_value == nullptr || !(m_value[slot] < kReached);
}

std::size_t FaceStencils::largestSize(int face) const {
    const int cells[] = {firstCell(face), secondCell(face)};
    std::size_t size = 2;
    for (const int cell : cells) size += neighbours(cell).size() + halo(cell).size();
    return std::clamp<std::size_t>(size, kMinStencil, kMaxStencil);
}

void FaceStencils::add(int slot) {
    int& seenBy = m_seenBy[static_cast<std::size_t>(slot)];
    if (seenBy == m_face || (m_reachedOnly && !reached(slot))) return;
    seenBy = m_face;
    m_stencil.push_back(slot);
}

// A host may give one cell across the interface a slot per interface face: it counts once.
void FaceStencils::addHalo(int slot) {
    const Vec3 centre = cellCentre(slot);
    for (const int member : m_stencil)
        if (norm(cellCentre(member) - centre) == 0.0) return;
    add(slot);
}

// Equal distances keep the order in which the cells were found.
void FaceStencils::keepNearest(int face, std::size_t count) {
    const Vec3 centre = faceCentre(face);
    m_distance.clear();
    for (const int slot : m_stencil) {
        const Vec3 d = cellCentre(slot) - centre;
        m_distance.push_back(dot(d, d));
    }
    m_order.resize(m_stencil.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    const auto nearer = [this](int i, int j) {
        const double di = m_distance[static_cast<std::size_t>(i)];
        const double dj = m_distance[static_cast<std::size_t>(j)];
        return di < dj || (di == dj && i < j);
    };
    const auto last = m_order.begin() + static_cast<std::ptrdiff_t>(count);
    std::partial_sort(m_order.begin() + 2, last, m_order.end(), nearer);
    std::sort(m_order.begin() + 2, last);
    for (std::size_t i = 2; i < count; ++i)
        m_stencil[i] = m_stencil[static_cast<std::size_t>(m_order[i])];
    m_stencil.resize(count);
}

void FaceStencils::addAround(int cell) {
    for (const int slot : neighbours(cell))
        if (slot <= m_mesh.m_nCV) add(slot);
    for (const int slot : halo(cell)) addHalo(slot);
}

std::span<const int> FaceStencils::choose(int face) {
    const int cells[] = {firstCell(face), secondCell(face)};
    m_face = face;
    m_reachedOnly = reached(cells[0]) && reached(cells[1]);
    m_stencil.clear();
    for (const int cell : cells) add(cell);
    for (const int cell : cells) addAround(cell);
    if (m_stencil.size() > kMaxStencil) keepNearest(face, kMaxStencil);
    if (m_stencil.size() >= kMinStencil) return m_stencil;

    m_ring.assign(m_stencil.begin() + 2, m_stencil.end());
    for (const int slot : m_ring)
        if (slot <= m_mesh.m_nCV) addAround(slot);
    if (m_stencil.size() > kMinStencil) keepNearest(face, kMinStencil);
    return m_stencil;
}

}  // namespace weldline
