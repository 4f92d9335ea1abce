// The stages: places, gradients and points at which something is decided by the last bit.
#include "Stages.h"

#include <cmath>
#include <limits>

namespace weldline::reference {

namespace {

using Data = PartitionData;

constexpr double pi = 3.14159265;

// The value in half of the cases, else one of its neighbours.
double nudged(Random& random, double value) {
    if (random.chance(0.5)) return value;
    for (int i = random.integer(-2, 2); i != 0; i -= i > 0 ? 1 : -1) {
        value = std::nextafter(value, i > 0 ? std::numeric_limits<double>::infinity()
                                            : -std::numeric_limits<double>::infinity());
    }
    return value;
}

void place(Data& d, int cell, double x, double y, double z = 0.0) {
    d.xc[cell] = x;
    d.yc[cell] = y;
    d.zc[cell] = z;
    d.volume[cell] = 1.0;
}

// The gradient of a cell of volume 1.
void let(Data& d, int cell, double gx, double gy, double gz = 0.0) {
    Data::Group& walls = d.group[Data::wall];
    walls.sx[cell] = gx;
    walls.sy[cell] = gy;
    walls.sz[cell] = gz;
}

// The points at which pairs are judged.
void putPoints(Data& d, double x, double y = 0.0, double z = 0.0) {
    for (int f = 1; f <= d.innerFaces(); ++f) {
        d.innerFace[f][6] = x;
        d.innerFace[f][7] = y;
        d.innerFace[f][8] = z;
    }
    for (int n = 1; n <= d.nodes; ++n) {
        d.nodeX[n] = x;
        d.nodeY[n] = y;
        d.nodeZ[n] = z;
    }
}

// What the magnitude filter takes out, so that it lets the other cells pass.
void addFastCell(Data& d) {
    if (d.cells >= 3) let(d, d.cells, 0.0, 50.0);
}

//        Q
//       / \        Cells 1 and 2 flow head-on; the point Q at which they are judged lies exactly,
//   1 ->   <- 2    or nearly, on the cones of both, beside or behind them.
void putOnCone(Data& d, Random& random) {
    const double degrees = random.pick({30.0, 60.0, 65.0, 65.0, 75.0, 75.0, 90.0, 120.0, 150.0});
    const double cosine =
        random.chance(0.5) ? std::cos(degrees * pi / 180.0) : std::cos(degrees / 180.0 * pi);
    const double x = nudged(random, cosine);
    const double y = std::sqrt(1.0 - cosine * cosine);
    place(d, 1, 0.0, 0.0);
    place(d, 2, x > 0.1 ? 2.0 * x : 2.0, 0.0);
    let(d, 1, random.pick({1.0, 2.0}), 0.0);
    let(d, 2, -1.0, 0.0);
    addFastCell(d);
    putPoints(d, x, y, 0.0);
}

// The flow of one cell is at a right angle to the way to the mid-point between the cells, while
// two of the three planes count: (-1, 2, -1) and (-1, -1, -1) seen from (0, 0, 0) and (2, 2, 2).
void putOnEdge(Data& d, Random& random) {
    const int edge = random.integer(1, 2);
    const int other = 3 - edge;
    const double sign = edge == 1 ? 1.0 : -1.0;
    place(d, 1, 0.0, 0.0, 0.0);
    place(d, 2, 2.0, 2.0, 2.0);
    let(d, edge, -sign, 2.0 * sign, -sign);
    let(d, other, -sign, -sign, -sign);
    addFastCell(d);
    putPoints(d, -100.0 * sign, 0.0, -100.0 * sign);
}

//   2 \         Cells 1 and 2 flow towards the axis, at an angle to each other of exactly, or
//       -> x    nearly, what the methods accept or truncate. Cell 3 meets them at another angle
//   1 /         and cell 4, much faster than all, is what the magnitude filter takes out.
void putAtAngle(Data& d, Random& random) {
    const double radians = random.pick({1.0, 35.0, 35.0, 45.0, 45.0, 45.0}) * pi / 180.0;
    const double along = nudged(random, std::cos(0.5 * radians));
    const double across = nudged(random, std::sin(0.5 * radians));
    place(d, 1, 0.0, -1.0);
    place(d, 2, 0.0, 1.0);
    let(d, 1, along, across);
    let(d, 2, along, -across);
    if (d.cells >= 3) {
        place(d, 3, random.pick({1.0, 2.0}), random.pick({1.0, 3.0}));
        let(d, 3, -0.5, -0.25);
    }
    if (d.cells >= 4) let(d, 4, 0.0, 5.0);
    putPoints(d, random.pick({0.5, 10.0}));
}

// Cells 1 and 2 flow head-on with a magnitude of exactly, or nearly, an end of what the magnitude
// filter lets through. The largest magnitude is that of the cells from 3 on. With n cells and the
// filter parameter 5000 the lower end is half the mean: m = (2 m + (n - 2) M) / (2 n).
void putAtMagnitude(Data& d, Random& random) {
    if (d.cells < 3) return;
    const double n = d.cells;
    const bool lower = random.chance(0.5);
    const double magnitude = nudged(random, lower ? 0.5 : 2.0 * 0.99);
    const double other = lower ? (n - 1.0) / (n - 2.0) : 2.0;
    place(d, 1, -1.0, 0.0);
    place(d, 2, 1.0, 0.0);
    let(d, 1, magnitude, 0.0);
    let(d, 2, random.chance(0.5) ? -magnitude : -1.0, 0.0);
    for (int c = 3; c <= d.cells; ++c) {
        d.volume[c] = 1.0;
        let(d, c, 0.0, other);
    }
    putPoints(d, 0.0);
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

}  // namespace

void putOnStage(PartitionData& data, Random& random, double scale) {
    switch (random.integer(0, 6)) {
        case 0:
            putOnCone(data, random);
            break;
        case 1:
        case 2:
            putAtAngle(data, random);
            break;
        case 3:
            putAtMagnitude(data, random);
            break;
        case 4:
            putOnEdge(data, random);
            break;
        case 5:
            putOnBrink(data, random, scale);
            break;
        default:  // As drawn.
            break;
    }
}

}  // namespace weldline::reference
