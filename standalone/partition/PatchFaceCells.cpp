#include "PatchFaceCells.h"

#include <unordered_map>

#include "mesh/CellSides.h"
#include "mesh/NodeSets.h"

namespace weldline {

// One pass over the sides of all cells, in which only the few that have the key of a patch face are
// looked at.
std::vector<std::vector<int>> cellsOfPatchFaces(const MeshPart& part) {
    std::unordered_multimap<std::uint64_t, std::pair<std::size_t, int>> wanted;  // patch, face
    std::vector<std::vector<int>> cells;
    for (std::size_t p = 0; p < part.patches.size(); ++p) {
        const Rows& faces = part.patches[p].faces;
        cells.emplace_back(static_cast<std::size_t>(faces.count()), faceOfNoCell);
        for (int i = 0; i < faces.count(); ++i)
            wanted.emplace(nodeSetKey(faces[i]), std::pair{p, i});
    }
    if (wanted.empty()) return cells;
    const CellSides sides(part.mesh);
    CellSides::Corners space;
    for (int s = 0; s < sides.count(); ++s) {
        const std::span<const int> nodes = sides.polygon(s, space);
        const auto [begin, end] = wanted.equal_range(nodeSetKey(nodes));
        for (auto it = begin; it != end; ++it) {
            const auto [p, i] = it->second;
            if (!sameNodeSet(part.patches[p].faces[i], nodes)) continue;
            int& cell = cells[p][static_cast<std::size_t>(i)];
            cell = cell == faceOfNoCell ? sides.cell(s) : faceInside;
        }
    }
    return cells;
}

}  // namespace weldline
