#pragma once

#include "Vec3.h"

namespace weldline::core {

// On purpose: eight digits, in every conversion between degrees and radians; results depend on it.
inline constexpr double kPi = 3.14159265;

// Angle between the gradients of cells a and b in degrees, 0 to 180.00000020568:
//
//   acos(c) 180 / pi,   c = g_b . g_a / (|g_b| |g_a| + 1e-30), raised to -1 where below.
//
// A zero gradient gives 90, a component that is not a number gives NaN.
double vectorAngle(const Vec3& ga, const Vec3& gb);

// Rules out that vectorAngle(ga, gb) reaches a smallest angle, without root and arc cosine: with
// k the cosine of that angle, at least 0,
//
//   g_a . g_b > 0  and  (g_a . g_b)^2 > k^2 |g_a|^2 |g_b|^2.
//
// It never errs on the side of exclusion: k is raised by far more than rounding can amount to, and
// gradients so small that the 1e-30 in the angle's denominator counts are not excluded.
class AngleBound {
  public:
    explicit AngleBound(double smallestAngle);

    bool excludes(const Vec3& ga, const Vec3& gb) const {
        const double product = dot(ga, gb);
        const double squares = dot(ga, ga) * dot(gb, gb);
        return product > 0.0 && squares > kSmallestSquares &&
               product * product > m_squaredCosine * squares;
    }

  private:
    static constexpr double kSmallestSquares = 1e-30;

    double m_squaredCosine;
};

}  // namespace weldline::core
