// Smoothing, and the default and upwind gradients.
#include <cmath>

#include "Reference.h"

namespace weldline::reference {

// Both cells reached by the melt and neither of them flat.
bool Reference::takesPart(int a, int b) const {
    if (!fits(a, b)) return false;
    if (m_pVariableOrg[a] < 1e-30) return false;
    if (m_pVariableOrg[b] < 1e-30) return false;
    if (m_pZeroGradFlag[a] == 1) return false;
    if (m_pZeroGradFlag[b] == 1) return false;
    return true;
}

void Reference::Smooth_Variable(Array& phi, int nPass) {
    trace("calWeldLine: Smooth_Variable\n");
    const auto area = [](double sx, double sy, double sz) {
        return std::sqrt((sy * sy + sx * sx) + sz * sz);
    };
    for (int pass = 1; pass <= nPass; ++pass) {
        Array sum(slots() + 1, 0.0);
        Array weight(slots() + 1, 0.0);
        const auto add = [&](int a, int b, double value, double A) {
            const double v = value * A;
            sum[a] = sum[a] + v;
            sum[b] = sum[b] + v;
            weight[a] = weight[a] + A;
            weight[b] = weight[b] + A;
        };
        for (int f = 1; f <= m_nInnerFace; ++f) {
            const double* row = m_bound.m_ppInnerFace[f];
            const int a = innerFaceCell(f, 1);
            const int b = innerFaceCell(f, 2);
            const double lambda = m_bound.m_pInnerFaceLambda[f];
            if (takesPart(a, b)) {
                add(a, b, (1 - lambda) * phi[a] + lambda * phi[b], area(row[3], row[4], row[5]));
            }
        }
        for (int i = 1; i <= partitionFaces(); ++i) {
            CPartitionFace_DLL& p = *m_pPartitionFace;
            const int a = p.ijParCV()[i];
            const int b = p.ijPar()[i];
            if (takesPart(a, b)) {
                const double lambda = p.ParInterFace_Lamda()[i];
                add(a, b, (1 - lambda) * phi[a] + lambda * phi[b],
                    area(p.ijParSx()[i], p.ijParSy()[i], p.ijParSz()[i]));
            }
        }
        for (const Group& g : {inlet(), symmetry(), wall()}) {
            for (int i = 1; i <= g.count; ++i) {
                const int a = g.cell[i];
                const int b = g.slot[i];
                if (takesPart(a, b)) {
                    add(a, b, phi[a] * 0.0 + phi[b], area(g.sx[i], g.sy[i], g.sz[i]));
                }
            }
        }
        for (int c = 1; c <= slots(); ++c) {
            phi[c] = sum[c] / (weight[c] + 1e-30);
        }
        for (const Group& g : {wall(), symmetry()}) {
            for (int i = 1; i <= g.count; ++i) {
                if (fits(g.cell[i], g.slot[i])) phi[g.slot[i]] = phi[g.cell[i]];
            }
        }
        exchange(phi);
    }
}

void Reference::GradVarb_FaceContribution(int nIter, const Array& phi, Array& gx, Array& gy,
                                          Array& gz, double lambda, int a, int b, double Sx,
                                          double Sy, double Sz, double xf, double yf, double zf) {
    const double phiA = phi[a];
    const double phiB = phi[b];
    const double mu = 1 - lambda;
    double phiF = mu * phiA + phiB * lambda;
    if (nIter >= 2) {
        const double x = mu * m_bound.m_pXc[a] + lambda * m_bound.m_pXc[b];
        const double y = mu * m_bound.m_pYc[a] + lambda * m_bound.m_pYc[b];
        const double z = mu * m_bound.m_pZc[a] + lambda * m_bound.m_pZc[b];
        const double Gx = mu * m_pWork1X[a] + lambda * m_pWork1X[b];
        const double Gy = mu * m_pWork1Y[a] + lambda * m_pWork1Y[b];
        const double Gz = mu * m_pWork1Z[a] + lambda * m_pWork1Z[b];
        phiF = (((xf - x) * Gx + (phiA * mu + phiB * lambda)) + (yf - y) * Gy) + (zf - z) * Gz;
    }
    const bool reachedA = phiA > 1e-30;
    const bool reachedB = phiB > 1e-30;
    if (reachedA) {
        const double value = reachedB ? phiF : phiA;
        gx[a] = gx[a] + value * Sx;
        gy[a] = gy[a] + value * Sy;
        gz[a] = gz[a] + value * Sz;
    }
    if (reachedB) {
        const double value = reachedA ? phiF : phiB;
        gx[b] = gx[b] - value * Sx;
        gy[b] = gy[b] - value * Sy;
        gz[b] = gz[b] - value * Sz;
    }
}

void Reference::copyToSlots(const Group& group, Array& gx, Array& gy, Array& gz) const {
    for (int i = 1; i <= group.count; ++i) {
        if (!fits(group.cell[i], group.slot[i])) continue;
        gx[group.slot[i]] = gx[group.cell[i]];
        gy[group.slot[i]] = gy[group.cell[i]];
        gz[group.slot[i]] = gz[group.cell[i]];
    }
}

void Reference::zeroFlatCells(double limit, Array& gx, Array& gy, Array& gz) {
    for (int c = 1; c <= ownCells(); ++c) {
        if (std::sqrt((gx[c] * gx[c] + gy[c] * gy[c]) + gz[c] * gz[c]) < limit) {
            met(Event::flatCell);
            gx[c] = gy[c] = gz[c] = 0.0;
            m_pZeroGradFlag[c] = 1;
        }
    }
}

void Reference::GradVarb(int nIter, const Array& phi, Array& gx, Array& gy, Array& gz) {
    trace("calWeldLine: GradVarb\n");
    met(Event::defaultGradient);
    for (int c = 0; c <= slots(); ++c) {
        m_pWork1X[c] = m_pWork1Y[c] = m_pWork1Z[c] = 0.0;
    }
    for (int k = 1; k <= nIter; ++k) {
        for (int c = 0; c <= slots(); ++c) {
            gx[c] = gy[c] = gz[c] = 0.0;
        }
        for (int f = 1; f <= m_nInnerFace; ++f) {
            const double* r = m_bound.m_ppInnerFace[f];
            const int a = innerFaceCell(f, 1);
            const int b = innerFaceCell(f, 2);
            if (!fits(a, b)) continue;
            GradVarb_FaceContribution(nIter, phi, gx, gy, gz, m_bound.m_pInnerFaceLambda[f], a, b,
                                      r[3], r[4], r[5], r[6], r[7], r[8]);
        }
        for (int i = 1; i <= partitionFaces(); ++i) {
            CPartitionFace_DLL& p = *m_pPartitionFace;
            const int a = p.ijParCV()[i];
            const int b = p.ijPar()[i];
            if (!fits(a, b)) continue;
            GradVarb_FaceContribution(nIter, phi, gx, gy, gz, p.ParInterFace_Lamda()[i], a, b,
                                      p.ijParSx()[i], p.ijParSy()[i], p.ijParSz()[i],
                                      p.ijParxc()[i], p.ijParyc()[i], p.ijParzc()[i]);
        }
        for (const Group& g : {inlet(), symmetry(), wall()}) {
            for (int i = 1; i <= g.count; ++i) {
                if (!fits(g.cell[i], g.slot[i])) continue;
                gx[g.cell[i]] = gx[g.cell[i]] + g.sx[i] * phi[g.slot[i]];
                gy[g.cell[i]] = gy[g.cell[i]] + g.sy[i] * phi[g.slot[i]];
                gz[g.cell[i]] = gz[g.cell[i]] + g.sz[i] * phi[g.slot[i]];
            }
        }
        for (int c = 1; c <= ownCells(); ++c) {
            const double r = 1 / (m_bound.m_pVolume[c] + 1e-30);
            gx[c] = gx[c] * r;
            gy[c] = gy[c] * r;
            gz[c] = gz[c] * r;
        }
        copyToSlots(inlet(), gx, gy, gz);
        copyToSlots(symmetry(), gx, gy, gz);
        copyToSlots(wall(), gx, gy, gz);
        if (k != m_nGradLoopBound) {
            for (int c = 1; c <= slots(); ++c) {
                m_pWork1X[c] = gx[c];
                m_pWork1Y[c] = gy[c];
                m_pWork1Z[c] = gz[c];
            }
            exchange(m_pWork1X);
            exchange(m_pWork1Y);
            exchange(m_pWork1Z);
        }
    }
    exchange(gx);
    exchange(gy);
    exchange(gz);
    zeroFlatCells(1e-30, gx, gy, gz);
}

void Reference::upwindInnerFaces(const Array& phi, Array& gx, Array& gy, Array& gz) {
    const double* V = m_bound.m_pVolume;
    double qa = 0.0;
    double qb = 0.0;
    for (int f = 1; f <= m_nInnerFace; ++f) {
        const double* r = m_bound.m_ppInnerFace[f];
        const int a = innerFaceCell(f, 1);
        const int b = innerFaceCell(f, 2);
        if (!fits(a, b)) continue;
        const double pa = phi[a];
        const double pb = phi[b];
        if (pa < 1e-30 || pb < 1e-30) {
            qa = pa;
            qb = pb;
        } else if (pa - pb > 0) {
            qa = qb = pb;
        } else if (pa - pb <= 0) {
            qa = qb = pa;
        } else {
            met(Event::keptUpwindValue);
        }
        gx[a] = gx[a] + (1.0 / V[a]) * r[3] * qa;
        gy[a] = gy[a] + (1.0 / V[a]) * r[4] * qa;
        gz[a] = gz[a] + (1.0 / V[a]) * r[5] * qa;
        gx[b] = gx[b] - (1.0 / V[b]) * r[3] * qb;
        gy[b] = gy[b] - (1.0 / V[b]) * r[4] * qb;
        gz[b] = gz[b] - (1.0 / V[b]) * r[5] * qb;
    }
}

void Reference::upwindPartitionFaces(const Array& phi, Array& gx, Array& gy, Array& gz) {
    const double* V = m_bound.m_pVolume;
    for (int k = 1; k <= partitionFaces(); ++k) {
        CPartitionFace_DLL& p = *m_pPartitionFace;
        const int h = p.ijPar()[k];
        const int o = p.ijParCV()[k];
        if (!fits(o, h)) continue;
        double q = 0.0;
        if (phi[h] < 1e-30 || phi[o] < 1e-30) {
            q = phi[o];
        } else if (phi[h] - phi[o] > 0) {
            q = phi[o];
        } else if (phi[h] - phi[o] <= 0) {
            q = phi[h];
        } else {
            continue;
        }
        gx[o] = gx[o] + (1.0 / V[o]) * p.ijParSx()[k] * q;
        gy[o] = gy[o] + (1.0 / V[o]) * p.ijParSy()[k] * q;
        gz[o] = gz[o] + (1.0 / V[o]) * p.ijParSz()[k] * q;
    }
}

void Reference::GradVarb_Upwind(const Array& phi, Array& gx, Array& gy, Array& gz) {
    trace("..Start UPWIND calculation of gradients\n");
    met(Event::upwindGradient);
    for (int c = 1; c <= slots(); ++c) {
        gx[c] = gy[c] = gz[c] = 0.0;
    }
    upwindInnerFaces(phi, gx, gy, gz);
    for (const Group& g : {wall(), inlet(), symmetry()}) {
        for (int k = 1; k <= g.count; ++k) {
            const int o = g.cell[k];
            if (!fits(o)) continue;
            gx[o] = gx[o] + (1.0 / m_bound.m_pVolume[o]) * g.sx[k] * phi[o];
            gy[o] = gy[o] + (1.0 / m_bound.m_pVolume[o]) * g.sy[k] * phi[o];
            gz[o] = gz[o] + (1.0 / m_bound.m_pVolume[o]) * g.sz[k] * phi[o];
        }
    }
    upwindPartitionFaces(phi, gx, gy, gz);
    copyToSlots(wall(), gx, gy, gz);
    copyToSlots(inlet(), gx, gy, gz);
    copyToSlots(symmetry(), gx, gy, gz);
    exchange(gx);
    exchange(gy);
    exchange(gz);
    zeroFlatCells(0.001, gx, gy, gz);
}

}  // namespace weldline::reference
