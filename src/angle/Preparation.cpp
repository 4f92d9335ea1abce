#include "Preparation.h"

#include <cmath>

#include "CKVR3DWeldLine.h"
#include "Extent.h"
#include "PairTests.h"
#include "VectorAngle.h"

namespace weldline::core {

namespace {

constexpr double kLargestBoundaryAngle = 179.999999;
constexpr double kMagnitudeFloor = 1e-20;

void calculateGradientLimits(CKVR3DWeldLine& r) {
    const CellVectors g = cellFields(r).g;
    const int ownCells = extentOf(r).ownCells;
    double largest = 0.0;
    double sum = 0.0;
    for (int c = 1; c <= ownCells; ++c) {
        double magnitude = length(g[c]);
        if (magnitude < kMagnitudeFloor) magnitude = kMagnitudeFloor;
        if (magnitude > largest) largest = magnitude;
        sum = sum + magnitude;
    }
    r.m_GradMagUpper = largest * 0.99;
    r.m_GradMagLower = sum / ownCells * r.m_GradMeanFactor * r.m_GradValueFilterPara;
}

}  // namespace

void limitBoundaryAngle(double& boundaryAngle, double defaultAngle) {
    if (boundaryAngle < 0.0) boundaryAngle = defaultAngle;
    if (boundaryAngle >= kLargestBoundaryAngle) boundaryAngle = kLargestBoundaryAngle;
}

void prepareLimits(CKVR3DWeldLine& r, double defaultAngle) {
    limitBoundaryAngle(r.m_BoundaryAngle, defaultAngle);
    r.m_BoundaryAngle = std::cos(r.m_BoundaryAngle / 180.0 * kPi);
    calculateGradientLimits(r);
}

}  // namespace weldline::core
