#include "View.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>

#include "base/Errors.h"

namespace weldline {

namespace {

// The angle above the ground under which the three axes look equally long; degrees.
constexpr double isoElevation = 35.26438968275465;

struct NamedView {
    const char* name;
    double azimuth;
    double elevation;
};
constexpr std::array<NamedView, 7> namedViews{{{"iso", -45.0, isoElevation},
                                               {"+x", 0.0, 0.0},
                                               {"-x", 180.0, 0.0},
                                               {"+y", 90.0, 0.0},
                                               {"-y", -90.0, 0.0},
                                               {"+z", -90.0, 90.0},
                                               {"-z", -90.0, -90.0}}};

// Cosine and sine, exact at multiples of 90 degrees: a plate seen from the side has no broad side.
std::array<double, 2> cosineAndSine(double degrees) {
    const double turned = std::remainder(degrees, 360.0);
    if (turned == 0.0) return {1.0, 0.0};
    if (std::abs(turned) == 180.0) return {-1.0, 0.0};
    if (std::abs(turned) == 90.0) return {0.0, turned / 90.0};
    const double angle = turned * std::numbers::pi / 180.0;
    return {std::cos(angle), std::sin(angle)};
}

// False: the text is no number.
bool readNumber(const std::string& text, double& value) {
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && std::isfinite(value);
}

double along(Vec3 size, int axis) {
    return axis == 0 ? size.x : axis == 1 ? size.y : size.z;
}

}  // namespace

View viewFrom(double azimuth, double elevation) {
    const auto [cosA, sinA] = cosineAndSine(azimuth);
    const auto [cosE, sinE] = cosineAndSine(elevation);
    View view;
    view.right = {-sinA, cosA, 0.0};
    view.towardsViewer = {cosE * cosA, cosE * sinA, sinE};
    view.up = cross(view.towardsViewer, view.right);
    return view;
}

View viewOf(const std::string& text) {
    View view;
    const auto* named = std::find_if(namedViews.begin(), namedViews.end(),
                                     [&](const NamedView& known) { return text == known.name; });
    if (named != namedViews.end()) {
        view = viewFrom(named->azimuth, named->elevation);
    } else {
        const std::size_t comma = text.find(',');
        double azimuth = 0.0;
        double elevation = 0.0;
        if (comma == std::string::npos || !readNumber(text.substr(0, comma), azimuth) ||
            !readNumber(text.substr(comma + 1), elevation))
            throw UsageError("--view: '" + text +
                             "' is no view; give iso, +x, -x, +y, -y, +z, -z or "
                             "AZIMUTH,ELEVATION in degrees");
        if (std::abs(elevation) > 90.0)
            throw UsageError("--view: the elevation in '" + text +
                             "' is out of range; give -90 (from below) to 90 (from above)");
        view = viewFrom(azimuth, elevation);
    }
    view.name = text;
    return view;
}

View defaultView(const std::vector<Vec3>& points) {
    const Vec3 size = boxIn(viewFrom(-90.0, 90.0), points).size();
    std::array<int, 3> axes{2, 1, 0};
    std::stable_sort(axes.begin(), axes.end(),
                     [&](int a, int b) { return along(size, a) < along(size, b); });
    const bool isFlat = along(size, axes[0]) < 0.3 * along(size, axes[1]);
    if (!isFlat) return viewFrom(-60.0, 30.0);
    if (axes[0] == 1) return viewFrom(-70.0, 20.0);
    if (axes[0] == 0) return viewFrom(20.0, 20.0);
    return size.x >= size.y ? viewFrom(-90.0, 58.0) : viewFrom(0.0, 58.0);
}

ViewBox boxIn(const View& view, const std::vector<Vec3>& points) {
    if (points.empty()) return {};
    constexpr double far = std::numeric_limits<double>::infinity();
    ViewBox box{{far, far, far}, {-far, -far, -far}};
    for (const Vec3 point : points) {
        const Vec3 seen{dot(point, view.right), dot(point, view.up),
                        dot(point, view.towardsViewer)};
        box.low = {std::min(box.low.x, seen.x), std::min(box.low.y, seen.y),
                   std::min(box.low.z, seen.z)};
        box.high = {std::max(box.high.x, seen.x), std::max(box.high.y, seen.y),
                    std::max(box.high.z, seen.z)};
    }
    return box;
}

}  // namespace weldline
