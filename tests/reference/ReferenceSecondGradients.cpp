// The gradients of the second set: least squares and RBF face interpolation.
#include <cmath>

#include "Reference.h"

namespace weldline::reference {

namespace {

// The normal equations of one cell.
struct Normal {
    double xx = 0.0, yy = 0.0, zz = 0.0, xy = 0.0, xz = 0.0, yz = 0.0;
    double bx = 0.0, by = 0.0, bz = 0.0;

    void add(double dx, double dy, double dz, double dPhi) {
        xx += dx * dx;
        yy += dy * dy;
        zz += dz * dz;
        xy += dy * dx;
        xz += dz * dx;
        yz += dz * dy;
        bx += dPhi * dx;
        by += dPhi * dy;
        bz += dPhi * dz;
    }
};

// Elimination without pivoting; the quotient is formed anew for each column.
void solve(const Normal& n, double& gx, double& gy, double& gz) {
    double a[4][5] = {{0, 0, 0, 0, 0},
                      {0, n.xx, n.xy, n.xz, n.bx},
                      {0, n.xy, n.yy, n.yz, n.by},
                      {0, n.xz, n.yz, n.zz, n.bz}};
    for (int k = 1; k <= 2; ++k) {
        for (int r = k + 1; r <= 3; ++r) {
            for (int j = k + 1; j <= 4; ++j) {
                a[r][j] = a[r][j] - (a[r][k] / a[k][k]) * a[k][j];
            }
        }
    }
    gz = a[3][4] / a[3][3];
    gy = (a[2][4] - gz * a[2][3]) / a[2][2];
    gx = ((a[1][4] - gy * a[1][2]) - gz * a[1][3]) / a[1][1];
}

}  // namespace

void Reference::GradVarb_Iterative(const Array& phi, Array& gx, Array& gy, Array& gz) {
    met(Event::iterativeGradient);
    const double* x = m_bound.m_pXc;
    const double* y = m_bound.m_pYc;
    const double* z = m_bound.m_pZc;
    std::vector<Normal> sums(slots() + 1);
    trace("..Start iterative calculation of gradients\n");
    for (int c = 1; c <= slots(); ++c) {
        gx[c] = gy[c] = gz[c] = 0.0;
    }
    trace("// Contribution from inner cell faces\n");
    for (int f = 1; f <= m_nInnerFace; ++f) {
        const int a = innerFaceCell(f, 1);
        const int b = innerFaceCell(f, 2);
        if (!fits(a, b)) continue;
        sums[a].add(x[b] - x[a], y[b] - y[a], z[b] - z[a], phi[b] - phi[a]);
        sums[b].add(x[b] - x[a], y[b] - y[a], z[b] - z[a], phi[b] - phi[a]);
    }
    for (int k = 1; k <= partitionFaces(); ++k) {
        const int o = m_pPartitionFace->ijParCV()[k];
        const int h = m_pPartitionFace->ijPar()[k];
        if (!fits(o, h)) continue;
        sums[o].add(x[h] - x[o], y[h] - y[o], z[h] - z[o], phi[h] - phi[o]);
        sums[h].add(x[h] - x[o], y[h] - y[o], z[h] - z[o], phi[h] - phi[o]);
    }
    const auto addGroup = [&](const Group& g) {
        for (int k = 1; k <= g.count; ++k) {
            const int o = g.cell[k];
            const int s = g.slot[k];
            if (!fits(o, s)) continue;
            sums[o].add(g.xc[k] - x[o], g.yc[k] - y[o], g.zc[k] - z[o], phi[s] - phi[o]);
            sums[s].add(g.xc[k] - x[o], g.yc[k] - y[o], g.zc[k] - z[o], phi[s] - phi[o]);
        }
    };
    trace("// Contribution from Inlet Boundaries\n");
    addGroup(inlet());
    trace("// Contribution from Wall Boundaries\n");
    addGroup(wall());
    trace("// Contribution from Symmetry Boundaries\n");
    addGroup(symmetry());
    trace("// Calculate Gradient Components at CV-centers\n");
    for (int c = 1; c <= ownCells(); ++c) {
        solve(sums[c], gx[c], gy[c], gz[c]);
    }
    exchange(gx);
    exchange(gy);
    exchange(gz);
    zeroFlatCells(0.001, gx, gy, gz);
}

void Reference::rbfPrepare() {
    const int order[5] = {0, 1, 2, 4, 3};
    const int codes[5] = {1, 2, 3, 6, 5};
    for (int i : order) {
        m_RBF[i].getKvr3dGV(m_pGV, nullptr, nullptr, m_pMesh);
        m_RBF[i].getPartitionFace(m_pPartitionFace);
        m_RBF[i].Initialize_FaceInterpolateData(codes[i]);
    }
}

void Reference::rbfInnerFaces(const Array& phi, Array& gx, Array& gy, Array& gz) {
    const double* V = m_bound.m_pVolume;
    for (int f = 1; f <= m_nInnerFace; ++f) {
        const double* r = m_bound.m_ppInnerFace[f];
        const int a = innerFaceCell(f, 1);
        const int b = innerFaceCell(f, 2);
        if (!fits(a, b)) continue;
        if (phi[a] < 1e-30 || phi[b] < 1e-30) {
            gx[a] = gx[a] + (1.0 / V[a]) * r[3] * phi[a];
            gy[a] = gy[a] + (1.0 / V[a]) * r[4] * phi[a];
            gz[a] = gz[a] + (1.0 / V[a]) * r[5] * phi[a];
            gx[b] = gx[b] - (1.0 / V[b]) * r[3] * phi[b];
            gy[b] = gy[b] - (1.0 / V[b]) * r[4] * phi[b];
            gz[b] = gz[b] - (1.0 / V[b]) * r[5] * phi[b];
            continue;
        }
        m_FaceAreaMag = std::sqrt((r[4] * r[4] + r[3] * r[3]) + r[5] * r[5]);
        const int* stencil = m_RBF[0].m_ppFaceStencil[f];
        const double* weight = m_RBF[0].m_ppFaceWeight[f];
        if (stencil[0] < 1) {
            met(Event::emptyStencil);
        }
        for (int j = 1; j <= stencil[0]; ++j) {
            if (!fits(stencil[j])) continue;
            const double w = weight[j];
            const double value = phi[stencil[j]];
            gx[a] = gx[a] + (1.0 / V[a]) * r[3] * w * value;
            gy[a] = gy[a] + (1.0 / V[a]) * r[4] * w * value;
            gz[a] = gz[a] + (1.0 / V[a]) * r[5] * w * value;
            gx[b] = gx[b] - (1.0 / V[b]) * r[3] * w * value;
            gy[b] = gy[b] - (1.0 / V[b]) * r[4] * w * value;
            gz[b] = gz[b] - (1.0 / V[b]) * r[5] * w * value;
        }
    }
}

void Reference::rbfPartitionFaces(const Array& phi, Array& gx, Array& gy, Array& gz) {
    const double* V = m_bound.m_pVolume;
    for (int k = 1; k <= partitionFaces(); ++k) {
        CPartitionFace_DLL& p = *m_pPartitionFace;
        const int o = p.ijParCV()[k];
        const int h = p.ijPar()[k];
        if (!fits(o, h)) continue;
        if (phi[h] < 1e-30 || phi[o] < 1e-30) {
            gx[o] = gx[o] + (1.0 / V[o]) * p.ijParSx()[k] * phi[o];
            gy[o] = gy[o] + (1.0 / V[o]) * p.ijParSy()[k] * phi[o];
            gz[o] = gz[o] + (1.0 / V[o]) * p.ijParSz()[k] * phi[o];
        } else {
            gx[o] = gx[o] + ((1.0 / V[o]) * p.ijParSx()[k]) * 0.5 * (phi[o] + phi[h]);
            gy[o] = gy[o] + ((1.0 / V[o]) * p.ijParSy()[k]) * 0.5 * (phi[o] + phi[h]);
            gz[o] = gz[o] + ((1.0 / V[o]) * p.ijParSz()[k]) * 0.5 * (phi[o] + phi[h]);
        }
    }
}

void Reference::GradVarb_RBF(const Array& phi, Array& gx, Array& gy, Array& gz) {
    met(Event::rbfGradient);
    rbfPrepare();
    trace("..Start RBF calculation of gradients\n");
    for (int c = 1; c <= slots(); ++c) {
        gx[c] = gy[c] = gz[c] = 0.0;
    }
    rbfInnerFaces(phi, gx, gy, gz);
    for (const Group& g : {wall(), inlet(), symmetry()}) {
        for (int k = 1; k <= g.count; ++k) {
            const int o = g.cell[k];
            if (!fits(o, g.slot[k])) continue;
            const double value = phi[g.slot[k]];
            gx[o] = gx[o] + (1.0 / m_bound.m_pVolume[o]) * g.sx[k] * value;
            gy[o] = gy[o] + (1.0 / m_bound.m_pVolume[o]) * g.sy[k] * value;
            gz[o] = gz[o] + (1.0 / m_bound.m_pVolume[o]) * g.sz[k] * value;
        }
    }
    rbfPartitionFaces(phi, gx, gy, gz);
    copyToSlots(wall(), gx, gy, gz);
    copyToSlots(inlet(), gx, gy, gz);
    copyToSlots(symmetry(), gx, gy, gz);
    exchange(gx);
    exchange(gy);
    exchange(gz);
    zeroFlatCells(0.001, gx, gy, gz);
}

}  // namespace weldline::reference
