#include "PairTests.h"

#include <cmath>

#include "VectorAngle.h"

namespace weldline::core {

namespace {

double cosineTowards(const CellFields& cells, int c, const Vec3& Q) {
    const Vec3 g = cells.g[c];
    const Vec3 d = Q - cells.X[c];
    return dot(g, d) / (length(d) * length(g) + kEps);
}

// Component products of a cell's gradient with the way from its centre to a point.
Vec3 axisProducts(const Vec3& g, const Vec3& d) {
    return {g.x * d.x, g.y * d.y, g.z * d.z};
}

// Both gradients lead to the mid-point within one coordinate plane.
bool planeCounts(double sA, double sB) {
    const bool bothVanish = std::fabs(sA) < kEps && std::fabs(sB) < kEps;
    return !bothVanish && sA > 0.0 && sB > 0.0;
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

bool pointBothAt(const CellFields& cells, int a, int b, const Vec3& Q, double L) {
    return cosineTowards(cells, a, Q) > L && cosineTowards(cells, b, Q) > L;
}

bool shareAllSigns(const CellFields& cells, int a, int b) {
    const Vec3 ga = cells.g[a];
    const Vec3 gb = cells.g[b];
    return gb.x * ga.x > 0.0 && gb.y * ga.y > 0.0 && gb.z * ga.z > 0.0;
}

void keepLargest(double& kept, double theta) {
    if (theta > kept) kept = theta;
}

MeetingPairTest::MeetingPairTest(CKVR3DWeldLine& r)
    : m_cells(cellFields(r)),
      m_loaded(r.m_pVariableOrg),
      m_cosineLimit(r.m_BoundaryAngle),
      m_smallestVolumeRatio(r.m_Volume_Filter),
      m_largestGradient(r.m_GradMagUpper),
      m_smallestGradient(r.m_GradMagLower),
      m_angle(r.m_pMeetingAngle) {}

bool MeetingPairTest::isRejected(int a, int b) const {
    if (m_loaded[a] <= kEps || m_loaded[b] <= kEps) return true;
    if (m_cells.V[a] != 0.0 && m_cells.V[b] != 0.0) {
        const double r = m_cells.V[a] / m_cells.V[b];
        if (r > 1.0 / m_smallestVolumeRatio || r < m_smallestVolumeRatio) return true;
    }
    if (m_cells.zeroGradFlag[a] == 1 || m_cells.zeroGradFlag[b] == 1) return true;
    const double ma = length(m_cells.g[a]);
    const double mb = length(m_cells.g[b]);
    if (ma > m_largestGradient || mb > m_largestGradient) return true;
    return ma < m_smallestGradient || mb < m_smallestGradient;
}

// Both gradients lead to the mid-point of the centres, in space and in two of the three coordinate
// planes at least.
bool MeetingPairTest::pointTowardsEachOther(int a, int b) const {
    const Vec3 Xa = m_cells.X[a];
    const Vec3 Xb = m_cells.X[b];
    const Vec3 M{(Xa.x + Xb.x) * 0.5, (Xa.y + Xb.y) * 0.5, (Xa.z + Xb.z) * 0.5};
    const Vec3 pa = axisProducts(m_cells.g[a], M - Xa);
    const Vec3 pb = axisProducts(m_cells.g[b], M - Xb);
    if (!(pa.z + (pa.x + pa.y) > 0.0 && pb.x + pb.y + pb.z > 0.0)) return false;
    const int planes = (planeCounts(pa.x + pa.y, pb.x + pb.y) ? 1 : 0) +
                       (planeCounts(pa.z + pa.y, pb.z + pb.y) ? 1 : 0) +
                       (planeCounts(pa.z + pa.x, pb.z + pb.x) ? 1 : 0);
    return planes >= 2;
}

void MeetingPairTest::judge(int node, int a, int b, const Vec3& Q) const {
    if (isRejected(a, b) || !pointTowardsEachOther(a, b)) return;
    if (!pointBothAt(m_cells, a, b, Q, m_cosineLimit) || shareAllSigns(m_cells, a, b)) return;
    keepLargest(m_angle[node], vectorAngle(m_cells.g[a], m_cells.g[b]));
}

}  // namespace weldline::core
