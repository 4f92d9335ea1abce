#include "LevelSkeleton.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

#include "GraphPaths.h"

namespace weldline {

namespace {

// Connected parts of slices, and which of them touch.
struct Slices {
    PointGraph graph;                     // one place per part: the mean of its nodes
    std::vector<std::vector<int>> nodes;  // per part
};

// The nodes at one end of the band, all across its width: those nearly as far from the other end
// as the farthest. Slices from a single node would bend round it.
std::vector<int> endOfBand(const PointGraph& graph, double link) {
    const int first = shortestPaths(graph, {0}).farthest();
    const GraphPaths paths = shortestPaths(graph, {first});
    const double reach = paths.length[paths.farthest()] - 1.5 * link;
    const int last = paths.farthest();
    std::vector<bool> seen(graph.places.size(), false);
    std::vector<int> end{last};
    seen[last] = true;
    for (std::size_t i = 0; i < end.size(); ++i)
        for (const int other : graph.links[end[i]])
            if (!seen[other] && paths.length[other] >= reach) {
                seen[other] = true;
                end.push_back(other);
            }
    return end;
}

std::vector<int> slicesFrom(const PointGraph& graph, const std::vector<int>& end, double width) {
    const GraphPaths paths = shortestPaths(graph, end);
    std::vector<int> slice(graph.places.size());
    for (std::size_t n = 0; n < slice.size(); ++n)
        slice[n] = static_cast<int>(std::floor(paths.length[n] / width + 1e-9));
    return slice;
}

Vec3 meanPlace(const PointGraph& graph, const std::vector<int>& nodes) {
    Vec3 sum;
    for (const int n : nodes) sum = sum + graph.places[n];
    return (1.0 / static_cast<double>(nodes.size())) * sum;
}

Slices partsOf(const PointGraph& graph, const std::vector<int>& slice) {
    Slices parts;
    std::vector<int> partOf(slice.size(), -1);
    for (int start = 0; start < graph.count(); ++start) {
        if (partOf[start] >= 0) continue;
        const auto part = static_cast<int>(parts.nodes.size());
        std::vector<int> nodes{start};
        partOf[start] = part;
        for (std::size_t i = 0; i < nodes.size(); ++i)
            for (const int other : graph.links[nodes[i]])
                if (partOf[other] < 0 && slice[other] == slice[start]) {
                    partOf[other] = part;
                    nodes.push_back(other);
                }
        parts.graph.places.push_back(meanPlace(graph, nodes));
        parts.nodes.push_back(std::move(nodes));
    }
    for (const std::vector<int>& nodes : parts.nodes) {
        std::set<int> touching;
        for (const int n : nodes)
            for (const int other : graph.links[n]) touching.insert(partOf[other]);
        touching.erase(partOf[nodes.front()]);
        parts.graph.links.append(std::vector<int>(touching.begin(), touching.end()));
    }
    return parts;
}

// Median over the parts of the distance of their farthest node from the middle.
double halfWidth(const PointGraph& graph, const Slices& slices) {
    std::vector<double> radii;
    for (std::size_t p = 0; p < slices.nodes.size(); ++p) {
        double radius = 0.0;
        for (const int n : slices.nodes[p])
            radius = std::max(radius, norm(graph.places[n] - slices.graph.places[p]));
        radii.push_back(radius);
    }
    const auto middle = radii.begin() + static_cast<std::ptrdiff_t>(radii.size() / 2);
    std::nth_element(radii.begin(), middle, radii.end());
    return *middle;
}

// A second way back from the far end of a way, which shares nothing with it but that end: the part
// belongs to a ring. Empty where there is none.
std::vector<int> otherWay(const PointGraph& parts, const std::vector<int>& covered,
                          const std::vector<int>& way) {
    std::vector<bool> isTaken(parts.places.size(), false);
    for (std::size_t i = 1; i + 1 < way.size(); ++i) isTaken[way[i]] = true;
    PointGraph rest;
    rest.places = parts.places;
    for (int p = 0; p < parts.count(); ++p) {
        std::vector<int> row;
        for (const int other : parts.links[p])
            if (!isTaken[p] && !isTaken[other]) row.push_back(other);
        rest.links.append(row);
    }
    const GraphPaths paths = shortestPaths(rest, covered);
    if (!std::isfinite(paths.length[way.front()])) return {};
    return paths.wayBack(way.front());
}

// Ways through the parts: the longest, then from each remaining far part to what is covered, of a
// ring to both sides.
std::vector<std::vector<int>> waysThrough(const PointGraph& parts, double shortest) {
    const int end = shortestPaths(parts, {0}).farthest();
    const GraphPaths whole = shortestPaths(parts, {end});
    std::vector<std::vector<int>> ways{whole.wayBack(whole.farthest())};
    std::vector<int> covered = ways.front();
    for (;;) {
        const GraphPaths paths = shortestPaths(parts, covered);
        const int far = paths.farthest();
        if (!(paths.length[far] > shortest)) return ways;
        std::vector<int> way = paths.wayBack(far);
        std::vector<int> other = otherWay(parts, covered, way);
        if (!other.empty()) way.insert(way.begin(), other.rbegin(), other.rend() - 1);
        covered.insert(covered.end(), way.begin(), way.end());
        ways.push_back(std::move(way));
    }
}

// Joins two ways that end at the same part where no other way ends or passes.
bool joinOnce(std::vector<std::vector<int>>& ways) {
    const auto visits = [&](int part) {
        std::ptrdiff_t count = 0;
        for (const auto& way : ways) count += std::count(way.begin(), way.end(), part);
        return count;
    };
    for (std::size_t a = 0; a < ways.size(); ++a)
        for (std::size_t b = a + 1; b < ways.size(); ++b)
            for (int turn = 0; turn < 4; ++turn) {
                if (turn % 2 == 1) std::reverse(ways[a].begin(), ways[a].end());
                if (turn == 2) std::reverse(ways[b].begin(), ways[b].end());
                if (ways[a].back() != ways[b].front() || visits(ways[b].front()) != 2) continue;
                ways[a].insert(ways[a].end(), ways[b].begin() + 1, ways[b].end());
                ways.erase(ways.begin() + static_cast<std::ptrdiff_t>(b));
                return true;
            }
    return false;
}

double length(const std::vector<Vec3>& points) {
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) sum += norm(points[i] - points[i - 1]);
    return sum;
}

// Ends the front of a curve straight: slices near the end of a band lie askew in its corners, so
// those within half its width of the end are taken together, and the curve goes on from the next
// one in its direction as far as the nodes reach.
void straightenFront(const PointGraph& graph, double halfWidth, SkeletonCurve& curve) {
    std::size_t cut = 0;
    double way = 0.0;
    while (cut + 3 < curve.points.size() && way < halfWidth) {
        way += norm(curve.points[cut + 1] - curve.points[cut]);
        ++cut;
    }
    std::vector<int> nodes;
    for (std::size_t i = 0; i <= cut; ++i)
        nodes.insert(nodes.end(), curve.nodes[i].begin(), curve.nodes[i].end());
    const auto count = static_cast<std::ptrdiff_t>(cut);
    curve.points.erase(curve.points.begin(), curve.points.begin() + count);
    curve.nodes.erase(curve.nodes.begin(), curve.nodes.begin() + count);
    const Vec3 along =
        curve.points[0] - curve.points[std::min<std::size_t>(2, curve.points.size() - 1)];
    const double span = norm(along);
    if (span == 0.0) return;
    double reach = 0.0;
    for (const int n : nodes)
        reach = std::max(reach, dot(graph.places[n] - curve.points[0], along) / span);
    curve.points[0] = curve.points[0] + (reach / span) * along;
    curve.nodes[0] = std::move(nodes);
}

void reverse(SkeletonCurve& curve) {
    std::reverse(curve.points.begin(), curve.points.end());
    std::reverse(curve.nodes.begin(), curve.nodes.end());
}

SkeletonCurve curveOf(const PointGraph& graph, const Slices& slices, std::vector<int> way,
                      const std::vector<std::vector<int>>& ways, double halfWidth) {
    SkeletonCurve curve;
    curve.isClosed = way.size() > 3 && way.front() == way.back();
    if (curve.isClosed) way.pop_back();
    for (const int part : way) {
        curve.points.push_back(slices.graph.places[part]);
        curve.nodes.push_back(slices.nodes[part]);
    }
    if (curve.isClosed || way.size() < 2) return curve;
    const auto isFree = [&](int part) {
        std::ptrdiff_t count = 0;
        for (const auto& other : ways) count += std::count(other.begin(), other.end(), part);
        return count == 1;
    };
    if (isFree(way.front())) straightenFront(graph, halfWidth, curve);
    reverse(curve);
    if (isFree(way.back())) straightenFront(graph, halfWidth, curve);
    reverse(curve);
    return curve;
}

// The direction in which nodes reach farthest from their middle: the main axis of their second
// moments, by repeated multiplication from the direction between two far nodes.
Vec3 mainAxis(const std::vector<Vec3>& places, Vec3 middle, Vec3 start) {
    Vec3 axis = (1.0 / norm(start)) * start;
    for (int step = 0; step < 50; ++step) {
        Vec3 next;
        for (const Vec3 place : places) next = next + dot(place - middle, axis) * (place - middle);
        if (norm(next) == 0.0) return axis;
        axis = (1.0 / norm(next)) * next;
    }
    return axis;
}

// A band hardly longer than it is wide: along its main axis, from end to end.
SkeletonCurve shortCurve(const PointGraph& graph) {
    const int first = shortestPaths(graph, {0}).farthest();
    const int last = shortestPaths(graph, {first}).farthest();
    std::vector<int> all(graph.places.size());
    std::iota(all.begin(), all.end(), 0);
    const Vec3 middle = meanPlace(graph, all);
    const Vec3 axis = mainAxis(graph.places, middle, graph.places[last] - graph.places[first]);
    double low = 0.0;
    double high = 0.0;
    for (const Vec3 place : graph.places) {
        low = std::min(low, dot(place - middle, axis));
        high = std::max(high, dot(place - middle, axis));
    }
    return {{middle + low * axis, middle + high * axis}, {all, all}, false};
}

SkeletonCurve singlePoint(const PointGraph& graph) {
    std::vector<int> all(graph.places.size());
    std::iota(all.begin(), all.end(), 0);
    return {{graph.places.front()}, {all}, false};
}

}  // namespace

double typicalLinkLength(const PointGraph& graph) {
    std::vector<double> lengths;
    for (int n = 0; n < graph.count(); ++n)
        for (const int other : graph.links[n])
            if (n < other) lengths.push_back(norm(graph.places[other] - graph.places[n]));
    if (lengths.empty()) return 0.0;
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return *middle;
}

std::vector<SkeletonCurve> skeletonOf(const PointGraph& graph) {
    const double link = typicalLinkLength(graph);
    if (!(link > 0.0)) return {singlePoint(graph)};
    const double width = 2.0 * link;
    const Slices slices = partsOf(graph, slicesFrom(graph, endOfBand(graph, link), width));
    const double half = halfWidth(graph, slices);
    std::vector<std::vector<int>> ways =
        waysThrough(slices.graph, std::max(2.0 * width, 2.0 * half));
    while (joinOnce(ways)) {
    }
    std::vector<SkeletonCurve> curves;
    curves.reserve(ways.size());
    for (const std::vector<int>& way : ways)
        curves.push_back(curveOf(graph, slices, way, ways, half));
    const bool isShort = curves.size() == 1 && !curves[0].isClosed &&
                         (curves[0].points.size() < 3 || length(curves[0].points) < 3.0 * half);
    if (isShort) return {shortCurve(graph)};
    return curves;
}

}  // namespace weldline
