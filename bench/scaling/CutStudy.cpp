#include <algorithm>
#include <cstdio>
#include <set>

#include "BlockMesh.h"
#include "Studies.h"
#include "TimedRanks.h"
#include "partition/CutMesh.h"

namespace weldline {

namespace {

// Sizes of the parts of a cut; the block's faces are those between cells next to each other.
struct Surface {
    explicit Surface(int parts)
        : cells(static_cast<std::size_t>(parts), 0),
          faces(cells.size(), 0),
          neighbours(cells.size()) {}
    std::vector<std::int64_t> cells, faces;
    std::vector<std::set<int>> neighbours;
};

Surface surfaceOf(const std::vector<int>& part, const std::array<int, 3>& n, int parts) {
    Surface surface(parts);
    const auto at = [](int p) { return static_cast<std::size_t>(p); };
    const auto cellAt = [&](int i, int j, int k) {
        return part[static_cast<std::size_t>(i + n[0] * (j + n[1] * k))];
    };
    const auto compare = [&](int a, int b) {
        if (a == b) return;
        ++surface.faces[at(a)];
        ++surface.faces[at(b)];
        surface.neighbours[at(a)].insert(b);
        surface.neighbours[at(b)].insert(a);
    };
    for (int k = 0; k < n[2]; ++k)
        for (int j = 0; j < n[1]; ++j)
            for (int i = 0; i < n[0]; ++i) {
                const int own = cellAt(i, j, k);
                ++surface.cells[at(own)];
                if (i + 1 < n[0]) compare(own, cellAt(i + 1, j, k));
                if (j + 1 < n[1]) compare(own, cellAt(i, j + 1, k));
                if (k + 1 < n[2]) compare(own, cellAt(i, j, k + 1));
            }
    return surface;
}

}  // namespace

void studyCut(double cells) {
    const std::array<int, 3> counts = blockCounts(cells);
    const MeshPart whole = blockPart(counts, {{0, 0, 0}, counts});
    for (int parts = 2; parts <= 4096; parts *= parts < 8 ? 2 : parts < 64 ? 8 : 4) {
        const double start = clockSeconds();
        const std::vector<int> part = cutMesh(whole.mesh, parts);
        const double seconds = clockSeconds() - start;
        const Surface surface = surfaceOf(part, counts, parts);
        std::int64_t faces = 0;
        std::size_t neighbours = 0;
        std::size_t mostNeighbours = 0;
        for (std::size_t p = 0; p < surface.cells.size(); ++p) {
            faces += surface.faces[p];
            neighbours += surface.neighbours[p].size();
            mostNeighbours = std::max(mostNeighbours, surface.neighbours[p].size());
        }
        const auto largest = [](const auto& list) {
            return *std::max_element(list.begin(), list.end());
        };
        std::printf(
            "{\"cells\": %zu, \"parts\": %d, \"seconds\": %.2f, \"largestPart\": %lld, "
            "\"meanFaces\": %.1f, \"mostFaces\": %lld, \"meanNeighbours\": %.2f, "
            "\"mostNeighbours\": %zu}\n",
            part.size(), parts, seconds, static_cast<long long>(largest(surface.cells)),
            static_cast<double>(faces) / parts, static_cast<long long>(largest(surface.faces)),
            static_cast<double>(neighbours) / parts, mostNeighbours);
        std::fflush(stdout);
    }
}

}  // namespace weldline
