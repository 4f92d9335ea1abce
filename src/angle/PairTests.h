#pragma once

#include <limits>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "Extent.h"
#include "FaceViews.h"

// Do two cells around a node hold melt streams that meet there? The pieces that the pair tests
// share, and the test of methods 1 to 3.
//
// A pair is accepted when all its conditions hold, so that they may be asked in any order: what is
// cheap or concerns one cell alone comes first, and outside of the loops over pairs.

namespace weldline::core {

// What a pair test reads of the record. Cells are 1-based.
struct CellFields {
    CellVectors g;  // gradient: the flow direction
    CellVectors X;  // centre
    const double* V;
    const int* zeroGradFlag;
};
CellFields cellFields(const CKVR3DWeldLine& record);

// Centre of the face at position k of cell a's lists. On purpose: boundary faces have the point
// (0, 0, 0), and so has a position beyond the lists.
Vec3 faceCentreAt(const CKVR3DWeldLine& record, int a, int k);

// Does the gradient of a cell point at Q within the cone whose cosine is L? Strictly.
bool pointsAt(const CellFields& cells, int c, const Vec3& Q, double L);

// Do the gradients share the sign of all three components?
bool shareAllSigns(const CellFields& cells, int a, int b);

// The angle of a pair that is not accepted.
inline constexpr double kNoAngle = std::numeric_limits<double>::quiet_NaN();

// Keeps the largest accepted angle of a node. An angle that is not a number is never kept.
void keepLargest(double& kept, double theta);

// The test of methods 1 to 3: both cells filled, of comparable volume, with gradients of reasonable
// magnitude that point towards each other and at Q.
class MeetingPairTest {
  public:
    explicit MeetingPairTest(const CKVR3DWeldLine& record);

    // What concerns one cell alone: filled, not flagged, of reasonable magnitude.
    bool mayMeet(int c) const { return m_mayMeet[static_cast<std::size_t>(c)] != 0; }
    bool pointsAt(int c, const Vec3& Q) const;
    // What concerns the pair alone, wherever it may meet.
    bool mayMeet(int a, int b) const;

    // The angle of a pair that passes all of them for the same Q.
    double angle(int a, int b) const;
    // The same after the test for Q: kNoAngle where one of the gradients does not point at it.
    double angle(int a, int b, const Vec3& Q) const;

  private:
    CellFields m_cells;
    double m_cosineLimit;
    double m_smallestVolumeRatio;
    std::vector<char> m_mayMeet;  // per cell slot
};

}  // namespace weldline::core
