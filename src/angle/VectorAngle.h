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

}  // namespace weldline::core
