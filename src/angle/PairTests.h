#pragma once

#include "CKVR3DWeldLine.h"
#include "Extent.h"
#include "FaceViews.h"

// Do two cells around a node hold melt streams that meet there? The pieces that the pair tests
// share, and the two tests of methods 1 to 3.

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

// Do both gradients point at Q within the cone whose cosine is L? Strictly, a first.
bool pointBothAt(const CellFields& cells, int a, int b, const Vec3& Q, double L);

// Do the gradients share the sign of all three components?
bool shareAllSigns(const CellFields& cells, int a, int b);

// Keeps the largest accepted angle of a node. An angle that is not a number is never kept.
void keepLargest(double& kept, double theta);

// The test of methods 1 to 3: both cells filled, of comparable volume, with gradients of reasonable
// magnitude that point towards each other and at Q. An accepted pair raises the angle of the node.
class MeetingPairTest {
  public:
    explicit MeetingPairTest(CKVR3DWeldLine& record);

    void judge(int node, int a, int b, const Vec3& Q) const;

  private:
    bool isRejected(int a, int b) const;
    bool pointTowardsEachOther(int a, int b) const;

    CellFields m_cells;
    const double* m_loaded;  // flow variable before any smoothing
    double m_cosineLimit;
    double m_smallestVolumeRatio;
    double m_largestGradient;
    double m_smallestGradient;
    double* m_angle;
};

}  // namespace weldline::core
