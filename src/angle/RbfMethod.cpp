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

// On purpose: the smoothed variable, where methods 1 to 3 read the loaded one.
bool isRejected(const CellFields& cells, const double* variable, int a, int b) {
    return cells.zeroGradFlag[a] == 1 || variable[a] <= kEps || variable[b] <= kEps ||
           cells.zeroGradFlag[b] == 1;
}

}  // namespace

void CKVR3DWeldLine::CalNodeVectorAngle_Modified_RBF_Holvex01() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_RBF_Holvex01\n");
    // On purpose: standard output, not the debug file.
    if (isTracing(*this)) std::fflush(stdout);
    chooseGradientSet(*this);
    // On purpose: the field stays in degrees here.
    limitBoundaryAngle(m_BoundaryAngle, 120.0);
    const double cosineLimit = std::cos(m_BoundaryAngle * kPi / 180.0);
    const double smallestAngle = 180.0 - m_TruncateAngle;
    const CellFields cells = cellFields(*this);
    walkFacesOfNodes(*this, [&](int n, int k, int a, int b) {
        if (isRejected(cells, m_pVariable, a, b) || shareAllSigns(cells, a, b)) return;
        if (!pointBothAt(cells, a, b, faceCentreAt(*this, a, k), cosineLimit)) return;
        if (!comeCloser(cells, a, b)) return;
        const double theta = vectorAngle(cells.g[a], cells.g[b]);
        if (theta >= smallestAngle) keepLargest(m_pMeetingAngle[n], theta);
    });
    finishMeetingAngles(*this);
}
