#pragma once

#include <vector>

#include "FrontCase.h"
#include "mesh/FvMesh.h"

namespace weldline::accuracy {

// How angles at nodes compare with the true weld line. Lengths count in the edge length h of the
// mesh, angles in degrees. Shares and means of nothing are NaN.
struct Accuracy {
    int weldNodes = 0;
    // Over the weld nodes within h of the line where the true angle is at most kLargestAngle.
    double angleError = 0.0;  // mean absolute error
    double angleBias = 0.0;   // mean error; positive: the calculated angle is too wide
    // Median over the same nodes of tan(true angle / 2) / tan(calculated angle / 2): the share of
    // the velocity across the line that the gradient scheme and its smoothing leave.
    double damping = 0.0;
    // Mean absolute error of 2 atan(damping tan(calculated angle / 2)): what a correction of the
    // angle by its known damping would leave.
    double correctedError = 0.0;
    // Over the points of the true line with an angle of at most kLargestAngle.
    double found = 0.0;  // share with a weld node within 1.5 h
    // Over all weld nodes.
    double falseNodes = 0.0;  // share farther than 3 h from the line
    double distance = 0.0;    // mean distance from the line
};

// The line counts up to this meeting angle; beyond it, streams run side by side, and the library's
// own limit (135 or 145 degrees) takes nodes away.
inline constexpr double kLargestAngle = 120.0;

// The true line within one mesh: each node's nearest point of the line.
class TrueLine {
  public:
    TrueLine(const FrontCase& front, const FvMesh& mesh, double h);

    // angles: per node in degrees, 180 where nothing meets.
    Accuracy measure(const std::vector<double>& angles) const;

    struct Sample {
        double truth = 0.0;   // angle of the line, degrees
        double result = 0.0;  // angle of a weld node within h of it
    };
    std::vector<Sample> samples(const std::vector<double>& angles) const;

  private:
    bool counts(std::size_t node, double angle) const;

    std::vector<double> m_distance;          // per node, in h
    std::vector<double> m_angle;             // per node: angle at the nearest point of the line
    std::vector<std::vector<int>> m_around;  // per counted point of the line: nodes within 1.5 h
};

}  // namespace weldline::accuracy
