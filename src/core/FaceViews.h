#pragma once

#include <algorithm>

#include "AskFor.h"
#include "CKVR3DWeldLine.h"
#include "CPartitionFace_DLL.h"
#include "Vec3.h"

// Views of the host's face tables: the border between the record's names and the short names that
// the kernels use. They hold addresses only. All face numbers are 1-based.

namespace weldline::core {

// Face types in the cells' face lists; any other value is a boundary face.
inline constexpr int kInnerFace = 0;
inline constexpr int kInterfaceFace = 101;

// Cell numbers stand in the record as reals: 12.9 means cell 12.
inline int firstCell(const double* face) {
    return static_cast<int>(face[1]);
}
inline int secondCell(const double* face) {
    return static_cast<int>(face[2]);
}
inline Vec3 areaVector(const double* face) {
    return {face[3], face[4], face[5]};
}
inline Vec3 faceCentre(const double* face) {
    return {face[6], face[7], face[8]};
}

struct InnerFaces {
    int count;
    double** record;
    const double* lambda;  // weight of the second cell

    // The record of a face, for loops over all of them: it lies behind an address, which keeps the
    // processor from fetching the next ones by itself, so a later one is asked for already.
    const double* next(int face) const {
        constexpr int kAhead = 16;
        askFor(record[std::min(face + kAhead, count)] + 4);
        return record[face];
    }
};

inline InnerFaces innerFaces(const CKVR3DWeldLine& r) {
    return {r.m_nInnerFace, r.m_ppInnerFace, r.m_pInnerFaceLambda};
}

// One group of boundary faces. On purpose: the outlet group has no such view, so that no step can
// use it.
struct BoundaryGroup {
    int count;
    const int* cell;
    const int* slot;
    const double *xc, *yc, *zc;
    const double *Sx, *Sy, *Sz;

    Vec3 centre(int face) const { return {xc[face], yc[face], zc[face]}; }
    Vec3 area(int face) const { return {Sx[face], Sy[face], Sz[face]}; }
};

inline BoundaryGroup wallFaces(const CKVR3DWeldLine& r) {
    return {r.m_nWallFace,   r.m_pWallFaceCV, r.m_pWallFaceBnd, r.m_pWallFaceXc, r.m_pWallFaceYc,
            r.m_pWallFaceZc, r.m_pWallFaceSx, r.m_pWallFaceSy,  r.m_pWallFaceSz};
}

inline BoundaryGroup inletFaces(const CKVR3DWeldLine& r) {
    return {r.m_nInletFace,   r.m_pInletFaceCV, r.m_pInletFaceBnd,
            r.m_pInletFaceXc, r.m_pInletFaceYc, r.m_pInletFaceZc,
            r.m_pInletFaceSx, r.m_pInletFaceSy, r.m_pInletFaceSz};
}

inline BoundaryGroup symmetryFaces(const CKVR3DWeldLine& r) {
    return {r.m_nSymmFace,   r.m_pSymmFaceCV, r.m_pSymmFaceBnd, r.m_pSymmFaceXc, r.m_pSymmFaceYc,
            r.m_pSymmFaceZc, r.m_pSymmFaceSx, r.m_pSymmFaceSy,  r.m_pSymmFaceSz};
}

// Faces to the neighbouring partitions. The host is asked anew at each access, because it may
// answer with another array each time. Without a host object there are no such faces.
class InterfaceFaces {
  public:
    explicit InterfaceFaces(CPartitionFace_DLL* host) : m_host(host) {}

    int count() const { return m_host == nullptr ? 0 : m_host->NParInterFace(); }
    int ownCell(int face) const { return m_host->ijParCV()[face]; }
    int haloSlot(int face) const { return m_host->ijPar()[face]; }
    double lambda(int face) const { return m_host->ParInterFace_Lamda()[face]; }
    Vec3 area(int face) const {
        return {m_host->ijParSx()[face], m_host->ijParSy()[face], m_host->ijParSz()[face]};
    }
    Vec3 centre(int face) const {
        return {m_host->ijParxc()[face], m_host->ijParyc()[face], m_host->ijParzc()[face]};
    }

  private:
    CPartitionFace_DLL* m_host;
};

}  // namespace weldline::core
