#include "NaiveAngles.h"

#include <algorithm>
#include <cmath>

namespace weldline::test {

namespace {

constexpr double kPi = 3.14159265;
constexpr double kEps = 1e-30;

double norm(double x, double y, double z) {
    return std::sqrt(x * x + y * y + z * z);
}

}  // namespace

NaiveAngles::NaiveAngles(Bench& bench)
    : angles(bench.line.m_pMeetingAngle, bench.line.m_pMeetingAngle + bench.line.m_nNode + 1),
      gx(bench.line.m_pGradX, bench.line.m_pGradX + bench.line.m_nCV_Total + 1),
      gy(bench.line.m_pGradY, bench.line.m_pGradY + bench.line.m_nCV_Total + 1),
      gz(bench.line.m_pGradZ, bench.line.m_pGradZ + bench.line.m_nCV_Total + 1),
      boundaryAngle(bench.line.m_BoundaryAngle),
      upper(bench.line.m_GradMagUpper),
      lower(bench.line.m_GradMagLower),
      m_line(bench.line),
      m_partition(*bench.host.partition()),
      m_switch(bench.host.gradSetSwitch) {}

void NaiveAngles::run(int method) {
    const bool two = m_line.m_MeshFileType == 2;
    if (method == 1) prepare(two ? 75.0 : 65.0);
    if (method == 2) prepare(two ? 90.0 : 75.0);
    if (method == 3) prepare(75.0);
    if (method == 4) {
        copySecondSet();
        if (boundaryAngle < 0.0) boundaryAngle = 120.0;
        if (boundaryAngle >= 179.999999) boundaryAngle = 179.999999;
    }
    for (int node = 1; node <= m_line.m_nNode; ++node) {
        if (method == 1) cellLoop(node);
        if (method == 2) faceWalk(node, &NaiveAngles::facePair);
        if (method == 3) hybrid(node);
        if (method == 4) faceWalk(node, &NaiveAngles::convergingPair);
        angles[node] = 180.0 - angles[node];
    }
    finish();
}

double NaiveAngles::length(int cell) const {
    return norm(gx[cell], gy[cell], gz[cell]);
}

double NaiveAngles::angleBetween(int a, int b) const {
    const double dot = gx[b] * gx[a] + gy[b] * gy[a] + gz[b] * gz[a];
    double cosine = dot / (length(b) * length(a) + kEps);
    if (cosine > 1.0) cosine = 1.0;
    if (cosine < -1.0) cosine = -1.0;
    return std::acos(cosine) * 180.0 / kPi;
}

Point NaiveAngles::centre(int cell) const {
    return {m_line.m_pXc[cell], m_line.m_pYc[cell], m_line.m_pZc[cell]};
}

Point NaiveAngles::faceCentre(int cell, int position) const {
    if (position > m_line.m_ppCellFace[cell][0]) return {0, 0, 0};
    const int number = m_line.m_ppCellFace[cell][position];
    const int type = m_line.m_ppCellFaceType[cell][position];
    if (type == 0) {
        const double* face = m_line.m_ppInnerFace[number];
        return {face[6], face[7], face[8]};
    }
    if (type == 101)
        return {m_partition.ijParxc()[number], m_partition.ijParyc()[number],
                m_partition.ijParzc()[number]};
    return {0, 0, 0};
}

bool NaiveAngles::contains(const int* row, int value) const {
    return row[0] >= 1 && std::find(row + 1, row + 1 + row[0], value) != row + 1 + row[0];
}

void NaiveAngles::prepare(double defaultAngle) {
    if (boundaryAngle < 0.0) boundaryAngle = defaultAngle;
    if (boundaryAngle >= 179.999999) boundaryAngle = 179.999999;
    boundaryAngle = std::cos(boundaryAngle / 180.0 * kPi);
    double largest = 0.0, sum = 0.0;
    for (int cell = 1; cell <= m_line.m_nCV; ++cell) {
        double size = length(cell);
        if (size < 1e-20) size = 1e-20;
        if (size > largest) largest = size;
        sum += size;
    }
    upper = largest * 0.99;
    lower = sum / m_line.m_nCV * m_line.m_GradMeanFactor * m_line.m_GradValueFilterPara;
}

bool NaiveAngles::rejected(int a, int b) const {
    const CKVR3DWeldLine& l = m_line;
    int reasons = 0;
    if (l.m_pVariableOrg[a] <= kEps || l.m_pVariableOrg[b] <= kEps) ++reasons;
    if (l.m_pVolume[a] != 0.0 && l.m_pVolume[b] != 0.0) {
        const double ratio = l.m_pVolume[a] / l.m_pVolume[b];
        if (ratio > 1.0 / l.m_Volume_Filter) ++reasons;
        if (ratio < l.m_Volume_Filter) ++reasons;
    }
    if (l.m_pZeroGradFlag[a] == 1 || l.m_pZeroGradFlag[b] == 1) ++reasons;
    if (length(a) > upper || length(b) > upper) ++reasons;
    if (length(a) < lower || length(b) < lower) ++reasons;
    return reasons != 0;
}

bool NaiveAngles::directed(int a, int b) const {
    const Point xa = centre(a), xb = centre(b);
    const double g[2][3] = {{gx[a], gy[a], gz[a]}, {gx[b], gy[b], gz[b]}};
    double p[2][3];
    for (int axis = 0; axis < 3; ++axis) {
        const double middle = (xa[axis] + xb[axis]) * 0.5;
        p[0][axis] = g[0][axis] * (middle - xa[axis]);
        p[1][axis] = g[1][axis] * (middle - xb[axis]);
    }
    int planes = 0;
    for (int axis = 0; axis < 3; ++axis) {
        const int next = (axis + 1) % 3;
        const double sa = p[0][axis] + p[0][next], sb = p[1][axis] + p[1][next];
        if (std::fabs(sa) < kEps && std::fabs(sb) < kEps) continue;
        if (sa > 0.0 && sb > 0.0) ++planes;
    }
    return p[0][0] + p[0][1] + p[0][2] > 0.0 && p[1][0] + p[1][1] + p[1][2] > 0.0 && planes >= 2;
}

int NaiveAngles::agreeingSigns(int a, int b) const {
    return (gx[b] * gx[a] > 0.0) + (gy[b] * gy[a] > 0.0) + (gz[b] * gz[a] > 0.0);
}

bool NaiveAngles::inCone(int cell, const Point& point, double limit) const {
    const Point x = centre(cell);
    const double dx = point[0] - x[0], dy = point[1] - x[1], dz = point[2] - x[2];
    const double dot = gx[cell] * dx + gy[cell] * dy + gz[cell] * dz;
    return dot / (norm(dx, dy, dz) * length(cell) + kEps) > limit;
}

void NaiveAngles::judge(int node, const Point& point, int a, int b) {
    if (rejected(a, b) || !directed(a, b) || agreeingSigns(a, b) == 3) return;
    if (!inCone(a, point, boundaryAngle) || !inCone(b, point, boundaryAngle)) return;
    const double theta = angleBetween(a, b);
    if (theta > angles[node]) angles[node] = theta;
}

void NaiveAngles::nodePair(int node, int a, int b) {
    judge(node, {m_line.m_pNodeX[node], m_line.m_pNodeY[node], m_line.m_pNodeZ[node]}, a, b);
}

void NaiveAngles::facePair(int node, int position, int a, int b) {
    judge(node, faceCentre(a, position), a, b);
}

Point NaiveAngles::movedPoint(int cell, double step) const {
    const Point x = centre(cell);
    const double size = length(cell);
    return {x[0] + gx[cell] / size * step, x[1] + gy[cell] / size * step,
            x[2] + gz[cell] / size * step};
}

void NaiveAngles::convergingPair(int node, int position, int a, int b) {
    const CKVR3DWeldLine& l = m_line;
    if (l.m_pZeroGradFlag[a] == 1 || l.m_pZeroGradFlag[b] == 1) return;
    if (l.m_pVariable[a] <= kEps || l.m_pVariable[b] <= kEps) return;
    const double limit = std::cos(boundaryAngle * kPi / 180.0);
    const Point face = faceCentre(a, position), xa = centre(a), xb = centre(b);
    if (!inCone(a, face, limit) || !inCone(b, face, limit)) return;
    if (agreeingSigns(a, b) == 3) return;
    const double ma = length(a), mb = length(b);
    const double distance = norm(xa[0] - xb[0], xa[1] - xb[1], xa[2] - xb[2]);
    const double fa = ma > mb ? 1.0 : ma / (mb + kEps);
    const double fb = ma > mb ? mb / (ma + kEps) : 1.0;
    const Point pa = movedPoint(a, distance * 0.5 * fa), pb = movedPoint(b, distance * 0.5 * fb);
    if (!(distance > norm(pa[0] - pb[0], pa[1] - pb[1], pa[2] - pb[2]))) return;
    const double theta = angleBetween(a, b);
    if (theta >= 180.0 - l.m_TruncateAngle && theta > angles[node]) angles[node] = theta;
}

void NaiveAngles::cellLoop(int node) {
    const int* cells = m_line.m_ppNodeCell[node];
    for (int i = 1; i <= cells[0]; ++i)
        for (int j = i + 1; j <= cells[0]; ++j) nodePair(node, cells[i], cells[j]);
}

void NaiveAngles::faceWalk(int node, Pair pair) {
    const int* cells = m_line.m_ppNodeCell[node];
    for (int i = 1; i <= cells[0]; ++i) {
        const int a = cells[i];
        for (int k = 1; k <= m_line.m_ppCellFace[a][0]; ++k) {
            const int number = m_line.m_ppCellFace[a][k], type = m_line.m_ppCellFaceType[a][k];
            if (type != 0 && type != 101) continue;
            const double* face = type == 0 ? m_line.m_ppInnerFace[number] : nullptr;
            const int first = face ? static_cast<int>(face[1]) : m_partition.ijParCV()[number];
            const int second = face ? static_cast<int>(face[2]) : m_partition.ijPar()[number];
            const int b = first == a ? second : first;
            if (type == 0 && !contains(cells, b)) continue;
            if (type == 101 && !contains(m_line.m_ppParFaceNode[number], node)) continue;
            (this->*pair)(node, k, a, b);
        }
    }
}

void NaiveAngles::hybrid(int node) {
    const int* cells = m_line.m_ppNodeCell[node];
    for (int i = 1; i <= cells[0]; ++i) {
        const int a = cells[i];
        std::vector<int> candidates;
        for (int j = 1; j <= cells[0]; ++j) {
            const int b = cells[j];
            const int* faces = m_line.m_ppCellInnerFace[b];
            for (int k = 1; j != i && k <= faces[0]; ++k) {
                const double* face = m_line.m_ppInnerFace[faces[k]];
                if (static_cast<int>(face[1]) != a && static_cast<int>(face[2]) != a) continue;
                candidates.push_back(b);
                facePair(node, faces[k], a, b);
            }
        }
        const std::size_t direct = candidates.size();
        for (std::size_t p = 0; p < direct; ++p)
            for (std::size_t q = p + 1; q < direct; ++q) {
                const int* left = m_line.m_ppCellNeighbour[candidates[p]];
                const int* right = m_line.m_ppCellNeighbour[candidates[q]];
                for (int r = 1; r <= left[0]; ++r)
                    for (int s = 1; s <= right[0]; ++s)
                        if (left[r] == right[s] && left[r] != a) candidates.push_back(left[r]);
            }
        for (std::size_t p = direct; p < candidates.size(); ++p) nodePair(node, a, candidates[p]);
    }
}

void NaiveAngles::copySecondSet() {
    if (m_line.m_GradMethodMFT != 2 && m_line.m_GradMethodMFT != 3) return;
    if (m_switch == 0.0) return;  // random meshes use the switch values 0 and 1
    for (int slot = 1; slot <= m_line.m_nCV_Total; ++slot) {
        gx[slot] = m_line.m_pGrad2X[slot];
        gy[slot] = m_line.m_pGrad2Y[slot];
        gz[slot] = m_line.m_pGrad2Z[slot];
    }
}

void NaiveAngles::finish() {
    const double limit = m_line.m_TruncateAngle;
    for (int node = 1; node <= m_line.m_nNode; ++node)
        if (angles[node] >= limit) angles[node] = 180.0;
    for (int node = 1; node <= m_line.m_nNode; ++node) {
        if (angles[node] > limit) continue;
        int neighbours = 0;
        const int* cells = m_line.m_ppNodeCell[node];
        for (int i = 1; i <= cells[0]; ++i) {
            if (m_line.m_pVolume[cells[i]] == 0.0) continue;
            const int* nodes = m_line.m_ppCellNode[cells[i]];
            for (int k = 1; k <= nodes[0]; ++k)
                if (nodes[k] != node && angles[nodes[k]] < limit) ++neighbours;
        }
        if (neighbours == 0) angles[node] = 180.0;
    }
    for (int cell = 1; cell <= m_line.m_nCV; ++cell) {
        const int state = m_line.m_pCellState[cell];
        if (state < 1 && state != -1) continue;
        const int* nodes = m_line.m_ppCellNode[cell];
        for (int k = 1; k <= nodes[0]; ++k) angles[nodes[k]] = 180.0;
    }
}

}  // namespace weldline::test
