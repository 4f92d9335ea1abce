#pragma once

#include "Background.h"
#include "Colours.h"

namespace weldline {

// The colours of a picture beside its two maps.
struct Palette {
    Colour background;
    double opacity = 1.0;  // of the background
    Colour text;
    Colour faintText;
    Colour part;        // where no fill time is shown
    Colour notReached;  // skin that the melt did not reach
    Colour rim;         // edges of the part
    Colour halo;        // round weld lines
};

inline Palette paletteOf(Background background) {
    Palette palette{{1.0, 1.0, 1.0},    1.0,
                    {0.10, 0.11, 0.14}, {0.38, 0.40, 0.45},
                    {0.70, 0.75, 0.81}, {0.64, 0.64, 0.64},
                    {0.13, 0.14, 0.20}, {1.0, 1.0, 1.0}};
    if (background == Background::Dark) {
        palette.background = {0.075, 0.08, 0.10};
        palette.text = {0.95, 0.95, 0.96};
        palette.faintText = {0.66, 0.68, 0.72};
        palette.rim = {0.02, 0.02, 0.05};
    }
    if (background == Background::Transparent) palette.opacity = 0.0;
    return palette;
}

}  // namespace weldline
