#include "SplitMesh.h"

#include <algorithm>
#include <numeric>

#include "PatchFaceCells.h"
#include "mesh/MeshFaults.h"

namespace weldline {

namespace {

constexpr int none = -1;

void appendRow(Rows& rows, const Rows& from, int row) {
    rows.append(from[row]);
}

}  // namespace

MeshSplitter::MeshSplitter(const MeshPart& whole, const std::vector<int>& partOfCell, int parts)
    : m_whole(whole),
      m_partOfCell(partOfCell),
      m_localPoint(whole.mesh.points.size(), none),
      m_localPolygon(at(whole.mesh.polygons.count()), none) {
    listCells(parts);
    placePatchFaces();
    placeFreePoints();
}

// Counting sort of the cells by part.
void MeshSplitter::listCells(int parts) {
    m_offset.assign(at(parts) + 1, 0);
    for (const int part : m_partOfCell) ++m_offset[at(part) + 1];
    std::partial_sum(m_offset.begin(), m_offset.end(), m_offset.begin());
    std::vector<std::size_t> next(m_offset.begin(), m_offset.end() - 1);
    m_cells.resize(m_partOfCell.size());
    for (std::size_t c = 0; c < m_partOfCell.size(); ++c)
        m_cells[next[at(m_partOfCell[c])]++] = static_cast<int>(c);
}

void MeshSplitter::placePatchFaces() {
    m_partOfPatchFace = cellsOfPatchFaces(m_whole);
    for (std::size_t p = 0; p < m_partOfPatchFace.size(); ++p)
        for (std::size_t i = 0; i < m_partOfPatchFace[p].size(); ++i) {
            int& entry = m_partOfPatchFace[p][i];
            if (entry < 0) failOnForeignFace(m_whole.patches[p], static_cast<int>(i));
            entry = m_partOfCell[at(entry)];
        }
}

void MeshSplitter::placeFreePoints() {
    std::vector<bool> used(m_whole.mesh.points.size(), false);
    for (const int node : m_whole.mesh.cellNodes.entries) used[at(node)] = true;
    for (std::size_t n = 0; n < used.size(); ++n)
        if (!used[n]) m_freePoints.push_back(static_cast<int>(n));
}

std::vector<int>::const_iterator MeshSplitter::cellsBegin(int number) const {
    return m_cells.begin() + static_cast<std::ptrdiff_t>(m_offset[at(number)]);
}

std::vector<int>::const_iterator MeshSplitter::cellsEnd(int number) const {
    return m_cells.begin() + static_cast<std::ptrdiff_t>(m_offset[at(number) + 1]);
}

MeshPart MeshSplitter::part(int number) {
    MeshPart result;
    addCells(result, number);
    addPoints(result, number);
    renumber(result.mesh.cellNodes);
    addPolygons(result, number);
    addPatches(result, number);
    addFields(result, number);
    for (auto cell = cellsBegin(number); cell != cellsEnd(number); ++cell)
        for (const int node : m_whole.mesh.cellNodes[*cell]) m_localPoint[at(node)] = none;
    return result;
}

// Cells with the nodes of the whole.
void MeshSplitter::addCells(MeshPart& result, int number) {
    const CellMesh& whole = m_whole.mesh;
    for (auto cell = cellsBegin(number); cell != cellsEnd(number); ++cell) {
        const std::int64_t own = m_whole.cellNumber[at(*cell)];
        result.cellNumber.push_back(own);
        result.mesh.fileNumbers.push_back(whole.fileNumbers.empty() ? own
                                                                    : whole.fileNumbers[at(*cell)]);
        result.mesh.kinds.push_back(whole.kinds[at(*cell)]);
        appendRow(result.mesh.cellNodes, whole.cellNodes, *cell);
    }
}

void MeshSplitter::addPoints(MeshPart& result, int number) {
    std::vector<int> points;
    const auto take = [&](int point) {
        int& local = m_localPoint[at(point)];
        if (local == none) points.push_back(point);
        local = 0;  // any number, until all points are known
    };
    for (const int node : result.mesh.cellNodes.entries) take(node);
    if (number == 0)
        for (const int point : m_freePoints) take(point);
    std::sort(points.begin(), points.end());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const std::size_t point = at(points[i]);
        m_localPoint[point] = static_cast<int>(i);
        result.mesh.points.push_back(m_whole.mesh.points[point]);
        result.nodeNumber.push_back(m_whole.nodeNumber[point]);
    }
}

void MeshSplitter::renumber(Rows& rows) const {
    for (int& node : rows.entries) node = m_localPoint[at(node)];
}

void MeshSplitter::addPolygons(MeshPart& result, int number) {
    const CellMesh& whole = m_whole.mesh;
    std::vector<int> taken;
    std::vector<int> row;
    for (auto cell = cellsBegin(number); cell != cellsEnd(number); ++cell) {
        row.clear();
        for (const int polygon : whole.cellPolygons[*cell]) {
            int& local = m_localPolygon[at(polygon)];
            if (local == none) {
                local = static_cast<int>(taken.size());
                taken.push_back(polygon);
                appendRow(result.mesh.polygons, whole.polygons, polygon);
            }
            row.push_back(local);
        }
        result.mesh.cellPolygons.append(row);
    }
    renumber(result.mesh.polygons);
    for (const int polygon : taken) m_localPolygon[at(polygon)] = none;
}

void MeshSplitter::addPatches(MeshPart& result, int number) const {
    for (std::size_t p = 0; p < m_whole.patches.size(); ++p) {
        Patch& patch = result.patches.emplace_back();
        patch.name = m_whole.patches[p].name;
        for (std::size_t i = 0; i < m_partOfPatchFace[p].size(); ++i)
            if (m_partOfPatchFace[p][i] == number)
                appendRow(patch.faces, m_whole.patches[p].faces, static_cast<int>(i));
        renumber(patch.faces);
    }
}

void MeshSplitter::addFields(MeshPart& result, int number) const {
    for (const std::vector<double>& field : m_whole.cellFields) {
        std::vector<double>& values = result.cellFields.emplace_back();
        for (auto cell = cellsBegin(number); cell != cellsEnd(number); ++cell)
            values.push_back(field[at(*cell)]);
    }
}

}  // namespace weldline
