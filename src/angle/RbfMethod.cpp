// Method 4: the walk of method 2 with a test of its own. Each cell's centre moves a step along its
// flow direction, the steeper cell by half the distance D of the centres, the other by that times
// the ratio of the magnitudes; the pair counts when the moved points are closer than D.

#include <cmath>
#include <cstdio>

#include "CKVR3DWeldLine.h"
#include "CKvr3dGV.h"
#include "FaceWalk.h"
#include "Finishing.h"
#include "PairTests.h"
#include "Preparation.h"
#include "Trace.h"
#include "VectorAngle.h"

using namespace weldline::core;

namespace {

// On purpose: these bounds, not |v - 1| < 0.001, which in binary would let 1.001 in; for every
// other double the two are the same.
bool selectsSecondSet(double v) {
    return v > 0.999 && v < 1.001;
}

void chooseGradientSet(CKVR3DWeldLine& r) {
    if (r.m_GradMethodMFT != 2 && r.m_GradMethodMFT != 3) return;
    const double* gradSetSwitch = r.m_pGV->m_pGradSetSwitch;
    if (gradSetSwitch == nullptr || !selectsSecondSet(*gradSetSwitch)) return;
    const CellVectors first{r.m_pGradX, r.m_pGradY, r.m_pGradZ};
    const CellVectors second{r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z};
    const int slots = extentOf(r).slots;
    for (int c = 1; c <= slots; ++c) first.set(c, second[c]);
}

Vec3 moved(const Vec3& X, const Vec3& g, double magnitude, double step) {
    return {X.x + (g.x / magnitude) * step, X.y + (g.y / magnitude) * step,
            X.z + (g.z / magnitude) * step};
}

// A zero gradient gives a point that is not a number, which is no closer.
bool comeCloser(const CellFields& cells, int a, int b) {
    const Vec3 ga = cells.g[a];
    const Vec3 gb = cells.g[b];
    const double ma = length(ga);
    const double mb = length(gb);
    const double D = length(cells.X[a] - cells.X[b]);
    double fa = 1.0;
    double fb = 1.0;
    if (ma > mb) {
        fb = mb / (ma + kEps);
    } else {
        fa = ma / (mb + kEps);
    }
    const Vec3 PA = moved(cells.X[a], ga, ma, D * 0.5 * fa);
    const Vec3 PB = moved(cells.X[b], gb, mb, D * 0.5 * fb);
    return D > length(PA - PB);
}

// The test of method 4, in the terms of the walk.
class ConvergingPairTest {
  public:
    explicit ConvergingPairTest(const CKVR3DWeldLine& r)
        : m_cells(cellFields(r)),
          m_variable(r.m_pVariable),
          m_cosineLimit(std::cos(r.m_BoundaryAngle * kPi / 180.0)),
          m_smallestAngle(180.0 - r.m_TruncateAngle),
          m_bound(m_smallestAngle) {}

    // On purpose: the smoothed variable, where methods 1 to 3 read the loaded one.
    bool mayMeet(int c) const { return m_cells.zeroGradFlag[c] != 1 && !(m_variable[c] <= kEps); }
    bool mayMeet(int a, int b) const {
        return !m_bound.excludes(m_cells.g[a], m_cells.g[b]) && !shareAllSigns(m_cells, a, b);
    }
    double angle(int a, int b, const Vec3& Q) const {
        if (!pointsAt(m_cells, a, Q, m_cosineLimit) || !pointsAt(m_cells, b, Q, m_cosineLimit) ||
            !comeCloser(m_cells, a, b)) {
            return kNoAngle;
        }
        const double theta = vectorAngle(m_cells.g[a], m_cells.g[b]);
        return theta >= m_smallestAngle ? theta : kNoAngle;
    }

  private:
    CellFields m_cells;
    const double* m_variable;
    double m_cosineLimit;
    double m_smallestAngle;
    AngleBound m_bound;
};

}  // namespace

void CKVR3DWeldLine::CalNodeVectorAngle_Modified_RBF_Holvex01() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_RBF_Holvex01\n");
    // On purpose: standard output, not the debug file.
    if (isTracing(*this)) std::fflush(stdout);
    chooseGradientSet(*this);
    // On purpose: the field stays in degrees here.
    limitBoundaryAngle(m_BoundaryAngle, 120.0);
    walkFacesOfNodes(*this, ConvergingPairTest(*this));
    finishMeetingAngles(*this);
}
