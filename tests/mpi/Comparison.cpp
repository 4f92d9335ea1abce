#include "Comparison.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>

namespace weldline::test {

namespace {

constexpr int far = 1000000;

std::size_t at(int number) {
    return static_cast<std::size_t>(number);
}

double length(const RankOutcome::Cell& cell, std::size_t first) {
    return std::hypot(cell[first], cell[first + 1], cell[first + 2]);
}

}  // namespace

CutMap::CutMap(const FvMesh& mesh, const std::vector<int>& partOfCell)
    : m_mesh(mesh), m_partOfCell(partOfCell), m_isShared(at(mesh.pointCount()), false) {
    std::vector<int> start(partOfCell.size(), far);
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const int a = mesh.owner[at(f)];
        const int b = mesh.neighbour[at(f)];
        if (partOfCell[at(a)] != partOfCell[at(b)]) start[at(a)] = start[at(b)] = 0;
    }
    m_layers = spread(start);
    std::vector<int> partOfNode(m_isShared.size(), -1);
    for (int c = 0; c < mesh.cellCount(); ++c)
        for (const int node : mesh.cellNodes[c]) {
            int& part = partOfNode[at(node)];
            if (part >= 0 && part != partOfCell[at(c)]) m_isShared[at(node)] = true;
            part = partOfCell[at(c)];
        }
}

std::vector<int> CutMap::spread(const std::vector<int>& from) const {
    std::vector<int> layers = from;
    for (bool changed = true; changed;) {
        changed = false;
        for (int f = 0; f < m_mesh.innerFaces; ++f) {
            int& a = layers[at(m_mesh.owner[at(f)])];
            int& b = layers[at(m_mesh.neighbour[at(f)])];
            const int low = std::min(a, b) + 1;
            if (std::max(a, b) <= low || low > far) continue;
            (a > b ? a : b) = low;
            changed = true;
        }
    }
    return layers;
}

std::vector<bool> CutMap::reachedByFlags(const std::vector<RankOutcome::Cell>& cells,
                                         int passes) const {
    std::vector<int> start(cells.size(), far);
    for (int f = 0; f < m_mesh.innerFaces; ++f) {
        const int a = m_mesh.owner[at(f)];
        const int b = m_mesh.neighbour[at(f)];
        if (m_partOfCell[at(a)] == m_partOfCell[at(b)]) continue;
        if (cells[at(a)].back() != 0.0) start[at(b)] = 1;
        if (cells[at(b)].back() != 0.0) start[at(a)] = 1;
    }
    const std::vector<int> pass = spread(start);
    std::vector<bool> reached(cells.size());
    for (std::size_t c = 0; c < cells.size(); ++c) reached[c] = pass[c] <= passes;
    return reached;
}

std::vector<bool> CutMap::nearLargestOfRank(const std::vector<RankOutcome::Cell>& cells) const {
    std::map<int, double> largest;
    for (std::size_t c = 0; c < cells.size(); ++c) {
        double& own = largest[m_partOfCell[c]];
        own = std::max(own, length(cells[c], 1));
    }
    std::vector<bool> near(cells.size());
    for (std::size_t c = 0; c < cells.size(); ++c)
        near[c] = length(cells[c], 1) > 0.989 * largest[m_partOfCell[c]];
    return near;
}

std::vector<bool> CutMap::nodesAround(const std::vector<bool>& cells) const {
    std::vector<bool> nodes(at(m_mesh.pointCount()), false);
    std::vector<bool> ring = cells;
    for (int round = 0; round < 2; ++round) {
        for (int c = 0; c < m_mesh.cellCount(); ++c)
            if (ring[at(c)])
                for (const int node : m_mesh.cellNodes[c]) nodes[at(node)] = true;
        for (int c = 0; c < m_mesh.cellCount(); ++c)
            for (const int node : m_mesh.cellNodes[c])
                if (nodes[at(node)]) ring[at(c)] = true;
    }
    return nodes;
}

double gradientDifference(const WholeOutcome& one, const WholeOutcome& other,
                          const std::vector<bool>& except) {
    double largest = 0.0;
    double difference = 0.0;
    for (std::size_t c = 0; c < one.cells.size(); ++c) {
        for (const std::size_t first : {1U, 4U}) {
            largest = std::max(largest, length(one.cells[c], first));
            if (except[c]) continue;
            RankOutcome::Cell gap{};
            for (std::size_t k = first; k < first + 3; ++k)
                gap[k] = one.cells[c][k] - other.cells[c][k];
            difference = std::max(difference, length(gap, first));
        }
    }
    return difference / largest;
}

std::ostream& operator<<(std::ostream& stream, const AngleDifference& difference) {
    return stream << difference.weldNodes << " weld nodes, " << difference.lost << " lost, "
                  << difference.gained << " gained, " << difference.larger << " larger, "
                  << difference.smaller << " smaller";
}

AngleDifference angleDifference(const WholeOutcome& one, const WholeOutcome& other,
                                const std::vector<bool>& except) {
    AngleDifference result;
    for (std::size_t n = 0; n < one.angles.size(); ++n) {
        const double a = one.angles[n];
        const double b = other.angles[n];
        if (except[n]) continue;
        if (a < 180.0) ++result.weldNodes;
        if (a < 180.0 && b == 180.0) ++result.lost;
        if (a == 180.0 && b < 180.0) ++result.gained;
        if (a < 180.0 && b < 180.0 && b > a + angleTolerance) ++result.larger;
        if (a < 180.0 && b < 180.0 && b < a - angleTolerance) ++result.smaller;
    }
    return result;
}

}  // namespace weldline::test
