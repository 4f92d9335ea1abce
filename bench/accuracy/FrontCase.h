#pragma once

#include <functional>
#include <string>
#include <vector>

#include "PlaneMesh.h"

namespace weldline::accuracy {

// A point of the true weld line with the true meeting angle there, in degrees.
struct LinePoint {
    Point2 place;
    double angle = 0.0;
};

inline constexpr double kFrontSpeed = 10.0;  // mm/s

// A filling of a plate whose arrival times and weld line are known exactly. The melt advances at
// constant speed along the shortest way (eikonal equation), through the whole thickness at once, so
// that all is a function of the plane. Millimetres and seconds.
struct FrontCase {
    std::string name;  // also the name of its tables and pictures
    std::string title;
    Point2 low, high;         // the plate
    double holeRadius = 0.0;  // of a hole at the origin; 0 none
    std::function<double(Point2)> arrival;
    // The line, evenly spaced in steps of at most 0.1 mm, also beyond the plate.
    std::vector<LinePoint> line;
};

// Point sources at distance 2 L: the line is their bisector; at distance y from the middle the
// meeting angle is 2 atan(y / L).
FrontCase twoSources();

// A plane front meets a hole of radius R. The melt reaches the shadow of the hole along tangents
// that leave the circle after creeping round it; behind the hole, at distance r from its centre,
// the streams meet at 2 acos(R / r).
FrontCase frontRoundHole();

// A line source and a point source at distance 2 a: the line is a parabola with the point source in
// its focus; at distance r from the point source the streams meet at acos(2 a / r - 1).
FrontCase lineAgainstPoint();

std::vector<FrontCase> allCases();

}  // namespace weldline::accuracy
