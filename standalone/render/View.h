#pragma once

#include <string>
#include <vector>

#include "mesh/Vec3.h"

namespace weldline {

// A direction from which a part is looked at, without perspective. The three axes are unit vectors.
struct View {
    std::string name;    // as the user gave it
    Vec3 right;          // of the picture
    Vec3 up;             // of the picture
    Vec3 towardsViewer;  // right x up
};

// The viewer stands at this angle round the z axis from x towards y, and above the xy plane;
// degrees. z is up; from straight above y is.
View viewFrom(double azimuth, double elevation);

// "iso", "+x" to "-z", or "AZIMUTH,ELEVATION" in degrees with an elevation of -90 to 90. Throws
// UsageError.
View viewOf(const std::string& text);

// The usual view of a part with these points: a flat one is seen from its broad side, tilted a bit,
// with its longer side to the right; any other from a corner.
View defaultView(const std::vector<Vec3>& points);

// What points fill of the axes of a view.
struct ViewBox {
    Vec3 low;  // x along View::right, y along View::up, z towards the viewer
    Vec3 high;

    Vec3 size() const { return high - low; }
    Vec3 centre() const { return 0.5 * (low + high); }
};
ViewBox boxIn(const View& view, const std::vector<Vec3>& points);

}  // namespace weldline
