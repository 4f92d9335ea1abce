#include "RoundNumbers.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace weldline {

namespace {

// A limit that misses a round number by rounding alone counts as it.
constexpr double nearly = 1e-9;

// On purpose divided by a whole power of ten: 1 / 10 is the 0.1 that everybody means.
double scaled(int digit, int exponent) {
    return exponent < 0 ? digit / std::pow(10.0, -exponent) : digit * std::pow(10.0, exponent);
}

}  // namespace

double roundDown(double limit) {
    const int exponent = static_cast<int>(std::floor(std::log10(limit * (1.0 + nearly))));
    for (const int digit : {5, 2})
        if (scaled(digit, exponent) <= limit * (1.0 + nearly)) return scaled(digit, exponent);
    return scaled(1, exponent);
}

double roundUp(double limit) {
    const int exponent = static_cast<int>(std::floor(std::log10(limit)));
    for (const int digit : {1, 2, 5})
        if (scaled(digit, exponent) >= limit * (1.0 - nearly)) return scaled(digit, exponent);
    return scaled(1, exponent + 1);
}

std::string legendNumber(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", value == 0.0 ? 0.0 : value);
    return text.data();
}

}  // namespace weldline
