#pragma once

#include <optional>

#include "SmoothingFaces.h"
#include "SmoothingRows.h"
#include "Vec3.h"

namespace weldline::core {

// Smoothing of several cell arrays over the same taking-part faces, which are packed at the first
// pass. To be made anew when a gradient scheme may have flagged cells.
class Smoothing {
  public:
    explicit Smoothing(CKVR3DWeldLine& record) : m_record(record) {}

    void smooth(double* phi, int nPass);

    // The components x, y and z of a gradient set, one after another. Where there is no host object
    // that could see in which order, the three go through each pass together: the faces, most of
    // what a pass reads, are then read once instead of three times. Where the mesh is scattered, by
    // rows.
    void smooth(const CellVectors& g, int nPass);

  private:
    void pack();
    void packForSets();
    void smoothOnce(double* phi) const;
    void smoothTogether(const CellVectors& g, int nPass);
    void smoothByFaces(const CellVectors& g, int nPass);

    CKVR3DWeldLine& m_record;
    std::optional<SmoothingFaces> m_faces;
    std::optional<SmoothingRows> m_rows;
    ArrayOwner m_memory;
    Vec3* m_vectors = nullptr;     // the set, cell by cell
    Vec3* m_vectorSums = nullptr;  // its sums S
};

}  // namespace weldline::core
