#pragma once

#include <functional>
#include <vector>

#include "NumericsTest.h"

namespace weldline::test {

// The geometry of a test host as a plain list of faces, for naive computations.
struct SceneFace {
    int a = 0;  // own cell, the first one of an inner face
    int b = 0;  // second cell, halo slot or boundary-value slot
    Point area{}, centre{};
    double lambda = 0.0;  // of b; only inner and interface faces
};

struct Scene {
    int own = 0;                // own cells
    int slots = 0;              // cell slots
    std::vector<Point> centre;  // 1-based, as all arrays here
    std::vector<double> volume;
    std::vector<SceneFace> inner, interface, inlet, symm, wall;
};

Scene sceneOf(TestHost& host);

// What the operations read and leave behind, besides their arguments; 1-based cell arrays.
struct SceneState {
    std::vector<double> loaded;  // flow variable as loaded
    std::vector<int> zeroGradient;
    Vectors work;
    double faceArea = 0.0;
};

SceneState stateOf(const CKVR3DWeldLine& calc, int slots);

using HaloRefresh = std::function<void(double*)>;

// The operations written down line by line, with no thought of speed or reuse. Slots of results
// are cleared or kept as the operation prescribes.
void naiveSmooth(const Scene& scene, SceneState& state, std::vector<double>& phi, int passes,
                 const HaloRefresh& refresh);
void naiveDefault(const Scene& scene, SceneState& state, int iterations,
                  const std::vector<double>& phi, Vectors& g, const HaloRefresh& refresh);
void naiveUpwind(const Scene& scene, SceneState& state, const std::vector<double>& phi, Vectors& g,
                 const HaloRefresh& refresh);
void naiveIterative(const Scene& scene, SceneState& state, const std::vector<double>& phi,
                    Vectors& g, const HaloRefresh& refresh);
void naiveRbf(const Scene& scene, SceneState& state, const RbfRows& rows,
              const std::vector<double>& phi, Vectors& g, const HaloRefresh& refresh);
int naiveSingular(const Scene& scene);

}  // namespace weldline::test
