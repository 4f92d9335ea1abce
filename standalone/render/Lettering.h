#pragma once

#include <string>

#include "Canvas.h"

namespace weldline {

// Where a text stands to the given place.
enum class TextAlign { Left, Centre, Right };

struct TextStyle {
    double size = 12.0;  // of the letters, in pixels
    Colour colour;
    bool isBold = false;
    TextAlign align = TextAlign::Left;
};

// The text with "?" for each byte that is no part of a letter: file names may hold any.
std::string printable(const std::string& text);

// Writes one line of text (UTF-8) with its foot at `y`. VTK brings the letters along, so that no
// font has to be installed.
void writeText(Canvas& canvas, const std::string& text, double x, double y, const TextStyle& style);

// Width of such a line in pixels.
double textWidth(const std::string& text, const TextStyle& style);

// The text, shortened in its middle where it is wider than `width`.
std::string fitted(const std::string& text, double width, const TextStyle& style);

}  // namespace weldline
