#pragma once

#include <vector>

namespace weldline {

// A rectangle of the sheet in pixels from its upper left corner; no width where it is left out.
struct SheetBox {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    int right() const { return left + width; }
    int bottom() const { return top + height; }
    bool isThere() const { return width > 0; }
};

// What a sheet shows beside its views.
struct SheetParts {
    int views = 1;
    bool hasTimeLegend = true;
    bool hasAngleLegend = true;
};

// Where everything stands: a caption on top, the views in a near-square grid, below them the
// legends and the scale bar, side by side or, on a narrow sheet, one below the other.
struct SheetLayout {
    double letter = 0.0;  // height of a line of text; 0: the sheet is too small for any text
    SheetBox caption;
    std::vector<SheetBox> views;  // row by row
    SheetBox timeLegend;
    SheetBox angleLegend;
    SheetBox scaleBar;
};

SheetLayout layOut(int width, int height, const SheetParts& parts);

}  // namespace weldline
