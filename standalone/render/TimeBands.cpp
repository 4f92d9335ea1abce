#include "TimeBands.h"

#include <cmath>

#include "RoundNumbers.h"

namespace weldline {

TimeBands evenBands(double earliest, double latest, int count) {
    TimeBands bands;
    for (int i = 0; i < count; ++i)
        bands.edges.push_back(earliest + (latest - earliest) * i / count);
    bands.edges.push_back(latest);
    return bands;
}

TimeBands roundBands(double earliest, double latest) {
    if (!(latest > earliest)) return {{earliest, latest}};
    const double width = roundUp((latest - earliest) / 12.0);
    // A time that misses an edge by rounding alone lies on it.
    constexpr double nearly = 1e-6;
    const auto first = static_cast<long long>(std::floor(earliest / width + nearly));
    const auto last = static_cast<long long>(std::ceil(latest / width - nearly));
    TimeBands bands;
    for (long long i = first; i <= last; ++i) bands.edges.push_back(width * static_cast<double>(i));
    return bands;
}

int labelStep(int bands) {
    constexpr int most = 6;
    int step = 1;
    while (bands > most * step) ++step;
    return step;
}

}  // namespace weldline
