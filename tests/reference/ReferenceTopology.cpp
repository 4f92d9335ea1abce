// Node-to-cell and cell-to-face rows, and the test for singular least-squares matrices.
#include <cmath>

#include "Reference.h"

namespace weldline::reference {

void Reference::getMeshTopologyConn() {
    trace("calWeldLine: getMeshTopologyConn\n");
    getInnerCell03Conn();
    getCell32Conn();
}

void Reference::getInnerCell03Conn() {
    trace("calWeldLine: getInnerCell03Conn\n");
    if (!m_ppNodeCell.empty()) {
        return;
    }
    m_ppNodeCell.assign(m_nNode + 1, {0});
    for (int c = 1; c <= m_nCV; ++c) {
        const int* row = m_bound.m_ppCellNode[c];
        for (int k = 1; k <= row[0]; ++k) {
            m_ppNodeCell[row[k]].push_back(c);
            ++m_ppNodeCell[row[k]][0];
        }
    }
}

void Reference::getCell32Conn() {
    trace("calWeldLine: getCell32Conn\n");
    std::vector<int> count(m_nCV_Total + 1, 0);
    for (int f = 1; f <= m_nInnerFace; ++f) {
        for (int side = 1; side <= 2; ++side) {
            ++count[innerFaceCell(f, side)];
        }
    }
    const auto countGroup = [&](const Group& g) {
        for (int i = 1; i <= g.count; ++i) {
            ++count[g.cell[i]];
        }
    };
    countGroup(inlet());
    for (int i = 1; i <= partitionFaces(); ++i) {
        ++count[m_pPartitionFace->ijParCV()[i]];
    }
    countGroup(symmetry());
    countGroup(wall());

    m_nMaxCellFace = -1000;
    m_nMinCellFace = 1000;
    for (int c = 1; c <= m_nCV; ++c) {
        if (count[c] > m_nMaxCellFace) m_nMaxCellFace = count[c];
        if (count[c] < m_nMinCellFace) m_nMinCellFace = count[c];
    }
    if (!m_ppCellInnerFace.empty()) {
        return;
    }
    m_ppCellInnerFace.assign(m_nCV_Total + 1, {0});
    for (int f = 1; f <= m_nInnerFace; ++f) {
        for (int side = 1; side <= 2; ++side) {
            std::vector<int>& row = m_ppCellInnerFace[innerFaceCell(f, side)];
            row.push_back(f);
            ++row[0];
        }
    }
}

namespace {

struct Moments {
    double xx = 0.0, yy = 0.0, zz = 0.0, xy = 0.0, xz = 0.0, yz = 0.0;

    void add(double dx, double dy, double dz) {
        xx += dx * dx;
        yy += dy * dy;
        zz += dz * dz;
        xy += dx * dy;
        xz += dx * dz;
        yz += dy * dz;
    }
};

// Only the first two pivots are tested, and only for exact zeros.
bool meetsZeroPivot(const Moments& s) {
    double m[4][4] = {
        {0, 0, 0, 0}, {0, s.xx, s.xy, s.xz}, {0, s.xy, s.yy, s.yz}, {0, s.xz, s.yz, s.zz}};
    for (int p = 1; p <= 2; ++p) {
        for (int i = p + 1; i <= 3; ++i) {
            for (int j = p + 1; j <= 3; ++j) {
                if (std::fabs(m[p][p]) == 0.0) {
                    return true;
                }
                m[i][j] = m[i][j] - (m[i][p] / m[p][p]) * m[p][j];
            }
        }
    }
    return false;
}

}  // namespace

int Reference::checkSingularLSMatrix() {
    const double* x = m_bound.m_pXc;
    const double* y = m_bound.m_pYc;
    const double* z = m_bound.m_pZc;
    std::vector<Moments> sums(slots() + 1);
    for (int f = 1; f <= m_nInnerFace; ++f) {
        const int a = innerFaceCell(f, 1);
        const int b = innerFaceCell(f, 2);
        if (!fits(a, b)) continue;
        sums[a].add(x[b] - x[a], y[b] - y[a], z[b] - z[a]);
        sums[b].add(x[b] - x[a], y[b] - y[a], z[b] - z[a]);
    }
    const int faces = partitionFaces();
    for (int i = 1; i <= faces; ++i) {
        const int a = m_pPartitionFace->ijParCV()[i];
        const int b = m_pPartitionFace->ijPar()[i];
        if (!fits(a, b)) continue;
        sums[a].add(x[b] - x[a], y[b] - y[a], z[b] - z[a]);
        sums[b].add(x[b] - x[a], y[b] - y[a], z[b] - z[a]);
    }
    for (const Group& group : {inlet(), wall(), symmetry()}) {
        for (int i = 1; i <= group.count; ++i) {
            const int c = group.cell[i];
            const int s = group.slot[i];
            if (!fits(c, s)) continue;
            sums[c].add(group.xc[i] - x[c], group.yc[i] - y[c], group.zc[i] - z[c]);
            sums[s].add(group.xc[i] - x[c], group.yc[i] - y[c], group.zc[i] - z[c]);
        }
    }
    for (int c = 1; c <= ownCells(); ++c) {
        if (meetsZeroPivot(sums[c])) {
            return 1;
        }
    }
    return 0;
}

}  // namespace weldline::reference
