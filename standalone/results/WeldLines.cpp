#include "WeldLines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "bind/FillTime.h"

namespace weldline {

namespace {

constexpr double noTime = std::numeric_limits<double>::quiet_NaN();

// Sets of nodes under joining; a set is named by its smallest node.
class NodeSets {
  public:
    explicit NodeSets(int nodes) : m_parent(nodes) {
        std::iota(m_parent.begin(), m_parent.end(), 0);
    }

    int find(int node) {
        while (m_parent[node] != node) {
            m_parent[node] = m_parent[m_parent[node]];
            node = m_parent[node];
        }
        return node;
    }

    void join(int a, int b) {
        a = find(a);
        b = find(b);
        m_parent[std::max(a, b)] = std::min(a, b);
    }

  private:
    std::vector<int> m_parent;
};

void joinAlongEdges(const FvMesh& mesh, const std::vector<bool>& weld, NodeSets& sets) {
    for (int f = 0; f < mesh.faceCount(); ++f) {
        const auto polygon = mesh.faceNodes[f];
        int previous = polygon.back();
        for (const int node : polygon) {
            if (weld[previous] && weld[node]) sets.join(previous, node);
            previous = node;
        }
    }
}

// Nodes of each set, sets in order of their smallest node, nodes ascending.
std::vector<WeldLine> collect(const std::vector<bool>& weld, NodeSets& sets) {
    std::vector<WeldLine> lines;
    std::vector<int> lineOfSet(weld.size(), -1);
    for (int n = 0; n < static_cast<int>(weld.size()); ++n) {
        if (!weld[n]) continue;
        int& line = lineOfSet[sets.find(n)];
        if (line < 0) {
            line = static_cast<int>(lines.size());
            lines.emplace_back();
        }
        lines[line].nodes.push_back(n);
    }
    return lines;
}

// Largest fill time among the reached cells around each weld node.
std::vector<double> formationTimes(const FvMesh& mesh, const std::vector<float>& fillTime,
                                   const std::vector<bool>& weld) {
    std::vector<double> times(weld.size(), noTime);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        if (!isReached(fillTime[c])) continue;
        const auto time = static_cast<double>(fillTime[c]);
        for (const int node : mesh.cellNodes[c])
            if (weld[node] && !(times[node] >= time)) times[node] = time;
    }
    return times;
}

void measureAngles(WeldLine& line, const std::vector<double>& angles) {
    double sum = 0.0;
    line.smallestAngle = 180.0;
    for (const int n : line.nodes) {
        const double angle = reportedAngle(angles[n]);
        line.smallestAngle = std::min(line.smallestAngle, angle);
        sum += angle;
    }
    line.meanAngle = sum / static_cast<double>(line.nodes.size());
}

void measurePlace(WeldLine& line, const std::vector<Vec3>& points) {
    line.low = line.high = points[line.nodes.front()];
    Vec3 sum;
    for (const int n : line.nodes) {
        const Vec3 p = points[n];
        line.low = {std::min(line.low.x, p.x), std::min(line.low.y, p.y),
                    std::min(line.low.z, p.z)};
        line.high = {std::max(line.high.x, p.x), std::max(line.high.y, p.y),
                     std::max(line.high.z, p.z)};
        sum = sum + p;
    }
    line.centroid = (1.0 / static_cast<double>(line.nodes.size())) * sum;
}

void measureTimes(WeldLine& line, const std::vector<double>& formationTime) {
    line.firstTime = line.lastTime = noTime;
    for (const int n : line.nodes) {
        const double time = formationTime[n];
        if (std::isnan(time)) continue;
        if (!(line.firstTime <= time)) line.firstTime = time;
        if (!(line.lastTime >= time)) line.lastTime = time;
    }
}

}  // namespace

WeldLines findWeldLines(const FvMesh& mesh, const std::vector<double>& angles,
                        const std::vector<float>& fillTime, double limit) {
    WeldLines result;
    std::vector<bool> weld(angles.size());
    for (std::size_t n = 0; n < angles.size(); ++n) {
        weld[n] = angles[n] < 180.0 && angles[n] < limit;
        result.weldNodes += weld[n] ? 1 : 0;
        result.undefinedNodes += std::isnan(angles[n]) ? 1 : 0;
    }
    NodeSets sets(static_cast<int>(angles.size()));
    joinAlongEdges(mesh, weld, sets);
    result.lines = collect(weld, sets);
    // Stable, so that lines of equal size stay in order of their smallest node.
    std::stable_sort(
        result.lines.begin(), result.lines.end(),
        [](const WeldLine& a, const WeldLine& b) { return a.nodes.size() > b.nodes.size(); });

    result.formationTime = formationTimes(mesh, fillTime, weld);
    result.nodeLine.assign(angles.size(), 0);
    int id = 0;
    for (WeldLine& line : result.lines) {
        line.id = ++id;
        for (const int n : line.nodes) result.nodeLine[n] = line.id;
        measureAngles(line, angles);
        measurePlace(line, mesh.points);
        measureTimes(line, result.formationTime);
    }
    return result;
}

}  // namespace weldline
