#include "LevelSkeleton.h"

#include <algorithm>
#include <cmath>
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

// Ways through the parts: the longest, then from each remaining far part to what is covered.
std::vector<std::vector<int>> waysThrough(const PointGraph& parts, double shortest) {
    const int end = shortestPaths(parts, {0}).farthest();
    const GraphPaths whole = shortestPaths(parts, {end});
    std::vector<std::vector<int>> ways{whole.wayBack(whole.farthest())};
    std::vector<int> covered = ways.front();
    for (;;) {
        const GraphPaths paths = shortestPaths(parts, covered);
        const int far = paths.farthest();
        if (!(paths.length[far] > shortest)) return ways;
        ways.push_back(paths.wayBack(far));
        covered.insert(covered.end(), ways.back().begin(), ways.back().end() - 1);
    }
}

// A ring is cut into ways whose far ends touch: the last step between them is added.
void closeGaps(const PointGraph& parts, std::vector<std::vector<int>>& ways) {
    for (std::size_t a = 0; a < ways.size(); ++a) {
        if (ways[a].size() < 2) continue;
        const int tip = ways[a].front();
        for (std::size_t b = 0; b <= a; ++b) {
            const auto& other = ways[b];
            const auto meets = std::find_if(other.begin(), other.end(), [&](int part) {
                const auto row = parts.links[tip];
                return part != ways[a][1] && part != tip &&
                       std::find(row.begin(), row.end(), part) != row.end();
            });
            if (meets == other.end()) continue;
            if (a == b && meets - other.begin() < 3) continue;
            ways[a].insert(ways[a].begin(), *meets);
            break;
        }
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

// Moves the end of a curve outwards as far as its nodes reach.
void reachOut(const PointGraph& graph, const std::vector<int>& nodes, Vec3 inner, Vec3& end) {
    const Vec3 along = end - inner;
    const double length = norm(along);
    if (length == 0.0) return;
    double reach = 0.0;
    for (const int n : nodes)
        reach = std::max(reach, dot(graph.places[n] - end, along) / length);
    end = end + (reach / length) * along;
}

SkeletonCurve curveOf(const PointGraph& graph, const Slices& slices, std::vector<int> way,
                      const std::vector<std::vector<int>>& ways) {
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
    const std::size_t last = way.size() - 1;
    const Vec3 second = curve.points[1];
    const Vec3 beforeLast = curve.points[last - 1];
    if (isFree(way.front())) reachOut(graph, curve.nodes.front(), second, curve.points.front());
    if (isFree(way.back())) reachOut(graph, curve.nodes.back(), beforeLast, curve.points.back());
    return curve;
}

// All nodes within one slice: from one end to the other.
SkeletonCurve shortCurve(const PointGraph& graph, const std::vector<int>& nodes) {
    const int first = shortestPaths(graph, {0}).farthest();
    const int last = shortestPaths(graph, {first}).farthest();
    if (first == last) return {{graph.places[first]}, {nodes}, false};
    return {{graph.places[first], graph.places[last]}, {nodes, nodes}, false};
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
    if (!(link > 0.0)) {
        std::vector<int> all(graph.places.size());
        for (std::size_t n = 0; n < all.size(); ++n) all[n] = static_cast<int>(n);
        return {{{graph.places.front()}, {all}, false}};
    }
    const double width = 2.0 * link;
    const Slices slices = partsOf(graph, slicesFrom(graph, endOfBand(graph, link), width));
    if (slices.nodes.size() == 1) return {shortCurve(graph, slices.nodes.front())};
    const double shortest = std::max(2.0 * width, 2.0 * halfWidth(graph, slices));
    std::vector<std::vector<int>> ways = waysThrough(slices.graph, shortest);
    closeGaps(slices.graph, ways);
    while (joinOnce(ways)) {
    }
    std::vector<SkeletonCurve> curves;
    curves.reserve(ways.size());
    for (const std::vector<int>& way : ways) curves.push_back(curveOf(graph, slices, way, ways));
    return curves;
}

}  // namespace weldline
