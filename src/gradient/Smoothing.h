#pragma once

#include <optional>

#include "SmoothingFaces.h"

namespace weldline::core {

// Smoothing of several cell arrays over the same taking-part faces, which are packed at the first
// pass. To be made anew when a gradient scheme may have flagged cells.
class Smoothing {
  public:
    explicit Smoothing(CKVR3DWeldLine& record) : m_record(record) {}

    void smooth(double* phi, int nPass);

  private:
    void smoothOnce(double* phi) const;

    CKVR3DWeldLine& m_record;
    std::optional<SmoothingFaces> m_faces;
};

}  // namespace weldline::core
