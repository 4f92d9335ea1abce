// Cells whose gradients are put on stage: each has one wall face whose area vector, with all values
// 1, becomes its gradient. Positions and gradients come from a coarse grid of exact numbers, so the
// ties that ordinary meshes never meet are common here: equal magnitudes, right angles, sums of
// exactly zero, points exactly on the cone.
#include <algorithm>

#include "CutMesh.h"
#include "Random.h"
#include "Stages.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Data = PartitionData;

double onGrid(Random& random) {
    return random.pick({-1.0, -0.5, 0.0, 0.0, 0.5, 1.0, 2.0});
}

void addWall(Data& d, Random& random, int cell, double scale) {
    Data::Group& walls = d.group[Data::wall];
    walls.xc.push_back(onGrid(random));
    walls.yc.push_back(onGrid(random));
    walls.zc.push_back(onGrid(random));
    walls.sx.push_back(scale * onGrid(random));
    walls.sy.push_back(scale * onGrid(random));
    walls.sz.push_back(scale * onGrid(random));
    walls.cell.push_back(cell);
    walls.slot.push_back(d.cells + cell);
}

// Each node touches some of the cells.
std::vector<int> nodesOf(const Data& d, Random& random) {
    std::vector<int> nodes = {0};
    for (int n = 1; n <= d.nodes; ++n) {
        if (random.chance(0.75)) nodes.push_back(n);
    }
    nodes[0] = static_cast<int>(nodes.size()) - 1;
    return nodes;
}

void addLists(Data& d, Random& random) {
    d.cellNode = d.cellFace = d.cellFaceType = d.cellNeighbour = {{}};
    for (int c = 1; c <= d.cells; ++c) {
        std::vector<int> faces = {0, c}, types = {0, 1}, neighbours = {0};
        for (int f = 1; f <= d.innerFaces(); ++f) {
            const int a = static_cast<int>(d.innerFace[f][1]);
            const int b = static_cast<int>(d.innerFace[f][2]);
            if (a != c && b != c) continue;
            faces.push_back(f);
            types.push_back(0);
            neighbours.push_back(a == c ? b : a);
        }
        faces[0] = types[0] = static_cast<int>(faces.size()) - 1;
        neighbours[0] = static_cast<int>(neighbours.size()) - 1;
        d.cellNode.push_back(nodesOf(d, random));
        d.cellFace.push_back(faces);
        d.cellFaceType.push_back(types);
        d.cellNeighbour.push_back(neighbours);
    }
}

Data stage(const CaseParameters& p, int partition, int variant) {
    Random counts(p.seed, Streams::graphCounts + partition);
    Random random(p.seed, Streams::graph + 10 * partition + variant);
    Data d;
    d.cells = std::clamp(p.nx * p.ny * p.nz, 2, 8);
    d.nodes = counts.integer(2, 5);
    d.slots = 2 * d.cells;
    d.xc = d.yc = d.zc = d.volume = d.nodeX = d.nodeY = d.nodeZ = d.lambda = {poisonReal};
    d.innerFace = {Data::Reals(9, poisonReal)};
    for (int s = 1; s <= d.slots; ++s) {
        d.xc.push_back(onGrid(random));
        d.yc.push_back(onGrid(random));
        d.zc.push_back(onGrid(random));
        d.volume.push_back(random.pick({1.0, 1.0, 1.0, 2.0, 0.5}));
    }
    for (int n = 1; n <= d.nodes; ++n) {
        d.nodeX.push_back(onGrid(random));
        d.nodeY.push_back(onGrid(random));
        d.nodeZ.push_back(onGrid(random));
    }
    const double scale = random.pick({1.0, 1.0, 1.0, 3.0, 0.01, 5e-4, 1e-3, 1e-29, 3e-30, 1e-30});
    for (int a = 1; a <= d.cells; ++a) {
        addWall(d, random, a, scale);
        for (int b = a + 1; b <= d.cells; ++b) {
            if (!counts.chance(0.8)) continue;
            d.innerFace.push_back({poisonReal, double(a), double(b), 0.0, 0.0, 0.0, onGrid(random),
                                   onGrid(random), onGrid(random)});
            d.lambda.push_back(0.5);
        }
    }
    addLists(d, counts);
    putOnStage(d, random, scale);
    return d;
}

}  // namespace

std::vector<PartitionData> stagedCells(const CaseParameters& parameters, int variant,
                                       std::vector<std::vector<int>>& origin) {
    std::vector<PartitionData> result;
    origin.clear();
    for (int q = 0; q < parameters.partitions; ++q) {
        result.push_back(stage(parameters, q, variant));
        origin.emplace_back(result[q].slots + 1, -1);
    }
    return result;
}

}  // namespace weldline::reference
