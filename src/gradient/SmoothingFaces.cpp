#include "SmoothingFaces.h"

#include "FaceViews.h"

namespace weldline::core {

namespace {

SmoothedInnerFaces roomFor(int faces, ArrayOwner& memory) {
    const std::size_t count = slotsUpTo(faces);
    return {0, memory.zeros<int>(count), memory.zeros<int>(count), memory.zeros<double>(count),
            memory.zeros<double>(count)};
}

void packInnerFaces(const InnerFaces& faces, const Participation& part, SmoothedInnerFaces& packed,
                    double* W) {
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.next(f);
        const int a = firstCell(face);
        const int b = secondCell(face);
        if (!part.takesPart(a, b)) continue;
        const double area = length(areaVector(face));
        packed.a[packed.count] = a;
        packed.b[packed.count] = b;
        packed.lambda[packed.count] = faces.lambda[f];
        packed.area[packed.count] = area;
        ++packed.count;
        W[a] += area;
        W[b] += area;
    }
}

void addInterfaceWeights(const InterfaceFaces& faces, const Participation& part, double* W) {
    for (int i = 1; i <= faces.count(); ++i) {
        const int a = faces.ownCell(i);
        const int b = faces.haloSlot(i);
        if (!part.takesPart(a, b)) continue;
        const double area = length(faces.area(i));
        W[a] += area;
        W[b] += area;
    }
}

void packBoundaryFaces(const BoundaryGroup& faces, const Participation& part,
                       std::vector<SmoothedBoundaryFace>& packed, double* W) {
    for (int i = 1; i <= faces.count; ++i) {
        const int a = faces.cell[i];
        const int b = faces.slot[i];
        if (!part.takesPart(a, b)) continue;
        const double area = length(faces.area(i));
        packed.push_back({a, b, area});
        W[a] += area;
        W[b] += area;
    }
}

}  // namespace

Participation participation(const CKVR3DWeldLine& r) {
    return {r.m_pVariableOrg, r.m_pZeroGradFlag, extentOf(r)};
}

SmoothingFaces::SmoothingFaces(CKVR3DWeldLine& r) : m_inner(roomFor(r.m_nInnerFace, m_memory)) {
    const Participation part = participation(r);
    double* W = r.m_pWork1Z;
    for (int c = 1; c <= part.extent.slots; ++c) W[c] = 0.0;
    packInnerFaces(innerFaces(r), part, m_inner, W);
    addInterfaceWeights(InterfaceFaces(r.m_pPartitionFace), part, W);
    packBoundaryFaces(inletFaces(r), part, m_boundary, W);
    packBoundaryFaces(symmetryFaces(r), part, m_boundary, W);
    packBoundaryFaces(wallFaces(r), part, m_boundary, W);
}

}  // namespace weldline::core
