#include "BlockMesh.h"

#include <algorithm>
#include <cmath>

namespace weldline {

namespace {

class BlockPart {
  public:
    BlockPart(const std::array<int, 3>& counts, const Box& box) : m_counts(counts), m_box(box) {}

    MeshPart build() {
        m_part.patches = {{"gate1", {}}, {"gate2", {}}};
        m_part.cellFields.emplace_back();
        for (int k = m_box.low[2]; k <= m_box.high[2]; ++k)
            for (int j = m_box.low[1]; j <= m_box.high[1]; ++j)
                for (int i = m_box.low[0]; i <= m_box.high[0]; ++i) addPoint(i, j, k);
        for (int k = m_box.low[2]; k < m_box.high[2]; ++k)
            for (int j = m_box.low[1]; j < m_box.high[1]; ++j)
                for (int i = m_box.low[0]; i < m_box.high[0]; ++i) addCell(i, j, k);
        return std::move(m_part);
    }

  private:
    static std::int64_t number(int i, int j, int k, std::int64_t nx, std::int64_t ny) {
        return i + nx * (j + ny * k);
    }

    void addPoint(int i, int j, int k) {
        m_part.mesh.points.push_back({1.0 * i, 1.0 * j, 1.0 * k});
        m_part.nodeNumber.push_back(number(i, j, k, m_counts[0] + 1, m_counts[1] + 1));
    }

    int localPoint(int i, int j, int k) const {
        const int nx = m_box.high[0] - m_box.low[0] + 1;
        const int ny = m_box.high[1] - m_box.low[1] + 1;
        return (i - m_box.low[0]) + nx * ((j - m_box.low[1]) + ny * (k - m_box.low[2]));
    }

    void addCell(int i, int j, int k) {
        const auto at = [&](int a, int b, int c) { return localPoint(i + a, j + b, k + c); };
        const std::array<int, 8> nodes{at(0, 0, 0), at(1, 0, 0), at(1, 1, 0), at(0, 1, 0),
                                       at(0, 0, 1), at(1, 0, 1), at(1, 1, 1), at(0, 1, 1)};
        m_part.mesh.kinds.push_back(CellKind::Hexahedron);
        m_part.mesh.cellNodes.append(nodes);
        m_part.mesh.cellPolygons.append({});
        m_part.cellNumber.push_back(number(i, j, k, m_counts[0], m_counts[1]));
        const double left = std::hypot(i + 2.0, 0.3 * j, 0.2 * k);
        const double right = std::hypot(m_counts[0] - i + 1.0, 0.3 * j, 0.2 * k);
        m_part.cellFields[0].push_back(std::min(left, right));
        if (i == 0)
            m_part.patches[0].faces.append(std::array{nodes[0], nodes[3], nodes[7], nodes[4]});
        if (i == m_counts[0] - 1)
            m_part.patches[1].faces.append(std::array{nodes[1], nodes[2], nodes[6], nodes[5]});
    }

    std::array<int, 3> m_counts;
    Box m_box;
    MeshPart m_part;
};

}  // namespace

MeshPart blockPart(const std::array<int, 3>& counts, const Box& box) {
    return BlockPart(counts, box).build();
}

Box boxOfRank(const std::array<int, 3>& counts, int rank, int parts) {
    Box box{{0, 0, 0}, counts};
    while (parts > 1) {
        int axis = 0;
        for (int a = 1; a < 3; ++a)
            if (box.high[a] - box.low[a] > box.high[axis] - box.low[axis]) axis = a;
        const int lower = parts / 2;
        const int length = box.high[axis] - box.low[axis];
        const int cut = box.low[axis] + static_cast<int>(std::lround(1.0 * length * lower / parts));
        const bool isLower = rank < lower;
        (isLower ? box.high : box.low)[axis] = cut;
        parts = isLower ? lower : parts - lower;
        rank = isLower ? rank : rank - lower;
    }
    return box;
}

std::array<int, 3> blockCounts(double cells) {
    const int side = std::max(1, static_cast<int>(std::lround(std::cbrt(cells / 2.0))));
    return {2 * side, side, side};
}

}  // namespace weldline
