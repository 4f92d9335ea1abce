#include "Measure.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <utility>

namespace weldline::accuracy {

namespace {

constexpr double kFoundWithin = 1.5;
constexpr double kOnLineWithin = 1.0;
constexpr double kFalseBeyond = 3.0;

bool inPlate(const FrontCase& front, Point2 p) {
    return p[0] >= front.low[0] && p[0] <= front.high[0] && p[1] >= front.low[1] &&
           p[1] <= front.high[1];
}

double ratio(double sum, std::size_t count) {
    return count == 0 ? std::numeric_limits<double>::quiet_NaN() : sum / static_cast<double>(count);
}

double median(std::vector<double> values) {
    if (values.empty()) return std::numeric_limits<double>::quiet_NaN();
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double tanHalf(double degrees) {
    return std::tan(degrees * std::numbers::pi / 360.0);
}

double corrected(double degrees, double damping) {
    return std::atan(damping * tanHalf(degrees)) * 360.0 / std::numbers::pi;
}

bool isWeld(double angle) {
    return angle < 180.0;
}

// Nodes sorted into squares of a given edge.
class Buckets {
  public:
    Buckets(const std::vector<Vec3>& points, double edge) : m_edge(edge) {
        for (std::size_t n = 0; n < points.size(); ++n)
            m_nodes[key({points[n].x, points[n].y})].push_back(static_cast<int>(n));
    }
    template <typename Visit>
    void around(Point2 p, const Visit& visit) const {
        const auto [i, j] = key(p);
        for (int di = -1; di <= 1; ++di)
            for (int dj = -1; dj <= 1; ++dj) {
                const auto found = m_nodes.find({i + di, j + dj});
                if (found == m_nodes.end()) continue;
                for (const int n : found->second) visit(n);
            }
    }

  private:
    std::pair<int, int> key(Point2 p) const {
        return {static_cast<int>(std::floor(p[0] / m_edge)),
                static_cast<int>(std::floor(p[1] / m_edge))};
    }
    double m_edge;
    std::map<std::pair<int, int>, std::vector<int>> m_nodes;
};

}  // namespace

TrueLine::TrueLine(const FrontCase& front, const FvMesh& mesh, double h)
    : m_distance(mesh.points.size()), m_angle(mesh.points.size()) {
    std::vector<LinePoint> line;
    for (const LinePoint& point : front.line)
        if (inPlate(front, point.place)) line.push_back(point);
    const auto away = [&](int n, Point2 p) {
        return std::hypot(mesh.points[n].x - p[0], mesh.points[n].y - p[1]) / h;
    };
    for (std::size_t n = 0; n < mesh.points.size(); ++n) {
        m_distance[n] = std::numeric_limits<double>::max();
        for (const LinePoint& point : line) {
            const double d = away(static_cast<int>(n), point.place);
            if (d >= m_distance[n]) continue;
            m_distance[n] = d;
            m_angle[n] = point.angle;
        }
    }
    const Buckets buckets(mesh.points, kFoundWithin * h);
    for (const LinePoint& point : line) {
        if (point.angle > kLargestAngle) continue;
        std::vector<int>& nodes = m_around.emplace_back();
        buckets.around(point.place, [&](int n) {
            if (away(n, point.place) <= kFoundWithin) nodes.push_back(n);
        });
    }
}

// Whether the angle of a node is compared with the true one.
bool TrueLine::counts(std::size_t n, double angle) const {
    return isWeld(angle) && m_distance[n] <= kOnLineWithin && m_angle[n] <= kLargestAngle;
}

Accuracy TrueLine::measure(const std::vector<double>& angles) const {
    Accuracy result;
    std::size_t onLine = 0, wrong = 0, found = 0;
    double error = 0.0, bias = 0.0, distance = 0.0;
    std::vector<double> damping;
    for (std::size_t n = 0; n < angles.size(); ++n) {
        if (!isWeld(angles[n])) continue;
        ++result.weldNodes;
        distance += m_distance[n];
        if (m_distance[n] > kFalseBeyond) ++wrong;
        if (!counts(n, angles[n])) continue;
        ++onLine;
        error += std::abs(angles[n] - m_angle[n]);
        bias += angles[n] - m_angle[n];
        damping.push_back(tanHalf(m_angle[n]) / tanHalf(angles[n]));
    }
    for (const std::vector<int>& nodes : m_around)
        found += std::any_of(nodes.begin(), nodes.end(), [&](int n) { return isWeld(angles[n]); });
    const auto welds = static_cast<std::size_t>(result.weldNodes);
    result.angleError = ratio(error, onLine);
    result.angleBias = ratio(bias, onLine);
    result.damping = median(damping);
    double left = 0.0;
    for (std::size_t n = 0; n < angles.size(); ++n)
        if (counts(n, angles[n]))
            left += std::abs(corrected(angles[n], result.damping) - m_angle[n]);
    result.correctedError = ratio(left, onLine);
    result.found = ratio(static_cast<double>(found), m_around.size());
    result.falseNodes = ratio(static_cast<double>(wrong), welds);
    result.distance = ratio(distance, welds);
    return result;
}

std::vector<TrueLine::Sample> TrueLine::samples(const std::vector<double>& angles) const {
    std::vector<Sample> result;
    for (std::size_t n = 0; n < angles.size(); ++n)
        if (isWeld(angles[n]) && m_distance[n] <= kOnLineWithin)
            result.push_back({m_angle[n], angles[n]});
    return result;
}

}  // namespace weldline::accuracy
