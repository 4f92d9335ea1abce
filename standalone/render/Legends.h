#pragma once

#include <string>

#include "Canvas.h"
#include "Palette.h"
#include "SheetLayout.h"
#include "TimeBands.h"
#include "View.h"

namespace weldline {

// What stands round the views; `letter` is the height of a line of text in pixels.

void drawCaption(Canvas& canvas, const SheetLayout& layout, const Palette& palette,
                 const std::string& title, const std::string& subtitle);

// A box for each band, its edges numbered; with a grey box where skin was not reached.
void drawTimeLegend(Canvas& canvas, const SheetLayout& layout, const Palette& palette,
                    const TimeBands& bands, bool hasNotReached);

void drawAngleLegend(Canvas& canvas, const SheetLayout& layout, const Palette& palette);

// A bar of a round length; `pixel` is what a pixel stands for in the data set's unit.
void drawScaleBar(Canvas& canvas, const SheetLayout& layout, const Palette& palette, double pixel);

// The name of a view over it, and the directions of the three axes in its lower left corner.
void drawViewNotes(Canvas& canvas, const SheetBox& box, double letter, const Palette& palette,
                   const View& view);

}  // namespace weldline
