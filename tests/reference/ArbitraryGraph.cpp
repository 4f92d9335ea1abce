// Meshes without geometry: the calculation only sees arrays, so any valid numbers will do, and
// many of these meshes could not come from cells in space.
#include <algorithm>

#include "CutMesh.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Data = PartitionData;

// Counts that stay the same from binding to binding.
struct Counts {
    int cells, nodes, innerFaces, interfaceFaces, haloSlots;
    int group[Data::groupCount];
};

Counts drawCounts(const CaseParameters& p, int partition) {
    Random random(p.seed, Streams::graphCounts + partition);
    Counts n{};
    n.cells = std::max(1, p.nx * p.ny * p.nz + random.integer(-1, 2));
    n.nodes = random.integer(1, 2 + n.cells);
    n.innerFaces = random.integer(0, 3 * n.cells);
    for (int& count : n.group) count = random.integer(0, n.cells);
    if (p.partitions > 1) {
        n.interfaceFaces = random.integer(0, n.cells);
        n.haloSlots = random.integer(1, n.cells);
    }
    return n;
}

Data::Reals reals(Random& random, int count, double low, double high) {
    Data::Reals values = {poisonReal};
    for (int i = 1; i <= count; ++i) values.push_back(random.real(low, high));
    return values;
}

Data::Ints integers(Random& random, int count, int low, int high) {
    Data::Ints values = {poisonInt};
    for (int i = 1; i <= count; ++i) values.push_back(random.integer(low, high));
    return values;
}

// Rows with their counts.
Data::IntRows rows(Random& random, int count, int shortest, int longest, int low, int high) {
    Data::IntRows table = {{}};
    for (int i = 1; i <= count; ++i) {
        const int length = random.integer(shortest, longest);
        std::vector<int> row = {length};
        for (int k = 1; k <= length; ++k) row.push_back(random.integer(low, high));
        table.push_back(row);
    }
    return table;
}

void addInnerFaces(Data& d, Random& random, const CaseParameters& p, int count) {
    d.innerFace = {Data::Reals(9, poisonReal)};
    for (int f = 1; f <= count; ++f) {
        Data::Reals row = reals(random, 8, -1.0, 1.0);
        for (int side = 1; side <= 2; ++side) {
            row[side] = random.integer(1, d.cells);
            if (random.chance(p.fractions / 100.0)) row[side] += random.real(0.0, 0.99);
        }
        d.innerFace.push_back(row);
    }
    d.lambda = reals(random, count, 0.0, 1.0);
}

// Face lists: mostly the cell's own inner faces, but also any other face.
void addFaceLists(Data& d, Random& random) {
    d.cellFace = d.cellFaceType = {{}};
    for (int c = 1; c <= d.cells; ++c) {
        std::vector<int> faces = {0};
        std::vector<int> types = {0};
        const auto add = [&](int face, int type) {
            faces.push_back(face);
            types.push_back(type);
        };
        for (int f = 1; f <= d.innerFaces(); ++f) {
            const bool touches = static_cast<int>(d.innerFace[f][1]) == c ||
                                 static_cast<int>(d.innerFace[f][2]) == c;
            if (touches || random.chance(0.05)) add(f, 0);
        }
        for (int f = 1; f <= d.interface.count(); ++f) {
            if (d.interface.cell[f] == c || random.chance(0.1)) add(f, 101);
        }
        if (random.chance(0.7)) add(random.integer(-5, 500), random.pick({1, 2, 100, 102, -1}));
        faces[0] = types[0] = static_cast<int>(faces.size()) - 1;
        d.cellFace.push_back(faces);
        d.cellFaceType.push_back(types);
    }
}

void addGroups(Data& d, Random& random, const Counts& n) {
    int slot = d.cells;
    for (int kind = 0; kind < Data::groupCount; ++kind) {
        Data::Group& g = d.group[kind];
        const int count = n.group[kind];
        g.xc = reals(random, count, -1.0, 1.0);
        g.yc = reals(random, count, -1.0, 1.0);
        g.zc = reals(random, count, -1.0, 1.0);
        g.sx = reals(random, count, -1.0, 1.0);
        g.sy = reals(random, count, -1.0, 1.0);
        g.sz = reals(random, count, -1.0, 1.0);
        g.cell = integers(random, count, 1, d.cells);
        g.slot = {poisonInt};
        for (int i = 1; i <= count; ++i) g.slot.push_back(++slot);
    }
}

void addInterface(Data& d, Random& random, const Counts& n) {
    Data::Interface& i = d.interface;
    const int count = n.interfaceFaces;
    i.cell = integers(random, count, 1, d.cells);
    i.halo = integers(random, count, d.slots - n.haloSlots + 1, d.slots);
    for (Data::Reals* values : {&i.xc, &i.yc, &i.zc, &i.sx, &i.sy, &i.sz}) {
        *values = reals(random, count, -1.0, 1.0);
    }
    i.lambda = reals(random, count, 0.0, 1.0);
    i.nodes = rows(random, count, 0, 4, 1, d.nodes);
}

Data build(const CaseParameters& p, const Counts& n, int partition, int variant) {
    Random random(p.seed, Streams::graph + 10 * partition + variant);
    Data d;
    d.cells = n.cells;
    d.nodes = n.nodes;
    d.slots = n.cells + n.haloSlots;
    for (int count : n.group) d.slots += count;
    d.xc = reals(random, d.slots, -1.0, 1.0);
    d.yc = reals(random, d.slots, -1.0, 1.0);
    d.zc = reals(random, d.slots, -1.0, 1.0);
    d.volume = reals(random, d.slots, 0.1, 1.0);
    d.nodeX = reals(random, d.nodes, -1.0, 1.0);
    d.nodeY = reals(random, d.nodes, -1.0, 1.0);
    d.nodeZ = reals(random, d.nodes, -1.0, 1.0);
    d.cellNode = rows(random, d.cells, 0, 6, 1, d.nodes);
    d.cellNeighbour = rows(random, d.cells, 0, 6, 1, d.slots);
    addInnerFaces(d, random, p, n.innerFaces);
    addGroups(d, random, n);
    addInterface(d, random, n);
    addFaceLists(d, random);
    return d;
}

}  // namespace

std::vector<PartitionData> arbitraryGraph(const CaseParameters& parameters, int variant,
                                          std::vector<std::vector<int>>& origin) {
    std::vector<Counts> counts;
    std::vector<PartitionData> result;
    origin.clear();
    for (int q = 0; q < parameters.partitions; ++q) {
        counts.push_back(drawCounts(parameters, q));
        result.push_back(build(parameters, counts[q], q, variant));
        origin.emplace_back(result[q].slots + 1, -1);
    }
    for (int q = 0; q < parameters.partitions; ++q) {
        Random random(parameters.seed, Streams::cut + 10 * q);
        for (int i = 1; i <= counts[q].haloSlots; ++i) {
            const int from = random.integer(0, parameters.partitions - 1);
            result[q].halo.push_back({result[q].slots - counts[q].haloSlots + i, from,
                                      random.integer(1, counts[from].cells)});
        }
    }
    return result;
}

}  // namespace weldline::reference
