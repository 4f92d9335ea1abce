#include <cmath>

#include "Scene.h"

namespace weldline::test {

namespace {

// Normal equations of one cell: upper triangle xx yy zz xy xz yz, then the right-hand side.
struct Sums {
    double xx = 0.0, yy = 0.0, zz = 0.0, xy = 0.0, xz = 0.0, yz = 0.0;
    double bx = 0.0, by = 0.0, bz = 0.0;

    void add(double dx, double dy, double dz, double dphi) {
        xx += dx * dx;
        yy += dy * dy;
        zz += dz * dz;
        xy += dx * dy;
        xz += dx * dz;
        yz += dy * dz;
        bx += dphi * dx;
        by += dphi * dy;
        bz += dphi * dz;
    }
};

std::vector<Sums> sumsOf(const Scene& scene, const std::vector<double>& phi) {
    std::vector<Sums> sums(scene.slots + 1);
    const auto add = [&](const SceneFace& f, const Point& to) {
        const Point& from = scene.centre[f.a];
        for (const int cell : {f.a, f.b})
            sums[cell].add(to[0] - from[0], to[1] - from[1], to[2] - from[2], phi[f.b] - phi[f.a]);
    };
    for (const SceneFace& f : scene.inner) add(f, scene.centre[f.b]);
    for (const SceneFace& f : scene.interface) add(f, scene.centre[f.b]);
    for (const SceneFace& f : scene.inlet) add(f, f.centre);
    for (const SceneFace& f : scene.wall) add(f, f.centre);
    for (const SceneFace& f : scene.symm) add(f, f.centre);
    return sums;
}

// 1-based augmented matrix.
struct Matrix {
    double m[4][5];
};

Matrix matrixOf(const Sums& s) {
    return {{{NaN, NaN, NaN, NaN, NaN},
             {NaN, s.xx, s.xy, s.xz, s.bx},
             {NaN, s.xy, s.yy, s.yz, s.by},
             {NaN, s.xz, s.yz, s.zz, s.bz}}};
}

}  // namespace

void naiveIterative(const Scene& scene, SceneState& state, const std::vector<double>& phi,
                    Vectors& g, const HaloRefresh& refresh) {
    const std::vector<Sums> sums = sumsOf(scene, phi);
    for (int c = 1; c <= scene.slots; ++c) g.x[c] = g.y[c] = g.z[c] = 0.0;
    for (int c = 1; c <= scene.own; ++c) {
        Matrix a = matrixOf(sums[c]);
        for (int k = 1; k <= 2; ++k)
            for (int r = k + 1; r <= 3; ++r)
                for (int j = k + 1; j <= 4; ++j)
                    a.m[r][j] = a.m[r][j] - (a.m[r][k] / a.m[k][k]) * a.m[k][j];
        g.z[c] = a.m[3][4] / a.m[3][3];
        g.y[c] = (a.m[2][4] - g.z[c] * a.m[2][3]) / a.m[2][2];
        g.x[c] = ((a.m[1][4] - g.y[c] * a.m[1][2]) - g.z[c] * a.m[1][3]) / a.m[1][1];
    }
    refresh(g.x.data());
    refresh(g.y.data());
    refresh(g.z.data());
    for (int c = 1; c <= scene.own; ++c) {
        if (!(std::sqrt((g.x[c] * g.x[c] + g.y[c] * g.y[c]) + g.z[c] * g.z[c]) < 0.001)) continue;
        g.x[c] = g.y[c] = g.z[c] = 0.0;
        state.zeroGradient[c] = 1;
    }
}

int naiveSingular(const Scene& scene) {
    const std::vector<Sums> sums = sumsOf(scene, std::vector<double>(scene.slots + 1, 0.0));
    for (int c = 1; c <= scene.own; ++c) {
        Matrix a = matrixOf(sums[c]);
        for (int p = 1; p <= 2; ++p)
            for (int i = p + 1; i <= 3; ++i)
                for (int j = p + 1; j <= 3; ++j) {
                    if (std::fabs(a.m[p][p]) == 0.0) return 1;
                    a.m[i][j] = a.m[i][j] - (a.m[i][p] / a.m[p][p]) * a.m[p][j];
                }
    }
    return 0;
}

}  // namespace weldline::test
