// Changes to finished meshes: coarse numbers, poison, emptiness.
#include <algorithm>
#include <cmath>

#include "Case.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Data = PartitionData;

// Rounds finite values to multiples of the step.
void roundTo(Data::Reals& values, double step, std::size_t first = 1) {
    for (std::size_t i = first; i < values.size(); ++i) {
        if (std::isfinite(values[i])) values[i] = std::nearbyint(values[i] / step) * step;
    }
}

void dropInnerFaces(Data& d) {
    d.innerFace = {{}};
    d.lambda = {poisonReal};
    for (Data::Stencils& s : d.stencils) s = {};
    for (int c = 1; c <= d.cells; ++c) {
        Data::Ints faces = {0};
        Data::Ints types = {0};
        for (int k = 1; k <= d.cellFace[c][0]; ++k) {
            if (d.cellFaceType[c][k] == 0) continue;
            faces.push_back(d.cellFace[c][k]);
            types.push_back(d.cellFaceType[c][k]);
        }
        faces[0] = types[0] = static_cast<int>(faces.size()) - 1;
        d.cellFace[c] = faces;
        d.cellFaceType[c] = types;
    }
}

void dropGroups(Data& d) {
    for (Data::Group& g : d.group) g = {};
}

void dropNodes(Data& d) {
    d.nodes = 0;
    d.nodeX = d.nodeY = d.nodeZ = {poisonReal};
    for (std::size_t c = 1; c < d.cellNode.size(); ++c) d.cellNode[c] = {0};
    for (std::size_t f = 1; f < d.interface.nodes.size(); ++f) d.interface.nodes[f] = {0};
}

// Nodes and halo slots stay, although nothing touches them.
void dropCells(Data& d) {
    d.cells = 0;
    d.cellNode = d.cellFace = d.cellFaceType = d.cellNeighbour = {{}};
    d.cellState = {poisonInt};
    d.innerFace = {{}};
    d.lambda = {poisonReal};
    for (Data::Stencils& s : d.stencils) s = {};
    d.interface = {};
    dropGroups(d);
}

void emptyPartition(Data& d, int kind) {
    switch (kind) {
        case 1:
            dropCells(d);
            break;
        case 2:
            dropNodes(d);
            break;
        case 3:
            dropInnerFaces(d);
            break;
        case 4:
            dropGroups(d);
            break;
        case 5:
            dropInnerFaces(d);
            dropGroups(d);
            break;
        default:
            d = {};
            break;
    }
}

}  // namespace

void roundToGrid(PartitionData& d, const CaseParameters& p) {
    for (Data::Reals* values : {&d.xc, &d.yc, &d.zc, &d.nodeX, &d.nodeY, &d.nodeZ, &d.lambda,
                                &d.interface.xc, &d.interface.yc, &d.interface.zc, &d.interface.sx,
                                &d.interface.sy, &d.interface.sz, &d.interface.lambda}) {
        roundTo(*values, 0.25);
    }
    for (Data::Group& g : d.group) {
        for (Data::Reals* values : {&g.xc, &g.yc, &g.zc, &g.sx, &g.sy, &g.sz}) {
            roundTo(*values, 0.25);
        }
    }
    for (Data::Reals& row : d.innerFace) roundTo(row, 0.25, 3);
    Random random(p.seed, Streams::grid);
    for (std::size_t s = 1; s < d.volume.size(); ++s) {
        if (std::isfinite(d.volume[s]) && d.volume[s] != 0.0) {
            d.volume[s] = random.pick({1.0, 1.0, 1.0, 0.5, 2.0});
        }
    }
    const float scale = static_cast<float>(std::pow(2.0, p.flowScale));
    for (std::size_t s = 1; s < d.flow.size(); ++s) {
        if (!(d.flow[s] > 1e-6f && d.flow[s] < 1e6f)) continue;
        d.flow[s] = scale * std::max(1.0f, std::nearbyint(4.0f * d.flow[s]));
    }
    for (Data::Stencils& s : d.stencils) {
        for (Data::Reals& weights : s.weights) roundTo(weights, 0.25);
    }
}

void poisonSlots(PartitionData& d) {
    for (int kind = 0; kind < Data::groupCount; ++kind) {
        for (int i = 1; i <= d.group[kind].count(); ++i) {
            const int slot = d.group[kind].slot[i];
            d.xc[slot] = d.yc[slot] = d.zc[slot] = d.volume[slot] = poisonReal;
            if (kind == Data::outlet) {
                d.flow[slot] = d.biInjection[slot] = poisonFlow;
            }
        }
    }
}

void emptyMesh(std::vector<PartitionData>& data, int kind) {
    if (kind == 7) {  // One partition alone.
        emptyPartition(data.back(), 6);
    } else {
        for (PartitionData& d : data) emptyPartition(d, kind);
    }
    for (PartitionData& d : data) {
        std::erase_if(d.halo, [&](const Data::HaloSource& source) {
            return source.slot > d.slots ||
                   source.cell > data[static_cast<std::size_t>(source.partition)].cells;
        });
    }
}

}  // namespace weldline::reference
