#include "WeldLines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <unordered_map>

#include "LineRecords.h"
#include "bind/FillTime.h"
#include "comm/Messages.h"

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

void joinOnFaces(const FvMesh& mesh, const std::vector<bool>& weld, NodeSets& sets) {
    for (int f = 0; f < mesh.faceCount(); ++f) {
        int previous = -1;
        for (const int node : mesh.faceNodes[f]) {
            if (!weld[node]) continue;
            if (previous >= 0) sets.join(previous, node);
            previous = node;
        }
    }
}

// What the other ranks hold of shared nodes, one value per node; `take` gets each with its node.
template <class Value, class Take>
void exchangeShared(const RankPart& part, const std::vector<Value>& ofNode, Take take) {
    const std::vector<SharedNodes>& shared = part.interface.sharedNodes;
    std::vector<std::vector<Value>> messages(static_cast<std::size_t>(part.ranks.size()));
    for (const SharedNodes& link : shared)
        for (const int node : link.nodes)
            messages[static_cast<std::size_t>(link.rank)].push_back(
                ofNode[static_cast<std::size_t>(node)]);
    messages = exchangeValues(part.ranks, messages);
    for (const SharedNodes& link : shared)
        for (std::size_t i = 0; i < link.nodes.size(); ++i)
            take(link.nodes[i], messages[static_cast<std::size_t>(link.rank)][i]);
}

// Per weld node the number of the smallest node of its weld line, -1 for other nodes. The smallest
// number travels from rank to rank until it has reached all of its line.
std::vector<std::int64_t> smallestNodes(const RankPart& part, const std::vector<bool>& weld,
                                        NodeSets& sets) {
    std::vector<std::int64_t> smallest(weld.size(), -1);
    const auto spread = [&] {
        for (int n = 0; n < static_cast<int>(weld.size()); ++n)
            if (weld[n]) smallest[n] = smallest[sets.find(n)];
    };
    for (int n = 0; n < static_cast<int>(weld.size()); ++n)
        if (weld[n]) smallest[n] = part.nodeNumber[sets.find(n)];
    for (std::int64_t changes = 1; changes > 0;) {
        changes = 0;
        exchangeShared(part, smallest, [&](int node, std::int64_t other) {
            if (!weld[node]) return;
            std::int64_t& own = smallest[sets.find(node)];
            if (other < own) ++changes;
            own = std::min(own, other);
        });
        spread();
        changes = part.ranks.sum(changes);
    }
    return smallest;
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

}  // namespace

std::vector<bool> ownedNodes(const RankPart& part) {
    std::vector<bool> owned(part.nodeNumber.size(), true);
    for (const SharedNodes& link : part.interface.sharedNodes)
        if (link.rank < part.ranks.rank())
            for (const int node : link.nodes) owned[static_cast<std::size_t>(node)] = false;
    return owned;
}

WeldLines findWeldLines(const FvMesh& mesh, const std::vector<double>& angles,
                        const std::vector<float>& fillTime, double limit) {
    UncutMesh uncut(mesh.pointCount());
    return findWeldLines(uncut.part(), mesh, angles, fillTime, limit);
}

WeldLines findWeldLines(const RankPart& part, const FvMesh& mesh, const std::vector<double>& angles,
                        const std::vector<float>& fillTime, double limit) {
    WeldLines result;
    Ranks& ranks = part.ranks;
    const std::vector<bool> owned = ownedNodes(part);
    std::vector<bool> weld(angles.size());
    for (std::size_t n = 0; n < angles.size(); ++n) {
        weld[n] = angles[n] < 180.0 && angles[n] < limit;
        result.weldNodes += weld[n] && owned[n] ? 1 : 0;
        result.undefinedNodes += std::isnan(angles[n]) && owned[n] ? 1 : 0;
    }
    result.weldNodes = ranks.sum(result.weldNodes);
    result.undefinedNodes = ranks.sum(result.undefinedNodes);
    NodeSets sets(static_cast<int>(angles.size()));
    joinOnFaces(mesh, weld, sets);
    const std::vector<std::int64_t> smallest = smallestNodes(part, weld, sets);

    std::vector<double>& times = result.formationTime;
    times = formationTimes(mesh, fillTime, weld);
    exchangeShared(part, std::vector<double>(times), [&](int node, double other) {
        if (!std::isnan(other) && !(times[node] >= other)) times[node] = other;
    });

    LineRecords records;
    for (std::size_t n = 0; n < weld.size(); ++n)
        if (weld[n] && owned[n])
            records.add(smallest[n], reportedAngle(angles[n]), mesh.points[n], times[n]);
    const std::vector<LineRecord> lines = recordsOfAll(ranks, records);

    result.nodeLine.assign(angles.size(), 0);
    std::unordered_map<std::int64_t, int> idOf;
    for (const LineRecord& record : lines) {
        result.lines.push_back(lineOf(record));
        result.lines.back().id = static_cast<int>(result.lines.size());
        idOf[record.smallestNode] = result.lines.back().id;
    }
    for (std::size_t n = 0; n < weld.size(); ++n) {
        if (!weld[n]) continue;
        result.nodeLine[n] = idOf.at(smallest[n]);
        result.lines[result.nodeLine[n] - 1].nodes.push_back(static_cast<int>(n));
    }
    return result;
}

}  // namespace weldline
