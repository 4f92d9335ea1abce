// The four meeting-angle methods.
#include <cstdio>

#include "Reference.h"

namespace weldline::reference {

void Reference::CalNodeVectorAngle_Modified_03Loop() {
    trace("calWeldLine: CalNodeVectorAngle_Modified_03Loop\n");
    boundaryAngleToCosine(m_MeshFileType == 2 ? 75.0 : 65.0);
    gradientLimits();
    for (int n = 1; n <= nodes(); ++n) {
        const std::vector<int> cells = cellsOfNode(n);
        for (int i = 1; i <= cells[0]; ++i) {
            for (int j = i + 1; j <= cells[0]; ++j) {
                nodePointPairTest(n, cells[i], cells[j]);
            }
        }
        m_pMeetingAngle[n] = 180.0 - m_pMeetingAngle[n];
    }
    truncateAngle();
    overrideByCellState();
}

// The node's row less the cells that the present mesh no longer has. Rows are those of the first
// run; a node beyond them has no cells.
std::vector<int> Reference::cellsOfNode(int node) const {
    std::vector<int> cells = {0};
    if (node >= static_cast<int>(m_ppNodeCell.size())) return cells;
    for (int i = 1; i <= m_ppNodeCell[node][0]; ++i) {
        const int c = m_ppNodeCell[node][i];
        if (c > ownCells()) continue;
        cells.push_back(c);
        ++cells[0];
    }
    return cells;
}

// Every cell of the node with the cell across each of its inner and partition faces that touch
// the node as well.
void Reference::walkFaces(void (Reference::*pairTest)(int, int, int, int)) {
    const auto holds = [](const auto& row, int number) {
        for (int i = 1; i <= row[0]; ++i) {
            if (row[i] == number) return true;
        }
        return false;
    };
    for (int n = 1; n <= nodes(); ++n) {
        const std::vector<int> cells = cellsOfNode(n);
        for (int i = 1; i <= cells[0]; ++i) {
            const int a = cells[i];
            for (int k = 1; k <= m_bound.m_ppCellFace[a][0]; ++k) {
                const int type = m_bound.m_ppCellFaceType[a][k];
                const int face = m_bound.m_ppCellFace[a][k];
                if (type != 0 && type != 101) continue;
                int first = 0;
                int second = 0;
                if (type == 101) {
                    first = m_pPartitionFace->ijParCV()[face];
                    second = m_pPartitionFace->ijPar()[face];
                } else {
                    first = innerFaceCell(face, 1);
                    second = innerFaceCell(face, 2);
                }
                const int b = first == a ? second : first;
                if (!fits(b)) continue;
                if (type == 0 && !holds(cells, b)) continue;
                if (type == 101 && !holds(m_bound.m_ppParFaceNode[face], n)) continue;
                (this->*pairTest)(n, k, a, b);
            }
        }
        m_pMeetingAngle[n] = 180.0 - m_pMeetingAngle[n];
    }
}

void Reference::CalNodeVectorAngle_Modified_FaceLoop() {
    trace("calWeldLine: CalNodeVectorAngle_Modified_FaceLoop\n");
    boundaryAngleToCosine(m_MeshFileType == 2 ? 90.0 : 75.0);
    gradientLimits();
    walkFaces(&Reference::facePointPairTest);
    truncateAngle();
    overrideByCellState();
}

void Reference::hybridNode(int node) {
    const std::vector<int> cells = cellsOfNode(node);
    for (int i = 1; i <= cells[0]; ++i) {
        const int a = cells[i];
        std::vector<int> candidates;
        for (int j = 1; j <= cells[0]; ++j) {
            if (j == i) continue;
            const int b = cells[j];
            for (int m = 1; m <= m_ppCellInnerFace[b][0]; ++m) {
                const int f = m_ppCellInnerFace[b][m];
                if (f > m_nInnerFace) continue;
                if (innerFaceCell(f, 1) != a && innerFaceCell(f, 2) != a) continue;
                candidates.push_back(b);
                // On purpose: the inner-face number stands where a face position belongs.
                facePointPairTest(node, f, a, b);
            }
        }
        const std::size_t direct = candidates.size();
        for (std::size_t p = 0; p < direct; ++p) {
            for (std::size_t q = p + 1; q < direct; ++q) {
                const int* rowP = m_bound.m_ppCellNeighbour[candidates[p]];
                const int* rowQ = m_bound.m_ppCellNeighbour[candidates[q]];
                for (int r = 1; r <= rowP[0]; ++r) {
                    for (int s = 1; s <= rowQ[0]; ++s) {
                        const bool common = rowP[r] == rowQ[s] && rowP[r] != a;
                        if (common && fits(rowP[r])) candidates.push_back(rowP[r]);
                    }
                }
            }
        }
        for (std::size_t p = direct; p < candidates.size(); ++p) {
            met(Event::secondRingCell);
            nodePointPairTest(node, a, candidates[p]);
        }
    }
}

void Reference::CalNodeVectorAngle_Modified_Hybrid() {
    trace("calWeldLine: CalNodeVectorAngle_Modified_Hybrid\n");
    boundaryAngleToCosine(75.0);
    gradientLimits();
    for (int n = 1; n <= nodes(); ++n) {
        hybridNode(n);
        m_pMeetingAngle[n] = 180.0 - m_pMeetingAngle[n];
    }
    truncateAngle();
    overrideByCellState();
}

void Reference::CalNodeVectorAngle_Modified_RBF_Holvex01() {
    if (m_FlagDebugOutput && m_pDebugFile != nullptr && isMaster()) {
        trace("calWeldLine: CalNodeVectorAngle_Modified_RBF_Holvex01\n");
        std::fflush(stdout);
    }
    const double v = m_pGV->m_pGradSetSwitch == nullptr ? 0.0 : *m_pGV->m_pGradSetSwitch;
    // |v - 1| < 0.001, written so that 1.001, whose difference from 1 rounds to less than 0.001,
    // lies outside like 0.999.
    if ((m_GradMethodMFT == 2 || m_GradMethodMFT == 3) && v > 0.999 && v < 1.001) {
        met(Event::secondSetTaken);
        for (int c = 1; c <= slots(); ++c) {
            m_pGradX[c] = m_pGrad2X[c];
            m_pGradY[c] = m_pGrad2Y[c];
            m_pGradZ[c] = m_pGrad2Z[c];
        }
    }
    if (m_BoundaryAngle < 0.0) m_BoundaryAngle = 120.0;
    if (m_BoundaryAngle >= 179.999999) m_BoundaryAngle = 179.999999;
    walkFaces(&Reference::convergingPairTest);
    truncateAngle();
    overrideByCellState();
}

}  // namespace weldline::reference
