// A filling that stops before the plate is full: no streams meet, so every weld node is wrong.

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>

#include "CaseMesh.h"
#include "Study.h"

namespace weldline::accuracy {

namespace {

// Fill times of one point source, 0 beyond the way that the melt has come.
std::vector<float> shortShotTimes(const FrontCase& plate, const CaseMesh& mesh) {
    const double last = plate.arrival({plate.high[0], plate.high[1]});
    std::vector<float> times = arrivalTimes(plate, mesh, 0.0);
    for (float& time : times)
        if (time > 0.6 * last) time = 0.0F;
    return times;
}

FrontCase oneSource() {
    FrontCase plate = twoSources();
    const Point2 corner{plate.low[0] - 1.0, plate.low[1] - 1.0};
    plate.arrival = [corner](Point2 p) {
        return 0.05 + std::hypot(p[0] - corner[0], p[1] - corner[1]) / kFrontSpeed;
    };
    plate.line.clear();
    return plate;
}

}  // namespace

void studyShortShot(const Runner& runner, Document& document) {
    const std::vector<Scheme> schemes = comparedSchemes();
    const FrontCase plate = oneSource();
    std::vector<std::vector<std::string>> rows;
    rows.reserve(schemes.size());
    for (const Scheme& scheme : schemes) rows.push_back({scheme.name, scheme.gradient});
    std::vector<std::string> head{"scheme", "gradient"};
    for (const CellShape shape : kCellShapes) {
        std::cerr << "short shot, " << nameOf(shape) << "\n";
        head.push_back(nameOf(shape));
        head.emplace_back("smallest angle");
        const CaseMesh mesh = meshOf(plate, shape, kMiddleSize);
        const std::vector<float> times = shortShotTimes(plate, mesh);
        for (std::size_t s = 0; s < schemes.size(); ++s) {
            const Run run = runner.run(mesh.mesh, mesh.groups, times, schemes[s]);
            const auto welds = std::count_if(run.angles.begin(), run.angles.end(),
                                             [](double angle) { return angle < 180.0; });
            const double smallest = *std::min_element(run.angles.begin(), run.angles.end());
            const double none = std::numeric_limits<double>::quiet_NaN();
            rows[s].push_back(std::to_string(welds));
            rows[s].push_back(fixed(welds > 0 ? smallest : none, 0));
        }
    }
    Table table(head);
    for (const std::vector<std::string>& row : rows) table.add(row);
    document.put("short-shot", table.markdown());
}

}  // namespace weldline::accuracy
