#include "GraphPaths.h"

#include <cmath>
#include <limits>
#include <queue>
#include <utility>

namespace weldline {

int GraphPaths::farthest() const {
    int best = -1;
    for (int n = 0; n < static_cast<int>(length.size()); ++n)
        if (std::isfinite(length[n]) && (best < 0 || length[n] > length[best])) best = n;
    return best;
}

std::vector<int> GraphPaths::wayBack(int end) const {
    std::vector<int> way;
    for (int n = end; n >= 0; n = previous[n]) way.push_back(n);
    return way;
}

GraphPaths shortestPaths(const PointGraph& graph, const std::vector<int>& starts) {
    GraphPaths paths;
    paths.length.assign(graph.places.size(), std::numeric_limits<double>::infinity());
    paths.previous.assign(graph.places.size(), -1);
    using Reached = std::pair<double, int>;
    std::priority_queue<Reached, std::vector<Reached>, std::greater<>> next;
    for (const int node : starts) {
        paths.length[node] = 0.0;
        next.emplace(0.0, node);
    }
    while (!next.empty()) {
        const auto [length, node] = next.top();
        next.pop();
        if (length > paths.length[node]) continue;
        for (const int other : graph.links[node]) {
            const double way = length + norm(graph.places[other] - graph.places[node]);
            if (way < paths.length[other]) {
                paths.length[other] = way;
                paths.previous[other] = node;
                next.emplace(way, other);
            }
        }
    }
    return paths;
}

}  // namespace weldline
