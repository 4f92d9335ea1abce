#include "VectorAngle.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Extent.h"

namespace weldline::core {

double vectorAngle(const Vec3& ga, const Vec3& gb) {
    const double c = dot(gb, ga) / (length(gb) * length(ga) + kEps);
    return std::acos(std::clamp(c, -1.0, 1.0)) * 180.0 / kPi;
}

// An angle of 0 and less is always reached; so may be one within the margin of 0.
AngleBound::AngleBound(double smallestAngle) {
    constexpr double kMargin = 1e-9;
    const double cosine = smallestAngle > 0.0 ? std::cos(smallestAngle * kPi / 180.0) : 1.0;
    const double k = std::max(cosine, 0.0) + kMargin;
    m_squaredCosine = k < 1.0 ? k * k : std::numeric_limits<double>::infinity();
}

}  // namespace weldline::core
