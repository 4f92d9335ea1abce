#include "VectorAngle.h"

#include <algorithm>
#include <cmath>

#include "Extent.h"

namespace weldline::core {

double vectorAngle(const Vec3& ga, const Vec3& gb) {
    const double c = dot(gb, ga) / (length(gb) * length(ga) + kEps);
    return std::acos(std::clamp(c, -1.0, 1.0)) * 180.0 / kPi;
}

}  // namespace weldline::core
