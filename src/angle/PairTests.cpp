#include "PairTests.h"

#include <cmath>

#include "VectorAngle.h"

namespace weldline::core {

namespace {

// Component products of a cell's gradient with the way from its centre to a point.
Vec3 axisProducts(const Vec3& g, const Vec3& d) {
    return {g.x * d.x, g.y * d.y, g.z * d.z};
}

// Both gradients lead to the mid-point within one coordinate plane.
bool planeCounts(double sA, double sB) {
    const bool bothVanish = std::fabs(sA) < kEps && std::fabs(sB) < kEps;
    return !bothVanish && sA > 0.0 && sB > 0.0;
}

// Both gradients lead to the mid-point of the centres, in space and in two of the three coordinate
// planes at least.
bool pointTowardsEachOther(const CellFields& cells, int a, int b) {
    const Vec3 Xa = cells.X[a];
    const Vec3 Xb = cells.X[b];
    const Vec3 M{(Xa.x + Xb.x) * 0.5, (Xa.y + Xb.y) * 0.5, (Xa.z + Xb.z) * 0.5};
    const Vec3 pa = axisProducts(cells.g[a], M - Xa);
    if (!(pa.z + (pa.x + pa.y) > 0.0)) return false;
    const Vec3 pb = axisProducts(cells.g[b], M - Xb);
    if (!(pb.x + pb.y + pb.z > 0.0)) return false;
    const int planes = (planeCounts(pa.x + pa.y, pb.x + pb.y) ? 1 : 0) +
                       (planeCounts(pa.z + pa.y, pb.z + pb.y) ? 1 : 0) +
                       (planeCounts(pa.z + pa.x, pb.z + pb.x) ? 1 : 0);
    return planes >= 2;
}

// A cell without volume compares with every other.
bool haveComparableVolumes(double Va, double Vb, double smallestRatio) {
    if (Va == 0.0 || Vb == 0.0) return true;
    const double ratio = Va / Vb;
    return !(ratio > 1.0 / smallestRatio || ratio < smallestRatio);
}

}  // namespace

CellFields cellFields(const CKVR3DWeldLine& r) {
    return {{r.m_pGradX, r.m_pGradY, r.m_pGradZ},
            {r.m_pXc, r.m_pYc, r.m_pZc},
            r.m_pVolume,
            r.m_pZeroGradFlag};
}

Vec3 faceCentreAt(const CKVR3DWeldLine& r, int a, int k) {
    if (k > r.m_ppCellFace[a][0]) return {0.0, 0.0, 0.0};
    const int type = r.m_ppCellFaceType[a][k];
    const int face = r.m_ppCellFace[a][k];
    if (type == kInnerFace) return faceCentre(r.m_ppInnerFace[face]);
    if (type == kInterfaceFace) return InterfaceFaces(r.m_pPartitionFace).centre(face);
    return {0.0, 0.0, 0.0};
}

// Where L is not negative, a product that is not positive decides without the two roots.
bool pointsAt(const CellFields& cells, int c, const Vec3& Q, double L) {
    const Vec3 g = cells.g[c];
    const Vec3 d = Q - cells.X[c];
    const double product = dot(g, d);
    if (L >= 0.0 && product <= 0.0) return false;
    return product / (length(d) * length(g) + kEps) > L;
}

bool shareAllSigns(const CellFields& cells, int a, int b) {
    const Vec3 ga = cells.g[a];
    const Vec3 gb = cells.g[b];
    return gb.x * ga.x > 0.0 && gb.y * ga.y > 0.0 && gb.z * ga.z > 0.0;
}

void keepLargest(double& kept, double theta) {
    if (theta > kept) kept = theta;
}

MeetingPairTest::MeetingPairTest(const CKVR3DWeldLine& r)
    : m_cells(cellFields(r)),
      m_cosineLimit(r.m_BoundaryAngle),
      m_smallestVolumeRatio(r.m_Volume_Filter),
      m_mayMeet(slotsUpTo(extentOf(r).slots)) {
    const int slots = extentOf(r).slots;
    for (int c = 1; c <= slots; ++c) {
        const double magnitude = length(m_cells.g[c]);
        const bool isRejected = r.m_pVariableOrg[c] <= kEps || m_cells.zeroGradFlag[c] == 1 ||
                                magnitude > r.m_GradMagUpper || magnitude < r.m_GradMagLower;
        m_mayMeet[static_cast<std::size_t>(c)] = isRejected ? 0 : 1;
    }
}

bool MeetingPairTest::pointsAt(int c, const Vec3& Q) const {
    return core::pointsAt(m_cells, c, Q, m_cosineLimit);
}

bool MeetingPairTest::mayMeet(int a, int b) const {
    return !shareAllSigns(m_cells, a, b) && pointTowardsEachOther(m_cells, a, b) &&
           haveComparableVolumes(m_cells.V[a], m_cells.V[b], m_smallestVolumeRatio);
}

double MeetingPairTest::angle(int a, int b) const {
    return vectorAngle(m_cells.g[a], m_cells.g[b]);
}

double MeetingPairTest::angle(int a, int b, const Vec3& Q) const {
    return pointsAt(a, Q) && pointsAt(b, Q) ? angle(a, b) : kNoAngle;
}

}  // namespace weldline::core
