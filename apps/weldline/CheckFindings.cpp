#include "CheckFindings.h"

#include <fmt/format.h>

#include <algorithm>

#include "TextLayout.h"

namespace weldline {

namespace {

// Beyond this, fill times gather at the written times; see docs/decisions/what-check-tells.md.
constexpr double mostCellsPerStep = 1.0;

// Keeps consequence and advice only where they are needed.
Finding judged(Finding finding, bool worthALook) {
    finding.worthALook = worthALook;
    if (!worthALook) finding.consequence = finding.advice = "";
    return finding;
}

void addMesh(const MeshQuality& mesh, std::vector<Finding>& findings) {
    findings.push_back(
        judged({"nonOrthogonality", "Non-orthogonality", mesh.worstNonOrthogonality,
                fmt::format("at most {:.1f} degrees, {:.1f} in the mean; {} faces above 70",
                            mesh.worstNonOrthogonality, mesh.meanNonOrthogonality, mesh.steepFaces),
                false, "the gradient across these faces is bent, and angles beside them with it",
                "mesh these places anew, or distrust single nodes there"},
               mesh.steepFaces > 0));
    findings.push_back(
        judged({"skewness", "Skewness", mesh.worstSkewness,
                fmt::format("at most {:.2f}", mesh.worstSkewness), false,
                "face values are interpolated beside the face, which makes angles noisy",
                "mesh these places anew; more smoothing (nSmooth_afterGrad) helps a little"},
               mesh.worstSkewness > 1.0));
    findings.push_back(judged(
        {"volumeRatio", "Volume ratio", mesh.worstVolumeRatio,
         fmt::format("neighbours differ at most {:.1f} times; {} faces above 5",
                     mesh.worstVolumeRatio, mesh.unevenFaces),
         false, "methods 1 to 3 pass over pairs below VolumeFilter (0.2): lines may have gaps",
         "grow cells more slowly, or lower VolumeFilter with --set"},
        mesh.unevenFaces > 0));
}

void addFilled(const CheckedInput& input, std::vector<Finding>& findings) {
    const FillQuality& fill = input.fill;
    findings.push_back(
        judged({"filledVolume", "Filled", fill.filledVolume,
                fmt::format("{:.2f} % of the volume, {} of {} cells", 100.0 * fill.filledVolume,
                            fill.reached, input.cells),
                false,
                "the default gradient takes the mark of an empty cell for a fill time: false lines "
                "beside empty cells",
                "analyze with --trapped-air close; if the run was ended early, let it go on"},
               fill.reached < input.cells));
}

std::string coordinates(Vec3 place) {
    return fmt::format("{:.4g}, {:.4g}, {:.4g}", place.x, place.y, place.z);
}

void addTrappedAir(const CheckedInput& input, std::vector<Finding>& findings) {
    const FillQuality& fill = input.fill;
    const char* const away = input.hasOutlets ? "away from vents" : "no vents are known";
    findings.push_back(judged(
        {"pockets", "Unfilled pockets", static_cast<double>(fill.pockets.size()),
         fill.pockets.empty()
             ? "none"
             : fmt::format("{}, {}; the largest has {} cells, at {}", fill.pockets.size(), away,
                           fill.pockets.front().cells, coordinates(input.largestPocket)),
         false, "air is trapped there: lines end at the pockets",
         "vent these places; name the vents with --outlet if the part has them"},
        !fill.pockets.empty()));
    findings.push_back(judged(
        {"lateCells", "Late cells", static_cast<double>(fill.lateCells.size()),
         fill.lateCells.empty()
             ? "none"
             : fmt::format("{} later than all cells around them, {}; the latest at {}",
                           fill.lateCells.size(), away, coordinates(input.latest)),
         false, "streams close in on them from all sides: trapped air, or specks of false lines",
         "vent these places, or leave specks out with --min-nodes or --min-length"},
        !fill.lateCells.empty()));
}

void addNoise(const CheckedInput& input, std::vector<Finding>& findings) {
    constexpr double fewCells = 0.001;
    constexpr double gentleTurn = 15.0;
    const FillQuality& fill = input.fill;
    const double early = static_cast<double>(fill.earlyCells.size()) / std::max(fill.reached, 1);
    findings.push_back(
        judged({"earlyCells", "Early cells", early,
                fmt::format("{} ({:.2f} %) earlier than all cells around them, away from inlets",
                            fill.earlyCells.size(), 100.0 * early),
                false, "the fill time is noisy, or an inlet is not known: specks of false lines",
                "name all inlets with --inlet; smooth more (nSmooth_beforeGrad)"},
               early > fewCells));
    findings.push_back(
        judged({"turn", "Turn of the flow", fill.medianTurn,
                fmt::format("{:.1f} degrees from cell to cell in the median", fill.medianTurn),
                false, "the gradient is noisy, and angles near 180 degrees say nothing",
                "smooth more (nSmooth_afterGrad), or look at lines below --limit 135 only"},
               fill.medianTurn > gentleTurn));
}

void addLayers(const std::vector<int>& layers, std::vector<Finding>& findings) {
    constexpr double enough = 3.0;
    if (layers.empty()) return;
    const std::vector<double> values(layers.begin(), layers.end());
    const double median = quantile(values, 0.5);
    findings.push_back(
        judged({"layers", "Layers", median,
                fmt::format("{:g} cells through the part behind half of the walls, {:g} behind a "
                            "tenth",
                            median, quantile(values, 0.1)),
                false, "flow through the thickness is not seen: lines are those of the mean flow",
                "use three cells or more through the thickness"},
               median < enough));
}

void addSeries(const CheckedInput& input, std::vector<Finding>& findings) {
    if (!input.series || input.fill.cellTime <= 0.0) return;
    const double cells = input.series->largestStep / input.fill.cellTime;
    const std::string count = cells < 100.0 ? fmt::format("about {:.1f}", cells) : "100 or more";
    findings.push_back(
        judged({"cellsPerStep", "Time steps", cells,
                fmt::format("the front passes {} cells in the largest step, {:g}", count,
                            input.series->largestStep),
                false, "fill times gather at the written times, and angles follow them",
                "write more times, so that the front passes less than one cell between two"},
               cells > mostCellsPerStep));
}

}  // namespace

std::vector<Finding> findingsOf(const CheckedInput& input) {
    std::vector<Finding> findings;
    addMesh(input.mesh, findings);
    addFilled(input, findings);
    addTrappedAir(input, findings);
    addNoise(input, findings);
    addLayers(input.layers, findings);
    addSeries(input, findings);
    return findings;
}

std::string findingsTable(const CheckedInput& input, const std::vector<Finding>& findings,
                          bool style) {
    constexpr std::size_t indent = 22;
    std::string text = entry("  Input", input.file, style, indent);
    text += entry("  Field", input.field, style, indent);
    int looks = 0;
    for (const Finding& finding : findings) {
        looks += finding.worthALook ? 1 : 0;
        text +=
            entry((finding.worthALook ? "! " : "  ") + finding.title, finding.text, style, indent);
        if (!finding.worthALook) continue;
        text += entry("", "means: " + finding.consequence, false, indent);
        text += entry("", "do: " + finding.advice, false, indent);
    }
    return text + (looks == 0 ? "\nNothing stands out.\n"
                              : fmt::format("\n{} of {} findings are worth a look (!).\n", looks,
                                            findings.size()));
}

}  // namespace weldline
