#include <cmath>

#include "Scene.h"

namespace weldline::test {

namespace {

constexpr double eps = 1e-30;

double length(double x, double y, double z) {
    return std::sqrt((x * x + y * y) + z * z);
}

void clear(const Scene& scene, Vectors& g) {
    for (int c = 1; c <= scene.slots; ++c) g.x[c] = g.y[c] = g.z[c] = 0.0;
}

void refreshAll(Vectors& g, const HaloRefresh& refresh) {
    refresh(g.x.data());
    refresh(g.y.data());
    refresh(g.z.data());
}

void copyToSlots(const std::vector<SceneFace>& faces, Vectors& g) {
    for (const SceneFace& f : faces) {
        g.x[f.b] = g.x[f.a];
        g.y[f.b] = g.y[f.a];
        g.z[f.b] = g.z[f.a];
    }
}

void zeroFlat(const Scene& scene, SceneState& state, Vectors& g, double limit) {
    for (int c = 1; c <= scene.own; ++c) {
        if (!(length(g.x[c], g.y[c], g.z[c]) < limit)) continue;
        g.x[c] = g.y[c] = g.z[c] = 0.0;
        state.zeroGradient[c] = 1;
    }
}

// g[cell] plus or minus ((1 / V) * S) * value.
void addFlux(const Scene& scene, Vectors& g, int cell, const Point& area, double value,
             bool minus = false) {
    const auto change = [&](double& sum, double s) {
        const double flux = (1.0 / scene.volume[cell]) * s * value;
        sum = minus ? sum - flux : sum + flux;
    };
    change(g.x[cell], area[0]);
    change(g.y[cell], area[1]);
    change(g.z[cell], area[2]);
}

}  // namespace

void naiveSmooth(const Scene& scene, SceneState& state, std::vector<double>& phi, int passes,
                 const HaloRefresh& refresh) {
    std::vector<double>&sum = state.work.y, &weight = state.work.z;
    const auto addFaces = [&](const std::vector<SceneFace>& faces, bool boundary) {
        for (const SceneFace& f : faces) {
            if (state.loaded[f.a] < eps || state.loaded[f.b] < eps) continue;
            if (state.zeroGradient[f.a] == 1 || state.zeroGradient[f.b] == 1) continue;
            const double area = length(f.area[1], f.area[0], f.area[2]);
            const double value = boundary ? phi[f.a] * 0.0 + phi[f.b]
                                          : (1.0 - f.lambda) * phi[f.a] + f.lambda * phi[f.b];
            sum[f.a] += value * area;
            sum[f.b] += value * area;
            weight[f.a] += area;
            weight[f.b] += area;
        }
    };
    for (int pass = 1; pass <= passes; ++pass) {
        for (int c = 1; c <= scene.slots; ++c) sum[c] = weight[c] = 0.0;
        addFaces(scene.inner, false);
        addFaces(scene.interface, false);
        addFaces(scene.inlet, true);
        addFaces(scene.symm, true);
        addFaces(scene.wall, true);
        for (int c = 1; c <= scene.slots; ++c) phi[c] = sum[c] / (weight[c] + 1e-30);
        for (const SceneFace& f : scene.wall) phi[f.b] = phi[f.a];
        for (const SceneFace& f : scene.symm) phi[f.b] = phi[f.a];
        refresh(phi.data());
    }
}

namespace {

void addDefaultFace(const Scene& scene, const SceneState& state, int iterations,
                    const std::vector<double>& phi, Vectors& g, const SceneFace& f) {
    const double mu = 1.0 - f.lambda;
    const auto mean = [&](double first, double second) { return mu * first + f.lambda * second; };
    double value = mu * phi[f.a] + phi[f.b] * f.lambda;
    if (iterations >= 2) {
        const Point &ca = scene.centre[f.a], &cb = scene.centre[f.b];
        const Vectors& w = state.work;
        const double x = (f.centre[0] - mean(ca[0], cb[0])) * mean(w.x[f.a], w.x[f.b]);
        const double y = (f.centre[1] - mean(ca[1], cb[1])) * mean(w.y[f.a], w.y[f.b]);
        const double z = (f.centre[2] - mean(ca[2], cb[2])) * mean(w.z[f.a], w.z[f.b]);
        value = ((x + value) + y) + z;
    }
    const bool reachedA = phi[f.a] > eps, reachedB = phi[f.b] > eps;
    if (reachedA) {
        const double q = reachedB ? value : phi[f.a];
        g.x[f.a] += q * f.area[0];
        g.y[f.a] += q * f.area[1];
        g.z[f.a] += q * f.area[2];
    }
    if (reachedB) {
        const double q = reachedA ? value : phi[f.b];
        g.x[f.b] -= q * f.area[0];
        g.y[f.b] -= q * f.area[1];
        g.z[f.b] -= q * f.area[2];
    }
}

}  // namespace

void naiveDefault(const Scene& scene, SceneState& state, int iterations,
                  const std::vector<double>& phi, Vectors& g, const HaloRefresh& refresh) {
    clear(scene, state.work);
    state.work.x[0] = state.work.y[0] = state.work.z[0] = 0.0;
    for (int k = 1; k <= iterations; ++k) {
        clear(scene, g);
        g.x[0] = g.y[0] = g.z[0] = 0.0;
        for (const SceneFace& f : scene.inner) addDefaultFace(scene, state, iterations, phi, g, f);
        for (const SceneFace& f : scene.interface)
            addDefaultFace(scene, state, iterations, phi, g, f);
        for (const auto* group : {&scene.inlet, &scene.symm, &scene.wall})
            for (const SceneFace& f : *group) {
                g.x[f.a] += f.area[0] * phi[f.b];
                g.y[f.a] += f.area[1] * phi[f.b];
                g.z[f.a] += f.area[2] * phi[f.b];
            }
        for (int c = 1; c <= scene.own; ++c) {
            const double r = 1.0 / (scene.volume[c] + 1e-30);
            g.x[c] *= r;
            g.y[c] *= r;
            g.z[c] *= r;
        }
        copyToSlots(scene.inlet, g);
        copyToSlots(scene.symm, g);
        copyToSlots(scene.wall, g);
        if (k == 1) continue;
        state.work = g;
        refreshAll(state.work, refresh);
    }
    refreshAll(g, refresh);
    zeroFlat(scene, state, g, 1e-30);
}

void naiveUpwind(const Scene& scene, SceneState& state, const std::vector<double>& phi, Vectors& g,
                 const HaloRefresh& refresh) {
    clear(scene, g);
    double qa = 0.0, qb = 0.0;
    for (const SceneFace& f : scene.inner) {
        const double pa = phi[f.a], pb = phi[f.b];
        if (pa < eps || pb < eps) {
            qa = pa;
            qb = pb;
        } else if (pa - pb > 0.0) {
            qa = qb = pb;
        } else if (pa - pb <= 0.0) {
            qa = qb = pa;
        }
        addFlux(scene, g, f.a, f.area, qa);
        addFlux(scene, g, f.b, f.area, qb, true);
    }
    for (const auto* group : {&scene.wall, &scene.inlet, &scene.symm})
        for (const SceneFace& f : *group) addFlux(scene, g, f.a, f.area, phi[f.a]);
    for (const SceneFace& f : scene.interface) {
        const double own = phi[f.a], halo = phi[f.b];
        if (halo < eps || own < eps)
            addFlux(scene, g, f.a, f.area, own);
        else if (halo - own > 0.0)
            addFlux(scene, g, f.a, f.area, own);
        else if (halo - own <= 0.0)
            addFlux(scene, g, f.a, f.area, halo);
    }
    copyToSlots(scene.wall, g);
    copyToSlots(scene.inlet, g);
    copyToSlots(scene.symm, g);
    refreshAll(g, refresh);
    zeroFlat(scene, state, g, 0.001);
}

void naiveRbf(const Scene& scene, SceneState& state, const RbfRows& rows,
              const std::vector<double>& phi, Vectors& g, const HaloRefresh& refresh) {
    clear(scene, g);
    const auto addTerms = [&](std::size_t f, int cell, const Point& s, bool minus) {
        double* sums[] = {&g.x[cell], &g.y[cell], &g.z[cell]};
        for (std::size_t j = 0; j < rows.stencils[f].size(); ++j)
            for (int axis = 0; axis < 3; ++axis) {
                const double term = (1.0 / scene.volume[cell]) * s[axis] * rows.weights[f][j] *
                                    phi[rows.stencils[f][j]];
                *sums[axis] = minus ? *sums[axis] - term : *sums[axis] + term;
            }
    };
    for (std::size_t i = 0; i < scene.inner.size(); ++i) {
        const SceneFace& f = scene.inner[i];
        if (phi[f.a] < eps || phi[f.b] < eps) {
            addFlux(scene, g, f.a, f.area, phi[f.a]);
            addFlux(scene, g, f.b, f.area, phi[f.b], true);
            continue;
        }
        state.faceArea = length(f.area[1], f.area[0], f.area[2]);
        addTerms(i, f.a, f.area, false);
        addTerms(i, f.b, f.area, true);
    }
    for (const auto* group : {&scene.wall, &scene.inlet, &scene.symm})
        for (const SceneFace& f : *group) addFlux(scene, g, f.a, f.area, phi[f.b]);
    for (const SceneFace& f : scene.interface) {
        const double own = phi[f.a], halo = phi[f.b], v = scene.volume[f.a];
        const bool empty = halo < eps || own < eps;
        double* sums[] = {&g.x[f.a], &g.y[f.a], &g.z[f.a]};
        for (int axis = 0; axis < 3; ++axis)
            *sums[axis] += empty ? (1.0 / v) * f.area[axis] * own
                                 : ((1.0 / v) * f.area[axis]) * 0.5 * (own + halo);
    }
    copyToSlots(scene.wall, g);
    copyToSlots(scene.inlet, g);
    copyToSlots(scene.symm, g);
    refreshAll(g, refresh);
    zeroFlat(scene, state, g, 0.001);
}

}  // namespace weldline::test
