#include "RandomCut.h"

#include "ControlText.h"
#include "GridMesh.h"
#include "partition/CutMesh.h"

namespace weldline::test {

namespace {

// Which cell goes where, by the kind of cut: 0 METIS, 1 chance, 2 single cells, 3 empty ranks,
// 4 one rank, 5 layers.
int rankOf(int kind, unsigned cell, unsigned cells, int ranks, unsigned seed) {
    const auto chance = [&](int count) {
        return static_cast<int>(hashed(cell, 77, 1, seed) * count);
    };
    if (kind == 1) return chance(ranks);
    if (kind == 2) return hashed(cell, 78, 2, seed) < 0.05 ? chance(ranks) : 0;
    if (kind == 3) return ranks - 1 - 2 * chance((ranks + 1) / 2);
    if (kind == 4) return static_cast<int>(seed) % ranks;
    return static_cast<int>(cell * 7 / cells) % ranks;
}

}  // namespace

RandomCut::RandomCut(int number, int ranks) {
    const auto seed = static_cast<unsigned>(number);
    const auto pick = [&](unsigned what, int low, int high) {
        return low + static_cast<int>(hashed(what, 5, 9, seed) * (high - low + 1));
    };
    CellMesh mesh = pick(1, 0, 4) == 0
                        ? hexahedraMesh(pick(2, 1, 6), pick(3, 1, 4), pick(4, 1, 3))
                        : gridMesh(pick(2, 3, 8), pick(3, 1, 4), pick(4, 1, 4), 0.25, seed);
    const int kind = number % 4 == 0 ? 0 : pick(5, 1, 5);
    const auto cells = static_cast<unsigned>(mesh.cellCount());
    if (kind == 0) partOfCell = cutMesh(mesh, ranks);
    for (unsigned c = 0; kind > 0 && c < cells; ++c)
        partOfCell.push_back(rankOf(kind, c, cells, ranks, seed));

    const std::vector<float> times = meetingStreams(mesh);
    whole = wholePart(std::move(mesh));
    whole.cellFields.emplace_back(times.begin(), times.end());
    method = pick(6, 0, 3) == 0 ? pick(7, 1, 3) : 4;
    gradient = pick(8, 1, 4);
    settings = section({"WeldlingAngleMethod = " + std::to_string(method),
                        "GradMethodMFT = " + std::to_string(gradient),
                        "nSmooth_afterGrad = " + std::to_string(pick(9, 0, 3))});
}

}  // namespace weldline::test
