#include "Colours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace weldline {

namespace {

// Control points 0xRRGGBB at equal distances; between them colours are linear.
using Map = std::array<std::uint32_t, 17>;

constexpr Map timeMap{0x2e1d65, 0x312a74, 0x343883, 0x354592, 0x3454a1, 0x2565ac,
                      0x0176b4, 0x0f87b3, 0x0e97b6, 0x01a7b6, 0x0eb7b4, 0x19c8ae,
                      0x4cd6a3, 0x73e19e, 0x97ec9a, 0xb8f696, 0xdaff97};
constexpr Map angleMap{0xa30344, 0xb50643, 0xc7093f, 0xda0e38, 0xea1f2f, 0xf03e23,
                       0xf45616, 0xf76a0e, 0xf97d14, 0xfb8f27, 0xfb9f3b, 0xfcaf4e,
                       0xfcbe62, 0xfbcc7e, 0xfbd999, 0xfce6b3, 0xfef2cc};

Colour colourOf(std::uint32_t rgb) {
    return {(rgb >> 16) / 255.0, ((rgb >> 8) & 0xffu) / 255.0, (rgb & 0xffu) / 255.0};
}

Colour at(const Map& map, double share) {
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(map.size() - 1);
    const auto left = std::min(static_cast<std::size_t>(place), map.size() - 2);
    return mixed(colourOf(map[left]), colourOf(map[left + 1]), place - static_cast<double>(left));
}

// The amount of light that a part of a colour stands for.
double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

}  // namespace

Colour timeColour(double share) {
    return at(timeMap, share);
}

Colour angleColour(double degrees) {
    return at(angleMap, degrees / 180.0);
}

Colour mixed(Colour a, Colour b, double shareOfB) {
    return {a.red + shareOfB * (b.red - a.red), a.green + shareOfB * (b.green - a.green),
            a.blue + shareOfB * (b.blue - a.blue)};
}

double lightness(Colour colour) {
    const double luminance =
        0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
    return luminance <= 216.0 / 24389.0 ? luminance * 24389.0 / 27.0
                                        : 116.0 * std::cbrt(luminance) - 16.0;
}

}  // namespace weldline
