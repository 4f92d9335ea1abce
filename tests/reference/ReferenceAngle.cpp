// The rules that the meeting-angle methods share: angle, filters, pair tests, finishing.
#include <cmath>

#include "Reference.h"

namespace weldline::reference {

namespace {

constexpr double pi = 3.14159265;
constexpr double eps = 1e-30;

using Vector = Reference::Vector;

Vector operator-(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

double dot(const Vector& a, const Vector& b) {
    return (a.x * b.x + a.y * b.y) + a.z * b.z;
}

double length(const Vector& v) {
    return std::sqrt((v.x * v.x + v.y * v.y) + v.z * v.z);
}

int sameSigns(const Vector& a, const Vector& b) {
    int count = 0;
    if (b.x * a.x > 0.0) ++count;
    if (b.y * a.y > 0.0) ++count;
    if (b.z * a.z > 0.0) ++count;
    return count;
}

// Whether the plane counts: both sums point to the mid-point and are not both negligible.
bool planeCounts(double sumA, double sumB) {
    const bool negligible = std::fabs(sumA) < eps && std::fabs(sumB) < eps;
    return !negligible && sumA > 0.0 && sumB > 0.0;
}

}  // namespace

Reference::Vector Reference::gradient(int cell) const {
    return {m_pGradX[cell], m_pGradY[cell], m_pGradZ[cell]};
}

Reference::Vector Reference::centre(int cell) const {
    return {m_bound.m_pXc[cell], m_bound.m_pYc[cell], m_bound.m_pZc[cell]};
}

Reference::Vector Reference::faceCentre(int cell, int position) {
    if (position > m_bound.m_ppCellFace[cell][0]) {
        met(Event::positionBeyondFaceList);
        return {0.0, 0.0, 0.0};
    }
    const int type = m_bound.m_ppCellFaceType[cell][position];
    const int face = m_bound.m_ppCellFace[cell][position];
    if (type == 0) {
        const double* row = m_bound.m_ppInnerFace[face];
        return {row[6], row[7], row[8]};
    }
    if (type == 101) {
        return {m_pPartitionFace->ijParxc()[face], m_pPartitionFace->ijParyc()[face],
                m_pPartitionFace->ijParzc()[face]};
    }
    return {0.0, 0.0, 0.0};
}

double Reference::angle(int a, int b) const {
    const Vector ga = gradient(a);
    const Vector gb = gradient(b);
    double cosine = dot(gb, ga) / (length(gb) * length(ga) + eps);
    if (cosine > 1.0) cosine = 1.0;
    if (cosine < -1.0) cosine = -1.0;
    return std::acos(cosine) * 180.0 / pi;
}

void Reference::boundaryAngleToCosine(double defaultAngle) {
    if (m_BoundaryAngle < 0.0) m_BoundaryAngle = defaultAngle;
    if (m_BoundaryAngle >= 179.999999) m_BoundaryAngle = 179.999999;
    m_BoundaryAngle = std::cos(m_BoundaryAngle / 180.0 * pi);
}

void Reference::gradientLimits() {
    double largest = 0.0;
    double sum = 0.0;
    for (int c = 1; c <= ownCells(); ++c) {
        double m = length(gradient(c));
        if (m < 1e-20) m = 1e-20;
        if (m > largest) largest = m;
        sum = sum + m;
    }
    m_GradMagUpper = largest * 0.99;
    m_GradMagLower = sum / ownCells() * m_GradMeanFactor * m_GradValueFilterPara;
}

bool Reference::rejected(int a, int b) const {
    int reasons = 0;
    if (m_pVariableOrg[a] <= eps || m_pVariableOrg[b] <= eps) ++reasons;
    const double va = m_bound.m_pVolume[a];
    const double vb = m_bound.m_pVolume[b];
    if (va != 0.0 && vb != 0.0) {
        const double ratio = va / vb;
        if (ratio > 1.0 / m_Volume_Filter) ++reasons;
        if (ratio < m_Volume_Filter) ++reasons;
    }
    if (m_pZeroGradFlag[a] == 1) ++reasons;
    if (m_pZeroGradFlag[b] == 1) ++reasons;
    const double ma = length(gradient(a));
    const double mb = length(gradient(b));
    if (ma > m_GradMagUpper || mb > m_GradMagUpper) ++reasons;
    if (ma < m_GradMagLower || mb < m_GradMagLower) ++reasons;
    return reasons != 0;
}

bool Reference::pointsAt(const Vector& point, int a, int b, double limit) const {
    const Vector toA = point - centre(a);
    const Vector ga = gradient(a);
    const double cosA = dot(ga, toA) / (length(toA) * length(ga) + eps);
    if (!(cosA > limit)) {
        return false;
    }
    const Vector toB = point - centre(b);
    const Vector gb = gradient(b);
    const double cosB = dot(gb, toB) / (length(toB) * length(gb) + eps);
    return cosB > limit;
}

// The direction tests and the cone test against the point.
bool Reference::pairMeets(const Vector& point, int a, int b) {
    const Vector xa = centre(a);
    const Vector xb = centre(b);
    const Vector middle = {(xa.x + xb.x) * 0.5, (xa.y + xb.y) * 0.5, (xa.z + xb.z) * 0.5};
    const Vector da = middle - xa;
    const Vector db = middle - xb;
    const Vector ga = gradient(a);
    const Vector gb = gradient(b);
    const double ax = ga.x * da.x, ay = ga.y * da.y, az = ga.z * da.z;
    const double bx = gb.x * db.x, by = gb.y * db.y, bz = gb.z * db.z;
    const bool towards = (az + (ax + ay) > 0.0) && ((bx + by) + bz > 0.0);
    int planes = 0;
    if (planeCounts(ax + ay, bx + by)) ++planes;
    if (planeCounts(az + ay, bz + by)) ++planes;
    if (planeCounts(az + ax, bz + bx)) ++planes;
    const bool inCone = pointsAt(point, a, b, m_BoundaryAngle);
    return towards && planes >= 2 && inCone && sameSigns(ga, gb) < 3;
}

void Reference::keepLargest(int node, double theta) {
    if (theta > m_pMeetingAngle[node]) {
        m_pMeetingAngle[node] = theta;
    }
}

void Reference::nodePointPairTest(int node, int a, int b) {
    const Vector point = {m_bound.m_pNodeX[node], m_bound.m_pNodeY[node], m_bound.m_pNodeZ[node]};
    if (!rejected(a, b) && pairMeets(point, a, b)) {
        met(Event::acceptedNodePoint);
        keepLargest(node, angle(a, b));
    }
}

void Reference::facePointPairTest(int node, int position, int a, int b) {
    const Vector point = faceCentre(a, position);
    if (!rejected(a, b) && pairMeets(point, a, b)) {
        met(Event::acceptedFacePoint);
        if (b > m_nCV) met(Event::acceptedAcrossPartition);
        keepLargest(node, angle(a, b));
    }
}

// Method 4: the pair counts if a step along their flow brings the two centres closer.
void Reference::convergingPairTest(int node, int position, int a, int b) {
    if (m_pZeroGradFlag[a] == 1 || m_pZeroGradFlag[b] == 1) return;
    if (m_pVariable[a] <= eps || m_pVariable[b] <= eps) return;
    const double limit = std::cos(m_BoundaryAngle * pi / 180.0);
    const bool inCone = pointsAt(faceCentre(a, position), a, b, limit);
    const Vector ga = gradient(a);
    const Vector gb = gradient(b);
    const double ma = length(ga);
    const double mb = length(gb);
    const Vector xa = centre(a);
    const Vector xb = centre(b);
    const double distance = length(xa - xb);
    double fa = 1.0;
    double fb = 1.0;
    if (ma > mb) {
        fb = mb / (ma + eps);
    } else {
        fa = ma / (mb + eps);
    }
    const double sa = distance * 0.5 * fa;
    const double sb = distance * 0.5 * fb;
    const Vector pa = {xa.x + (ga.x / ma) * sa, xa.y + (ga.y / ma) * sa, xa.z + (ga.z / ma) * sa};
    const Vector pb = {xb.x + (gb.x / mb) * sb, xb.y + (gb.y / mb) * sb, xb.z + (gb.z / mb) * sb};
    const bool converging = distance > length(pa - pb);
    const double theta = angle(a, b);
    if (converging && theta >= 180.0 - m_TruncateAngle && sameSigns(ga, gb) < 3 && inCone) {
        met(Event::acceptedConverging);
        if (b > m_nCV) met(Event::acceptedAcrossPartition);
        keepLargest(node, theta);
    }
}

void Reference::truncateAngle() {
    trace("calWeldLine: truncateAngle\n");
    const double T = m_TruncateAngle;
    for (int n = 1; n <= nodes(); ++n) {
        if (m_pMeetingAngle[n] >= T) m_pMeetingAngle[n] = 180.0;
    }
    for (int n = 1; n <= nodes(); ++n) {
        if (m_pMeetingAngle[n] > T) {
            continue;
        }
        int neighbours = 0;
        const std::vector<int> cells = cellsOfNode(n);
        for (int i = 1; i <= cells[0]; ++i) {
            const int c = cells[i];
            if (m_bound.m_pVolume[c] == 0.0) continue;
            const int* row = m_bound.m_ppCellNode[c];
            for (int k = 1; k <= row[0]; ++k) {
                if (row[k] > nodes()) continue;
                if (row[k] != n && m_pMeetingAngle[row[k]] < T) ++neighbours;
            }
        }
        if (neighbours == 0) {
            met(Event::isolatedNodeErased);
            m_pMeetingAngle[n] = 180.0;
        }
    }
}

void Reference::overrideByCellState() {
    for (int c = 1; c <= ownCells(); ++c) {
        if (m_pCellState[c] >= 1 || m_pCellState[c] == -1) {
            const int* row = m_bound.m_ppCellNode[c];
            for (int k = 1; k <= row[0]; ++k) {
                if (row[k] > nodes()) continue;
                if (m_pMeetingAngle[row[k]] < 180.0) met(Event::cellStateOverride);
                m_pMeetingAngle[row[k]] = 180.0;
            }
        }
    }
}

}  // namespace weldline::reference
