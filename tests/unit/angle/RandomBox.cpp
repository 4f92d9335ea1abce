#include "RandomBox.h"

#include <algorithm>

namespace weldline::test {

RandomBox::RandomBox(unsigned seed) : m_random(seed) {
    m_n = {whole(2, 3), whole(1, 3), whole(1, 2)};
    addNodesAndCells();
    addFaces();
    bind(PaceMaker::No);
    shuffleFaceRows();
    fillFields();
    fillSettings();
}

void RandomBox::addNodesAndCells() {
    for (int k = 0; k <= m_n[2]; ++k)
        for (int j = 0; j <= m_n[1]; ++j)
            for (int i = 0; i <= m_n[0]; ++i) {
                Point p{i - 0.5 * m_n[0], j - 0.5 * m_n[1], k - 0.5 * m_n[2]};
                for (double& x : p) x += real(-0.1, 0.1);
                m_positions.push_back(p);
                addNode(p);
            }
    for (int k = 0; k < m_n[2]; ++k)
        for (int j = 0; j < m_n[1]; ++j)
            for (int i = 0; i < m_n[0]; ++i) {
                std::vector<int> nodes = faceNodes(i, j, k, 0);
                for (int n : faceNodes(i + 1, j, k, 0)) nodes.push_back(n);
                std::shuffle(nodes.begin(), nodes.end(), m_random);
                if (chance(0.1)) nodes[0] = nodes[1];  // a collapsed edge
                addCell(mean(nodes), {0, 0, 0}, nodes);
            }
}

Point RandomBox::mean(const std::vector<int>& nodes) const {
    Point sum{};
    for (int n : nodes)
        for (int axis = 0; axis < 3; ++axis)
            sum[axis] += m_positions[n][axis] / static_cast<double>(nodes.size());
    return sum;
}

// The four nodes of the lower face of cell (i, j, k) across `axis`.
std::vector<int> RandomBox::faceNodes(int i, int j, int k, int axis) const {
    std::vector<int> nodes;
    for (int u = 0; u < 2; ++u)
        for (int v = 0; v < 2; ++v) {
            if (axis == 0) nodes.push_back(node(i, j + u, k + v));
            if (axis == 1) nodes.push_back(node(i + u, j, k + v));
            if (axis == 2) nodes.push_back(node(i + u, j + v, k));
        }
    return nodes;
}

void RandomBox::addFaces() {
    for (int k = 0; k <= m_n[2]; ++k)
        for (int j = 0; j <= m_n[1]; ++j)
            for (int i = 0; i <= m_n[0]; ++i)
                for (int axis = 0; axis < 3; ++axis) {
                    const std::array<int, 3> at{i, j, k};
                    const int u = (axis + 1) % 3, v = (axis + 2) % 3;
                    if (at[u] == m_n[u] || at[v] == m_n[v]) continue;
                    std::array<int, 3> low = at;
                    --low[axis];
                    const int below = at[axis] > 0 ? cell(low[0], low[1], low[2]) : 0;
                    const int above = at[axis] < m_n[axis] ? cell(i, j, k) : 0;
                    if (below == 0 || above == 0) {
                        addSide(i, j, k, axis, below + above, above == 0);
                        continue;
                    }
                    const bool turned = chance(0.5);
                    const Point centre = mean(faceNodes(i, j, k, axis));
                    host.addInner(turned ? above : below, turned ? below : above, {1, 0, 0},
                                  centre);
                }
}

void RandomBox::addSide(int i, int j, int k, int axis, int owner, bool upper) {
    std::vector<int> nodes = faceNodes(i, j, k, axis);
    const Point centre = mean(nodes);
    if (axis == 0 && upper) {
        if (chance(0.3)) nodes.resize(whole(0, 3));
        Point beyond = centre;
        beyond[0] += real(0.3, 0.7);
        host.addInterface(owner, {1, 0, 0}, centre, 0.5, beyond, real(0.5, 2.0), nodes);
    } else if (chance(0.7)) {
        host.addBoundary(static_cast<Group>(whole(0, 3)), owner, {1, 0, 0}, centre);
    }
}

void RandomBox::shuffleFaceRows() {
    for (int c = 1; c <= line.m_nCV; ++c) {
        int* numbers = line.m_ppCellFace[c];
        int* types = line.m_ppCellFaceType[c];
        for (int k = numbers[0]; k > 1; --k) {
            const int other = whole(1, k);
            std::swap(numbers[k], numbers[other]);
            std::swap(types[k], types[other]);
        }
    }
}

void RandomBox::fillFields() {
    const double noise = real(0.1, 1.5);
    const double lateral = chance(0.5) ? 0.0 : noise;
    const double plane = chance(0.4) ? 0.5 * m_n[0] : 0.0;
    for (int slot = 1; slot <= host.slots(); ++slot) {
        const bool own = slot <= line.m_nCV;
        const bool halo = slot > host.slots() - m_n[1] * m_n[2];
        const double x = own || halo ? line.m_pXc[slot] : 0.0;
        const double size = real(0.2, 3.0);
        const auto random = [&] {
            const double towards = x > plane ? -1.0 : 1.0;
            return Point{size * (towards + real(-noise, noise)), size * real(-noise, noise),
                         size * real(-lateral, lateral)};
        };
        setGradient(slot, chance(0.03) ? Point{0, 0, 0} : random());
        setSecondGradient(slot, random());
        if (own) line.m_pVolume[slot] = chance(0.1) ? 0.0 : real(0.3, 1.5);
        line.m_pVariable[slot] = chance(0.05) ? 1e-30 : 1.0;
        line.m_pVariableOrg[slot] = chance(0.05) ? 1e-30 : 1.0;
        line.m_pZeroGradFlag[slot] = chance(0.05) ? 1 : 0;
        if (own && chance(0.03)) host.setState(slot, whole(-2, 2));
    }
}

void RandomBox::fillSettings() {
    line.m_MeshFileType = whole(1, 2);
    line.m_BoundaryAngle = chance(0.4) ? -1.0 : real(30.0, 180.0);
    line.m_TruncateAngle = chance(0.5) ? kNoTruncation : real(60.0, 179.0);
    line.m_Volume_Filter = chance(0.5) ? 0.2 : real(0.0, 0.9);
    line.m_GradMeanFactor = chance(0.5) ? 1e-4 : real(0.0, 0.9);
    line.m_GradMethodMFT = whole(1, 4);
    host.gradSetSwitch = whole(0, 1);
    if (chance(0.2))
        for (int n = 1; n <= line.m_nNode; ++n) line.m_pMeetingAngle[n] = real(0.0, 180.0);
}

}  // namespace weldline::test
