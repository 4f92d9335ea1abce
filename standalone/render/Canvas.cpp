#include "Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace weldline {

namespace {

std::uint8_t byteOf(double part) {
    return static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(part, 0.0, 1.0)));
}

// Length of the part of pixel `at` that lies between two places.
double covered(int at, double from, double to) {
    return std::max(0.0, std::min(to, at + 1.0) - std::max(from, static_cast<double>(at)));
}

double distanceFromLine(double x, double y, double x0, double y0, double x1, double y1) {
    const double dx = x1 - x0;
    const double dy = y1 - y0;
    const double square = dx * dx + dy * dy;
    const double along =
        square > 0.0 ? std::clamp(((x - x0) * dx + (y - y0) * dy) / square, 0.0, 1.0) : 0.0;
    return std::hypot(x - (x0 + along * dx), y - (y0 + along * dy));
}

}  // namespace

Canvas::Canvas(int width, int height, Colour background, double opacity)
    : m_width(width),
      m_height(height),
      m_bytes(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    const std::uint8_t red = byteOf(background.red);
    const std::uint8_t green = byteOf(background.green);
    const std::uint8_t blue = byteOf(background.blue);
    const std::uint8_t cover = byteOf(opacity);
    for (std::size_t at = 0; at < m_bytes.size(); at += 4) {
        m_bytes[at] = red;
        m_bytes[at + 1] = green;
        m_bytes[at + 2] = blue;
        m_bytes[at + 3] = cover;
    }
}

void Canvas::blend(int x, int y, Colour colour, double opacity) {
    if (x < 0 || x >= m_width || y < 0 || y >= m_height || !(opacity > 0.0)) return;
    const auto row = static_cast<std::size_t>(m_height - 1 - y);
    std::uint8_t* pixel =
        &m_bytes[4 * (row * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x))];
    const double before = pixel[3] / 255.0 * (1.0 - opacity);
    const double after = opacity + before;
    const auto over = [&](double part, std::uint8_t old) {
        return byteOf((part * opacity + old / 255.0 * before) / after);
    };
    pixel[0] = over(colour.red, pixel[0]);
    pixel[1] = over(colour.green, pixel[1]);
    pixel[2] = over(colour.blue, pixel[2]);
    pixel[3] = byteOf(after);
}

void Canvas::fill(double left, double top, double right, double bottom, Colour colour) {
    for (int y = static_cast<int>(std::floor(top)); y < bottom; ++y)
        for (int x = static_cast<int>(std::floor(left)); x < right; ++x)
            blend(x, y, colour, covered(x, left, right) * covered(y, top, bottom));
}

void Canvas::stroke(double x0, double y0, double x1, double y1, double width, Colour colour) {
    const double reach = 0.5 * width + 1.0;
    const int lastY = static_cast<int>(std::ceil(std::max(y0, y1) + reach));
    const int lastX = static_cast<int>(std::ceil(std::max(x0, x1) + reach));
    for (int y = static_cast<int>(std::floor(std::min(y0, y1) - reach)); y <= lastY; ++y)
        for (int x = static_cast<int>(std::floor(std::min(x0, x1) - reach)); x <= lastX; ++x) {
            const double distance = distanceFromLine(x + 0.5, y + 0.5, x0, y0, x1, y1);
            blend(x, y, colour, std::clamp(0.5 * width + 0.5 - distance, 0.0, 1.0));
        }
}

}  // namespace weldline
