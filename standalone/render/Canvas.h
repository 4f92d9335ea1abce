#pragma once

#include <cstdint>
#include <vector>

#include "Colours.h"

namespace weldline {

// A picture in memory. Places are in pixels from the upper left corner; a pixel is covered by the
// share of it that lies within a shape.
class Canvas {
  public:
    // Filled with one colour, or transparent where `opacity` is 0.
    Canvas(int width, int height, Colour background, double opacity);

    int width() const { return m_width; }
    int height() const { return m_height; }

    // Red, green, blue and opacity of all pixels, row by row from the bottom as VTK has them.
    const std::vector<std::uint8_t>& bytes() const { return m_bytes; }

    // Lays a colour over a pixel; nothing outside of the picture.
    void blend(int x, int y, Colour colour, double opacity);

    void fill(double left, double top, double right, double bottom, Colour colour);

    // A straight line with round ends.
    void stroke(double x0, double y0, double x1, double y1, double width, Colour colour);

  private:
    int m_width;
    int m_height;
    std::vector<std::uint8_t> m_bytes;
};

}  // namespace weldline
