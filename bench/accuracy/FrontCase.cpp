#include "FrontCase.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace weldline::accuracy {

namespace {

constexpr double kFirstTime = 0.05;  // s, so that no cell is filled at time 0
constexpr double kStep = 0.1;        // mm along the line
constexpr double kDegrees = 180.0 / std::numbers::pi;

// The cases are laid out along axes that are turned against those of the mesh: lines along mesh
// lines would be found more easily than those of real parts.
constexpr double kTurn = 17.0 / kDegrees;

Point2 toCase(Point2 mesh) {
    const double c = std::cos(kTurn), s = std::sin(kTurn);
    return {c * mesh[0] + s * mesh[1], c * mesh[1] - s * mesh[0]};
}

Point2 toMesh(Point2 point) {
    const double c = std::cos(kTurn), s = std::sin(kTurn);
    return {c * point[0] - s * point[1], c * point[1] + s * point[0]};
}

double distance(Point2 a, Point2 b) {
    return std::hypot(a[0] - b[0], a[1] - b[1]);
}

double time(double way) {
    return kFirstTime + way / kFrontSpeed;
}

}  // namespace

FrontCase twoSources() {
    constexpr double L = 30.0;
    FrontCase result{"two-sources", "Two point sources", {-30, -10}, {30, 44}, 0.0, {}, {}};
    result.arrival = [](Point2 mesh) {
        const Point2 p = toCase(mesh);
        return time(std::min(distance(p, {-L, 0}), distance(p, {L, 0})));
    };
    for (int k = -300; k <= 700; ++k) {
        const double y = k * kStep;
        result.line.push_back({toMesh({0, y}), 2.0 * std::atan(std::abs(y) / L) * kDegrees});
    }
    return result;
}

FrontCase frontRoundHole() {
    constexpr double R = 9.0;
    FrontCase result{"round-hole", "Plane front round a hole", {-24, -24}, {36, 30}, R, {}, {}};
    result.arrival = [](Point2 mesh) {
        const Point2 p = toCase(mesh);
        constexpr double start = 40.0;  // the front begins this far before the centre
        const double r = std::hypot(p[0], p[1]);
        const double tangent =
            std::acos(std::min(R / r, 1.0));  // from the point to where its tangent touches
        const double creep = std::numbers::pi / 2 - std::atan2(std::abs(p[1]), p[0]) - tangent;
        if (p[0] <= 0.0 || creep <= 0.0) return time(start + p[0]);
        return time(start + R * creep + std::sqrt(std::max(r * r - R * R, 0.0)));
    };
    for (int k = 0; k <= 450; ++k) {
        const double r = R + k * kStep;
        result.line.push_back({toMesh({r, 0}), 2.0 * std::acos(R / r) * kDegrees});
    }
    return result;
}

FrontCase lineAgainstPoint() {
    constexpr double a = 22.0;
    FrontCase result{
        "line-point", "Line source against point source", {-20, -10}, {40, 44}, 0.0, {}, {}};
    result.arrival = [](Point2 mesh) {
        const Point2 p = toCase(mesh);
        return time(std::min(std::abs(p[0] + a), distance(p, {a, 0})));
    };
    // x = y^2 / (4 a), steps of at most kStep along the curve.
    for (double y = -40.0; y <= 80.0;) {
        const double x = y * y / (4.0 * a);
        result.line.push_back(
            {toMesh({x, y}), std::acos(std::clamp(2.0 * a / (x + a) - 1.0, -1.0, 1.0)) * kDegrees});
        y += kStep / std::hypot(1.0, y / (2.0 * a));
    }
    return result;
}

std::vector<FrontCase> allCases() {
    return {twoSources(), frontRoundHole(), lineAgainstPoint()};
}

}  // namespace weldline::accuracy
