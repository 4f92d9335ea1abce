#pragma once

class CKVR3DWeldLine;

namespace weldline::core {

// A negative boundary angle takes the method's default; angles of 179.999999 degrees and more
// become 179.999999.
void limitBoundaryAngle(double& boundaryAngle, double defaultAngle);

// Preparation of methods 1 to 3: default and limit of m_BoundaryAngle, which then becomes its own
// cosine, and the gradient-magnitude limits over the own cells:
//
//   upper = 0.99 max,   lower = mean m_GradMeanFactor m_GradValueFilterPara.
//
// On purpose: the cosine stays in m_BoundaryAngle, and a later run takes it as degrees.
void prepareLimits(CKVR3DWeldLine& record, double defaultAngle);

}  // namespace weldline::core
