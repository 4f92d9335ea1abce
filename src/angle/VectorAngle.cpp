#include "VectorAngle.h"

#include <cmath>

#include "Extent.h"

namespace weldline::core {

double vectorAngle(const Vec3& ga, const Vec3& gb) {
    double c = dot(gb, ga) / (length(gb) * length(ga) + kEps);
    if (c > 1.0) c = 1.0;
    if (c < -1.0) c = -1.0;
    return std::acos(c) * 180.0 / kPi;
}

}  // namespace weldline::core
