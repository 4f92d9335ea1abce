// Cells whose gradients are put on stage: each has one wall face whose area vector, with all values
// 1, becomes its gradient. Positions and gradients come from a coarse grid of exact numbers, so the
// ties that ordinary meshes never meet are common here: equal magnitudes, right angles, sums of
// exactly zero, points exactly on the cone.
#include <algorithm>
#include <cmath>
#include <limits>

#include "CutMesh.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Data = PartitionData;

constexpr double pi = 3.14159265;

double onGrid(Random& random) {
    return random.pick({-1.0, -0.5, 0.0, 0.0, 0.5, 1.0, 2.0});
}

double nudged(Random& random, double value) {
    for (int i = random.integer(-2, 2); i != 0; i -= i > 0 ? 1 : -1) {
        value = std::nextafter(value, i > 0 ? std::numeric_limits<double>::infinity()
                                            : -std::numeric_limits<double>::infinity());
    }
    return value;
}

// Cell 1 in the origin flows along x; the points at which pairs are judged lie on its cone.
void putOnCone(Data& d, Random& random) {
    const double degrees = random.pick({30.0, 60.0, 65.0, 75.0, 90.0, 120.0, 120.0, 150.0});
    const double cosine =
        random.chance(0.5) ? std::cos(degrees * pi / 180.0) : std::cos(degrees / 180.0 * pi);
    const double x = random.chance(0.5) ? cosine : nudged(random, cosine);
    const double y = std::sqrt(1.0 - cosine * cosine);
    Data::Group& walls = d.group[Data::wall];
    d.xc[1] = d.yc[1] = d.zc[1] = 0.0;
    walls.sx[1] = random.pick({1.0, 2.0});
    walls.sy[1] = walls.sz[1] = 0.0;
    for (int f = 1; f <= d.innerFaces(); ++f) {
        d.innerFace[f][6] = x;
        d.innerFace[f][7] = y;
        d.innerFace[f][8] = 0.0;
    }
    for (int n = 1; n <= d.nodes; ++n) {
        d.nodeX[n] = x;
        d.nodeY[n] = y;
        d.nodeZ[n] = 0.0;
    }
}

// Cells 1 and 2 flow at an angle of exactly, or nearly, 35 or 45 degrees, the ends of what the
// methods accept.
void putAtAngle(Data& d, Random& random) {
    const double radians = random.pick({35.0, 35.0, 45.0, 135.0}) * pi / 180.0;
    Data::Group& walls = d.group[Data::wall];
    walls.sx[1] = 1.0;
    walls.sx[2] = nudged(random, std::cos(radians));
    walls.sy[2] = std::sqrt(1.0 - walls.sx[2] * walls.sx[2]);
    walls.sy[1] = walls.sz[1] = walls.sz[2] = 0.0;
    d.xc[1] = d.yc[1] = d.zc[1] = d.xc[2] = d.zc[2] = 0.0;
    d.yc[2] = -1.0;
}

// How much closer the centres of cells 1 and 2, in the origin and at distance 1 in the direction
// phi of the plane z = 0, come by their steps along ga and gb.
double approach(const double (&ga)[3], const double (&gb)[3], double phi, double (&place)[3]) {
    const auto length = [](double x, double y, double z) {
        return std::sqrt((x * x + y * y) + z * z);
    };
    place[0] = std::cos(phi);
    place[1] = std::sin(phi);
    place[2] = 0.0;
    const double ma = length(ga[0], ga[1], ga[2]);
    const double mb = length(gb[0], gb[1], gb[2]);
    const double distance = length(place[0], place[1], place[2]);
    const double fa = ma > mb ? 1.0 : ma / (mb + 1e-30);
    const double fb = ma > mb ? mb / (ma + 1e-30) : 1.0;
    double between[3];
    for (int i = 0; i < 3; ++i) {
        between[i] = (ga[i] / ma) * (distance * 0.5 * fa) -
                     (place[i] + (gb[i] / mb) * (distance * 0.5 * fb));
    }
    return distance - length(between[0], between[1], between[2]);
}

// Cells 1 and 2 on the brink between converging and not, so that the last bit decides.
void putOnBrink(Data& d, Random& random, double scale) {
    double ga[3], gb[3];
    for (double& component : ga) component = scale * random.real(-1.0, 1.0);
    for (double& component : gb) component = scale * random.real(-1.0, 1.0);
    if (random.chance(0.5)) {  // Equal magnitudes.
        gb[0] = -ga[1];
        gb[1] = ga[0];
        gb[2] = -ga[2];
    }
    double place[3];
    double apart = random.real(0.0, 6.28);
    double closer = apart;
    for (int i = 0; i < 50 && approach(ga, gb, apart, place) > 0.0; ++i) apart += 0.2;
    for (int i = 0; i < 50 && approach(ga, gb, closer, place) <= 0.0; ++i) closer += 0.2;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (apart + closer);
        (approach(ga, gb, middle, place) > 0.0 ? closer : apart) = middle;
    }
    approach(ga, gb, random.chance(0.5) ? closer : apart, place);
    Data::Group& walls = d.group[Data::wall];
    for (int f = 1; f <= d.innerFaces(); ++f) {  // Far ahead of both.
        for (int i = 0; i < 3; ++i) d.innerFace[f][6 + i] = 100.0 / scale * (ga[i] + gb[i]);
    }
    Data::Reals* const areas[] = {&walls.sx, &walls.sy, &walls.sz};
    Data::Reals* const centres[] = {&d.xc, &d.yc, &d.zc};
    for (int i = 0; i < 3; ++i) {
        (*areas[i])[1] = ga[i];
        (*areas[i])[2] = gb[i];
        (*centres[i])[1] = 0.0;
        (*centres[i])[2] = place[i];
    }
    d.volume[1] = d.volume[2] = 1.0;
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

void addLists(Data& d) {
    d.cellNode = d.cellFace = d.cellFaceType = d.cellNeighbour = {{}};
    for (int c = 1; c <= d.cells; ++c) {
        std::vector<int> nodes = {d.nodes};
        for (int n = 1; n <= d.nodes; ++n) nodes.push_back(n);
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
        d.cellNode.push_back(nodes);
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
    d.nodes = counts.integer(2, 4);
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
    const double scale = random.pick({1.0, 1.0, 1.0, 3.0, 0.01, 5e-4, 1e-29, 3e-30});
    for (int a = 1; a <= d.cells; ++a) {
        addWall(d, random, a, scale);
        for (int b = a + 1; b <= d.cells; ++b) {
            if (!counts.chance(0.8)) continue;
            d.innerFace.push_back({poisonReal, double(a), double(b), 0.0, 0.0, 0.0, onGrid(random),
                                   onGrid(random), onGrid(random)});
            d.lambda.push_back(0.5);
        }
    }
    addLists(d);
    if (random.chance(0.3)) putOnCone(d, random);
    if (random.chance(0.3)) putAtAngle(d, random);
    if (random.chance(0.4)) putOnBrink(d, random, scale);
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
