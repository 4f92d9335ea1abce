#pragma once

#include <array>
#include <string>
#include <vector>

namespace weldline::test {

// A PNG file, read. Pixels are counted from the upper left corner.
struct PngPicture {
    int width = 0;
    int height = 0;
    int parts = 0;  // per pixel: 3 colours, 4 with opacity
    std::vector<unsigned char> bytes;

    // Red, green, blue and opacity.
    std::array<int, 4> at(int x, int y) const;
};

PngPicture readPng(const std::string& file);

}  // namespace weldline::test
