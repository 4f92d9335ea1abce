#include "CompareLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>

namespace weldline {

namespace {

constexpr double kNoDistance = std::numeric_limits<double>::quiet_NaN();
constexpr double kAngleChange = 5.0;   // degrees
constexpr double kLengthChange = 0.1;  // of the length before

double distanceToSegment(Vec3 x, Vec3 a, Vec3 b) {
    const Vec3 way = b - a;
    const double square = dot(way, way);
    const double t = square > 0.0 ? std::clamp(dot(x - a, way) / square, 0.0, 1.0) : 0.0;
    return norm(x - (a + t * way));
}

double distanceToCurve(Vec3 x, const LineCurve& curve) {
    const std::vector<Vec3>& points = curve.points;
    double nearest = norm(x - points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
        nearest = std::min(nearest, distanceToSegment(x, points[i - 1], points[i]));
    if (curve.isClosed)
        nearest = std::min(nearest, distanceToSegment(x, points.back(), points.front()));
    return nearest;
}

double meanDistance(const LineShape& from, const LineShape& to) {
    double sum = 0.0;
    std::size_t count = 0;
    for (const LineCurve& curve : from.path) {
        for (const Vec3 x : curve.points) {
            double nearest = std::numeric_limits<double>::infinity();
            for (const LineCurve& other : to.path)
                nearest = std::min(nearest, distanceToCurve(x, other));
            sum += nearest;
        }
        count += curve.points.size();
    }
    return sum / static_cast<double>(count);
}

const LineShape& shapeOf(const LinesOfResult& result, const WeldLine& line) {
    return *std::lower_bound(result.shapes.begin(), result.shapes.end(), line.id,
                             [](const LineShape& shape, int id) { return shape.id < id; });
}

// How far the boxes of two lines' nodes are apart; no point of one line is nearer to the other.
double gapBetween(const WeldLine& a, const WeldLine& b) {
    const auto along = [](double lowA, double highA, double lowB, double highB) {
        return std::max({0.0, lowA - highB, lowB - highA});
    };
    return norm({along(a.low.x, a.high.x, b.low.x, b.high.x),
                 along(a.low.y, a.high.y, b.low.y, b.high.y),
                 along(a.low.z, a.high.z, b.low.z, b.high.z)});
}

struct Pair {
    double distance;
    std::size_t a, b;  // positions in the lines of A and B

    bool operator<(const Pair& other) const {
        return std::tie(distance, a, b) < std::tie(other.distance, other.a, other.b);
    }
};

// Pairs that can be the same line, best first.
std::vector<Pair> possiblePairs(const LinesOfResult& a, const LinesOfResult& b, double tolerance) {
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i < a.lines.lines.size(); ++i) {
        for (std::size_t j = 0; j < b.lines.lines.size(); ++j) {
            const WeldLine& first = a.lines.lines[i];
            const WeldLine& second = b.lines.lines[j];
            const double limit = std::max(tolerance, 0.5 * std::sqrt(first.length * second.length));
            if (gapBetween(first, second) > limit) continue;
            const double distance = distanceBetween(shapeOf(a, first), shapeOf(b, second));
            if (distance <= limit) pairs.push_back({distance, i, j});
        }
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

ComparedLine matched(const WeldLine& before, const WeldLine& after, double distance,
                     double tolerance) {
    ComparedLine line{LineFate::Same, &before, &after, distance};
    line.angleChanged = std::abs(after.smallestAngle - before.smallestAngle) > kAngleChange;
    line.lengthChanged = std::abs(after.length - before.length) > kLengthChange * before.length;
    line.classChanged = after.kind != before.kind;
    if (distance > tolerance)
        line.fate = LineFate::Moved;
    else if (line.angleChanged || line.lengthChanged || line.classChanged)
        line.fate = LineFate::Changed;
    return line;
}

}  // namespace

double distanceBetween(const LineShape& a, const LineShape& b) {
    return 0.5 * (meanDistance(a, b) + meanDistance(b, a));
}

double typicalCellSize(const FvMesh& mesh) {
    if (mesh.cellCount() == 0) return 0.0;
    std::vector<double> volumes = mesh.cellVolume;
    const auto middle = volumes.begin() + static_cast<std::ptrdiff_t>(volumes.size() / 2);
    std::nth_element(volumes.begin(), middle, volumes.end());
    return std::cbrt(*middle);
}

std::vector<ComparedLine> compareLines(const LinesOfResult& a, const LinesOfResult& b,
                                       double tolerance) {
    std::vector<ComparedLine> compared;
    for (const WeldLine& line : a.lines.lines)
        compared.push_back({LineFate::Gone, &line, nullptr, kNoDistance});
    std::vector<bool> isTaken(b.lines.lines.size(), false);
    for (const Pair& pair : possiblePairs(a, b, tolerance)) {
        ComparedLine& line = compared[pair.a];
        if (line.after != nullptr || isTaken[pair.b]) continue;
        line = matched(*line.before, b.lines.lines[pair.b], pair.distance, tolerance);
        isTaken[pair.b] = true;
    }
    for (std::size_t j = 0; j < isTaken.size(); ++j)
        if (!isTaken[j])
            compared.push_back({LineFate::New, nullptr, &b.lines.lines[j], kNoDistance});
    return compared;
}

std::string nameOf(LineFate fate) {
    constexpr std::array<const char*, 5> names{"same", "changed", "moved", "gone", "new"};
    return names[static_cast<std::size_t>(fate)];
}

}  // namespace weldline
