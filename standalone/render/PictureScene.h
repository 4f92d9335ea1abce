#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Background.h"
#include "TimeBands.h"
#include "View.h"
#include "results/LineShapes.h"
#include "results/Skin.h"

namespace weldline {

// What a picture shows. Lengths are in the data set's unit.
struct PictureScene {
    Skin skin;
    std::vector<LineCurve> skinLines;    // weld lines that run along the skin, there
    std::vector<LineCurve> buriedLines;  // those that do not, through the part; shine through
    std::vector<LineCurve> innerLines;   // the first, through the part; shown where `seesThrough`
    std::optional<TimeBands> bands;      // of the fill time; nothing: the part has one colour
    std::string title;
    std::string subtitle;
};

// How it shows it.
struct PictureStyle {
    int width = 1600;
    int height = 1000;
    std::vector<View> views;  // one at least
    Background background = Background::Light;
    bool seesThrough = false;  // what the part hides of the lines shines through it
};

}  // namespace weldline
