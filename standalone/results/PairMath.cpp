#include "PairMath.h"

#include <algorithm>
#include <cmath>

namespace weldline {

double gradientAngle(Vec3 ga, Vec3 gb) {
    const double c = dot(gb, ga) / (norm(gb) * norm(ga) + kNoMelt);
    return std::acos(std::clamp(c, -1.0, 1.0)) * 180.0 / kShortPi;
}

double cosineTowards(Vec3 g, Vec3 X, Vec3 Q) {
    const Vec3 d = Q - X;
    return dot(g, d) / (norm(d) * norm(g) + kNoMelt);
}

bool shareAllSigns(Vec3 ga, Vec3 gb) {
    return gb.x * ga.x > 0.0 && gb.y * ga.y > 0.0 && gb.z * ga.z > 0.0;
}

double coneAngle(double setting, double ofMethod) {
    constexpr double largest = 179.999999;
    return std::min(setting < 0.0 ? ofMethod : setting, largest);
}

}  // namespace weldline
