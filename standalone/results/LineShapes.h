#pragma once

#include <vector>

#include "LineMesh.h"

namespace weldline {

// A polyline along a weld line with what the nodes around each of its points have.
struct LineCurve {
    std::vector<Vec3> points;   // ordered; of a closed curve the first stands once
    std::vector<double> angle;  // per point: mean of the reported angles, degrees
    std::vector<double> time;   // per point: mean formation time; NaN where there is none
    bool isClosed = false;

    double length() const;
};

// The shape of one weld line. Lengths are in the data set's unit.
struct LineShape {
    int id = 0;                   // of the weld line
    std::vector<LineCurve> path;  // through the part, along the middle of the weld surface: the
                                  // longest curve first, then its branches
    std::vector<LineCurve> skin;  // where the weld surface comes out of the part, on its skin
    double length = 0.0;          // of the longest curve through the part
    double branchLength = 0.0;    // of the other curves through the part
    double skinLength = 0.0;      // of all curves on the skin

    // Whether the line can be followed on the skin, rather than ending there or staying inside.
    bool runsAlongSkin() const { return skinLength >= length; }
};

// The shapes of all weld lines, by id. Curves are smoothed lightly (two passes of weights 1/4, 1/2,
// 1/4; ends stay); those on the skin lie on it.
std::vector<LineShape> shapesOf(const LineMesh& mesh);

}  // namespace weldline
