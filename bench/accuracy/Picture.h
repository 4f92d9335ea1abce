#pragma once

#include <string>
#include <vector>

#include "FrontCase.h"
#include "Measure.h"

namespace weldline::accuracy {

// One curve of calculated angles over the true angle.
struct Curve {
    std::string name;
    std::vector<TrueLine::Sample> samples;
};
struct Panel {
    std::string title;
    std::vector<Curve> curves;
};

// Panels side by side: medians of the calculated angle in steps of 10 degrees of the true angle,
// with the diagonal on which both are equal.
std::string anglePicture(const std::vector<Panel>& panels);

// Where weld nodes lie, seen from above.
struct Map {
    std::string title;
    std::vector<LinePoint> nodes;
};

// Maps of the plate side by side, with the true line as far as its angle is counted; the colour of
// a node runs from red (0 degrees) to blue (180 degrees).
std::string mapPicture(const FrontCase& front, const std::vector<Map>& maps);

// Throws RunError when the file cannot be written.
void savePicture(const std::string& file, const std::string& svg);

}  // namespace weldline::accuracy
