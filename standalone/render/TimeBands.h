#pragma once

#include <vector>

namespace weldline {

// Bands of fill time between equidistant edges; n bands have n + 1 edges.
struct TimeBands {
    std::vector<double> edges;

    int count() const { return static_cast<int>(edges.size()) - 1; }
    double low() const { return edges.front(); }
    double high() const { return edges.back(); }
};

// `count` bands from the earliest time to the latest.
TimeBands evenBands(double earliest, double latest, int count);

// Bands of a round width with edges at its multiples, 5 to 14 of them, that hold both times.
TimeBands roundBands(double earliest, double latest);

// Which edges of a scale get a number, so that there are seven at most: every n-th edge.
int labelStep(int bands);

}  // namespace weldline
