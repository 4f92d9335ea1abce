#pragma once

#include "mesh/Vec3.h"

namespace weldline {

// The arithmetic of the library's pair tests, to the last bit.

// Eight digits as in the library, in every conversion between degrees and radians.
inline constexpr double kShortPi = 3.14159265;

// Fill times not above this count as no melt; also the guard in denominators.
inline constexpr double kNoMelt = 1e-30;

// Angle between two gradients in degrees, 0 to 180.00000020568.
double gradientAngle(Vec3 ga, Vec3 gb);

// Cosine of the angle between a gradient and the way from X to Q.
double cosineTowards(Vec3 g, Vec3 X, Vec3 Q);

// The gradients share the sign of all three components.
bool shareAllSigns(Vec3 ga, Vec3 gb);

// An angle of the cone around the flow direction as it is used: negative ones are the method's own,
// and 180 degrees are never reached.
double coneAngle(double setting, double ofMethod);

}  // namespace weldline
