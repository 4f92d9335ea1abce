#include "SheetLayout.h"

#include <algorithm>
#include <cmath>

namespace weldline {

namespace {

// In heights of a line of text.
constexpr double captionLines = 2.9;
constexpr double legendLines = 3.4;
constexpr double gapBetweenLegends = 2.5;
constexpr double oneRow = 44.0;     // the least width that takes all legends in one row
constexpr double leastSide = 16.0;  // the least side of a sheet with text

int pixels(double length) {
    return static_cast<int>(std::lround(length));
}

// One line of text is the 56th part of a middling side, less on a slim sheet, and readable.
double letterOf(int width, int height) {
    constexpr double smallest = 13.0;
    const int side = std::min(width, height);
    const double usual = std::sqrt(static_cast<double>(width) * height) / 56.0;
    const double letter = std::max(smallest, std::min(usual, side / 24.0));
    return side < leastSide * letter ? 0.0 : letter;
}

// The views in rows as near to a square as their number allows; more columns than rows on a wide
// area. The last row stands in the middle.
std::vector<SheetBox> grid(const SheetBox& area, int views, int gap) {
    const int longer = static_cast<int>(std::ceil(std::sqrt(views)));
    const int shorter = (views + longer - 1) / longer;
    const int columns = area.width >= area.height ? longer : shorter;
    const int rows = (views + columns - 1) / columns;
    const int width = std::max(1, (area.width - (columns - 1) * gap) / columns);
    const int height = std::max(1, (area.height - (rows - 1) * gap) / rows);
    std::vector<SheetBox> boxes;
    for (int v = 0; v < views; ++v) {
        const int row = v / columns;
        const int inRow = std::min(columns, views - row * columns);
        const int shift = (columns - inRow) * (width + gap) / 2;
        boxes.push_back({area.left + shift + v % columns * (width + gap),
                         area.top + row * (height + gap), width, height});
    }
    return boxes;
}

// Shares `area` out to the legends, from left to right or from top to bottom.
void placeLegends(const SheetBox& area, bool inOneRow, const SheetParts& parts,
                  SheetLayout& layout) {
    std::vector<SheetBox*> boxes;
    if (parts.hasTimeLegend) boxes.push_back(&layout.timeLegend);
    if (parts.hasAngleLegend) boxes.push_back(&layout.angleLegend);
    boxes.push_back(&layout.scaleBar);
    const int height = pixels(legendLines * layout.letter);
    const int gap = pixels(gapBetweenLegends * layout.letter);
    // The scale bar takes half the width of a legend.
    const int share = (area.width - 2 * gap) * 2 / 5;
    int left = area.left;
    int top = area.top;
    for (SheetBox* box : boxes) {
        if (inOneRow) {
            const bool isBar = box == &layout.scaleBar;
            const int width = isBar ? share / 2 : share;
            *box = {isBar ? area.right() - width : left, top, width, height};
            left += width + gap;
        } else {
            *box = {left, top, area.width, height};
            top += height;
        }
    }
}

}  // namespace

SheetLayout layOut(int width, int height, const SheetParts& parts) {
    SheetLayout layout;
    layout.letter = letterOf(width, height);
    if (layout.letter == 0.0) {
        layout.views = grid({0, 0, width, height}, parts.views, 0);
        return layout;
    }
    const int margin = pixels(1.2 * layout.letter);
    const SheetBox inner{margin, margin, width - 2 * margin, height - 2 * margin};
    layout.caption = {inner.left, inner.top, inner.width, pixels(captionLines * layout.letter)};

    const bool inOneRow = width >= oneRow * layout.letter;
    const int count = 1 + (parts.hasTimeLegend ? 1 : 0) + (parts.hasAngleLegend ? 1 : 0);
    const int legends = pixels(legendLines * layout.letter) * (inOneRow ? 1 : count);
    placeLegends({inner.left, inner.bottom() - legends, inner.width, legends}, inOneRow, parts,
                 layout);
    const int top = layout.caption.bottom();
    const int bottom = inner.bottom() - legends - margin / 2;
    layout.views =
        grid({inner.left, top, inner.width, std::max(1, bottom - top)}, parts.views, margin);
    return layout;
}

}  // namespace weldline
