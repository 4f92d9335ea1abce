// Node-to-cell and cell-to-face rows, derived once per calculator from the host's cell-to-node rows
// and face records. In the names a digit is a dimension: 0 node, 2 face, 3 cell. The record gets
// the rows of a table when all its memory is there, and nothing before.

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "CKVR3DWeldLine.h"
#include "Extent.h"
#include "FaceViews.h"
#include "Trace.h"

using namespace weldline::core;

namespace {

void append(int* row, int capacity, int member) {
    if (row[0] < capacity) row[++row[0]] = member;
}

using Counts = std::unique_ptr<int[]>;

Counts countCellsOfNodes(int** cellNode, int cells, int nodes) {
    Counts count = std::make_unique<int[]>(slotsUpTo(nodes));
    for (int c = 1; c <= cells; ++c) {
        for (int k = 1; k <= cellNode[c][0]; ++k) ++count[cellNode[c][k]];
    }
    return count;
}

struct FaceCells {
    int first;
    int second;
};

// The cells of the inner faces, 0-based by face: an eighth of the host's face records, which are
// then read once only.
FaceCells* cellsOfInnerFaces(const InnerFaces& faces, ArrayOwner& memory) {
    FaceCells* cells = memory.zeros<FaceCells>(slotsUpTo(faces.count - 1));
    for (int f = 1; f <= faces.count; ++f) {
        const double* face = faces.next(f);
        cells[f - 1] = {firstCell(face), secondCell(face)};
    }
    return cells;
}

void countInnerFaces(std::span<const FaceCells> faces, const Counts& count) {
    for (const FaceCells& face : faces) {
        ++count[face.first];
        ++count[face.second];
    }
}

void countInterfaceFaces(const InterfaceFaces& faces, const Counts& count) {
    for (int i = 1; i <= faces.count(); ++i) ++count[faces.ownCell(i)];
}

void countBoundaryFaces(const BoundaryGroup& faces, const Counts& count) {
    for (int i = 1; i <= faces.count; ++i) ++count[faces.cell[i]];
}

}  // namespace

void CKVR3DWeldLine::getMeshTopologyConn() {
    trace(*this, "calWeldLine: getMeshTopologyConn\n");
    getInnerCell03Conn();
    getCell32Conn();
}

// Rows of own cells in ascending order; a node that a cell lists twice gets the cell twice.
void CKVR3DWeldLine::getInnerCell03Conn() {
    trace(*this, "calWeldLine: getInnerCell03Conn\n");
    if (m_ppNodeCell != nullptr) return;
    const Counts count = countCellsOfNodes(m_ppCellNode, m_nCV, m_nNode);
    int capacity = 0;
    for (int n = 1; n <= m_nNode; ++n) capacity = std::max(capacity, count[n]);
    ArrayOwner rows;
    m_ppNodeCell = rows.zeroRows<int>(slotsUpTo(m_nNode), slotsUpTo(capacity));
    m_Storage.nodeCellRows = std::move(rows);
    m_Storage.nodeCellNodes = m_nNode;
    for (int c = 1; c <= m_nCV; ++c) {
        for (int k = 1; k <= m_ppCellNode[c][0]; ++k) {
            append(m_ppNodeCell[m_ppCellNode[c][k]], capacity, c);
        }
    }
}

// Rows of inner faces in ascending order. On purpose: the capacity counts the faces of all kinds
// but outlet faces, while only inner faces are listed.
void CKVR3DWeldLine::getCell32Conn() {
    trace(*this, "calWeldLine: getCell32Conn\n");
    ArrayOwner memory;
    const std::span<const FaceCells> inner(cellsOfInnerFaces(innerFaces(*this), memory),
                                           slotsUpTo(m_nInnerFace - 1));
    const Counts count = std::make_unique<int[]>(slotsUpTo(m_nCV_Total));
    countInnerFaces(inner, count);
    countBoundaryFaces(inletFaces(*this), count);
    countInterfaceFaces(InterfaceFaces(m_pPartitionFace), count);
    countBoundaryFaces(symmetryFaces(*this), count);
    countBoundaryFaces(wallFaces(*this), count);

    m_nMaxCellFace = -1000;
    m_nMinCellFace = 1000;
    for (int c = 1; c <= m_nCV; ++c) {
        m_nMaxCellFace = std::max(m_nMaxCellFace, count[c]);
        m_nMinCellFace = std::min(m_nMinCellFace, count[c]);
    }
    if (m_ppCellInnerFace != nullptr) return;
    const int capacity = std::max(m_nMaxCellFace, 0);
    ArrayOwner rows;
    m_ppCellInnerFace = rows.zeroRows<int>(slotsUpTo(m_nCV_Total), slotsUpTo(capacity));
    m_Storage.cellInnerFaceRows = std::move(rows);
    m_Storage.cellInnerFaceCells = m_nCV_Total;
    int number = 0;
    for (const FaceCells& face : inner) {
        ++number;
        append(m_ppCellInnerFace[face.first], capacity, number);
        append(m_ppCellInnerFace[face.second], capacity, number);
    }
}
