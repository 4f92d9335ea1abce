#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "mesh/Vec3.h"

class CKVR3DFiniteVolumeMesh;
class CKvr3dGV;
class CPartitionFace_DLL;

namespace weldline {

// Chooses the cells from which the value at an inner face is interpolated. For face f between the
// cells a and b, in this order:
//
//  1. a and b;
//  2. the cells around a, then those around b, each slot once: the neighbours (m_ppCellNeighbour,
//     own cells only), then the halo slots across interface faces. Boundary-value slots never take
//     part: they hold no value of their own;
//  3. only cells that the melt has reached (flow variable not below 1e-30), where it has reached a
//     and b. The value 0 of an empty cell is a mark, not a fill time, and would pull the face value
//     down beside trapped air and beside the last front. Where a or b is empty by the flow
//     variable, all cells take part: the calculation reads such a face only if the values came from
//     the other injection of a bi-injection run;
//  4. of more than kMaxStencil cells those nearest to the face centre, a and b always;
//  5. of fewer than kMinStencil cells, as in the corners of tetrahedral meshes, also the cells
//     around those of step 2, the nearest ones up to kMinStencil.
class FaceStencils {
  public:
    // Borrows all arrays; partition may be null (none) and so may the flow variable and the
    // neighbour rows (then every cell counts as reached, and stencils are the two cells).
    FaceStencils(const CKVR3DFiniteVolumeMesh& mesh, const CKvr3dGV* globalVariables,
                 CPartitionFace_DLL* partition);

    Vec3 faceCentre(int face) const;
    Vec3 cellCentre(int slot) const;

    // Upper bound of the stencil size, from the lengths of the rows alone.
    std::size_t largestSize(int face) const;

    // The stencil's cell slots, 1-based; valid until the next call. Faces are 1-based.
    std::span<const int> choose(int face);

  private:
    int firstCell(int face) const;
    int secondCell(int face) const;
    std::span<const int> neighbours(int cell) const;
    std::span<const int> halo(int cell) const;
    bool reached(int slot) const;
    void add(int slot);
    void addHalo(int slot);
    void addAround(int cell);
    void keepNearest(int face, std::size_t count);

    const CKVR3DFiniteVolumeMesh& m_mesh;
    const float* m_value;               // flow variable per slot, or null
    std::vector<std::size_t> m_offset;  // halo slots of own cell c: from m_offset[c] to [c + 1]
    std::vector<int> m_halo;
    std::vector<int> m_seenBy;  // per slot: the last face that considered it
    int m_face = 0;
    bool m_reachedOnly = false;
    std::vector<int> m_stencil;
    std::vector<int> m_ring;         // scratch of choose
    std::vector<int> m_order;        // scratch of keepNearest
    std::vector<double> m_distance;  // scratch of keepNearest
};

}  // namespace weldline
