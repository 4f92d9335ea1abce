#pragma once

#include <vector>

#include "MeshPart.h"

namespace weldline {

// Splits a mesh, or a piece of one, into parts that are built one at a time: besides the whole,
// only the part in hand needs memory. A part keeps the order of its cells and points, takes the
// polygons of its polyhedra, the patch faces that lie on its cells, and the values of its cells.
// Points of no cell go with the first part, so that the parts together hold every point.
class MeshSplitter {
  public:
    // Borrows both; `partOfCell` has a part from 0 to parts - 1 per cell. Throws InputError when a
    // cell is malformed or a patch face is no boundary face of a cell.
    MeshSplitter(const MeshPart& whole, const std::vector<int>& partOfCell, int parts);

    MeshPart part(int number);

  private:
    void listCells(int parts);
    void placePatchFaces();
    void placeFreePoints();
    void addCells(MeshPart& result, int number);
    void addPoints(MeshPart& result, int number);
    void addPolygons(MeshPart& result, int number);
    void addPatches(MeshPart& result, int number) const;
    void addFields(MeshPart& result, int number) const;
    std::vector<int>::const_iterator cellsBegin(int number) const;
    std::vector<int>::const_iterator cellsEnd(int number) const;
    void renumber(Rows& rows) const;

    const MeshPart& m_whole;
    const std::vector<int>& m_partOfCell;
    std::vector<std::size_t> m_offset;  // cells of part p: from m_offset[p] to [p + 1]
    std::vector<int> m_cells;           // ascending within each part
    std::vector<std::vector<int>> m_partOfPatchFace;  // per patch and face
    std::vector<int> m_freePoints;
    std::vector<int> m_localPoint;    // per point its number in the part in hand, -1: not in it
    std::vector<int> m_localPolygon;  // the same per polygon
};

}  // namespace weldline
