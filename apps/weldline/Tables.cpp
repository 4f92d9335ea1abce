#include "Tables.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "AutoGroups.h"
#include "TextLayout.h"

namespace weldline {

namespace {

constexpr std::size_t shownLines = 20;  // rows of the table of weld lines
constexpr std::size_t shownTimes = 8;   // at either end of a long list of times

template <class List, class Text>
std::string joined(const List& list, Text text, const char* separator = ", ") {
    std::string result;
    for (const auto& item : list) result += (result.empty() ? "" : separator) + text(item);
    return result;
}

std::string boxText(Vec3 low, Vec3 high) {
    return fmt::format("x {:.6g} to {:.6g}, y {:.6g} to {:.6g}, z {:.6g} to {:.6g}", low.x, high.x,
                       low.y, high.y, low.z, high.z);
}

// "wall 4622 (walls, endWalls), inlet 60 (gate)"
std::string groupsText(const std::vector<BoundaryGroups::PatchSummary>& patches) {
    constexpr std::array<GroupKind, 4> kinds{GroupKind::Wall, GroupKind::Inlet, GroupKind::Outlet,
                                             GroupKind::Symmetry};
    return joined(kinds, [&](GroupKind kind) {
        long long faces = 0;
        std::vector<std::string> names;
        for (const auto& patch : patches) {
            if (patch.kind != kind) continue;
            faces += patch.faces;
            names.push_back(patch.name == "(no patch)" ? "no patch" : patch.name);
        }
        const std::string list = joined(names, [](const std::string& name) { return name; });
        return fmt::format("{} {}{}", nameOf(kind), faces, list.empty() ? "" : " (" + list + ")");
    });
}

std::string settingsText(const Settings& s) {
    return fmt::format(
        "WeldlingAngleMethod={} nSmooth_beforeGrad={} nSmooth_afterGrad={} nGrad={} "
        "TruncateAngle={:g} BoundaryAngle={:g} GradValueFilterPara={:g} VolumeFilter={:g} "
        "GradMethodMFT={}",
        s.method, s.smoothBefore, s.smoothAfter, s.gradientIterations, s.truncateAngle,
        s.boundaryAngle, s.gradientFilter, s.volumeFilter, s.gradientMethod);
}

std::string weldLineRows(const WeldLines& lines, bool style) {
    if (lines.lines.empty()) return {};
    std::string text = "\n" +
                       heading(fmt::format("{:>4} {:<5}{:>7}{:>9}{:>9}{:>7}{:>9}{:>10}{:>10}{:>9}",
                                           "line", "class", "nodes", "length", "smallest", "mean",
                                           "forms at", "centre x", "y", "z"),
                               style) +
                       "\n";
    const std::size_t shown = std::min(lines.lines.size(), shownLines);
    for (std::size_t i = 0; i < shown; ++i) {
        const WeldLine& line = lines.lines[i];
        text += fmt::format("{:4} {:<5}{:7}{:9.3g}{:9.1f}{:7.1f}{:9.4g}{:10.3g}{:10.3g}{:9.3g}\n",
                            line.id, nameOf(line.kind), line.nodeCount, line.length,
                            line.smallestAngle, line.meanAngle, line.firstTime, line.centroid.x,
                            line.centroid.y, line.centroid.z);
    }
    std::size_t hidden = 0;
    for (std::size_t i = shown; i < lines.lines.size(); ++i)
        hidden += static_cast<std::size_t>(lines.lines[i].nodeCount);
    if (hidden > 0)
        text += fmt::format("      and {} smaller ones with {} nodes in all; --json lists them\n",
                            lines.lines.size() - shown, hidden);
    return text;
}

std::string weldLinesText(const Summary& s) {
    const auto& lines = s.weldLines.lines;
    const std::string below =
        s.lineOptions.limit < 180.0 ? fmt::format(" below {:g} degrees", s.lineOptions.limit) : "";
    if (lines.empty()) return "none: no streams meet" + below;
    const auto smallest = std::min_element(
        lines.begin(), lines.end(),
        [](const WeldLine& a, const WeldLine& b) { return a.smallestAngle < b.smallestAngle; });
    return fmt::format("{} with {} nodes{}; smallest meeting angle {:.1f} degrees (head-on: 0)",
                       lines.size(), s.weldLines.weldNodes, below, smallest->smallestAngle);
}

std::string outputEntries(const Outputs& outputs, bool style) {
    std::string text;
    const auto add = [&](const char* label, const std::string& file) {
        if (!file.empty() && file != "-") text += entry(label, file, style);
    };
    add("Result", outputs.result);
    add("JSON", outputs.json);
    add("Control file", outputs.control);
    add("Trace", outputs.trace);
    add("Lines", outputs.lines);
    add("CSV", outputs.csv);
    return text.empty() ? text : "\n" + text;
}

std::string timesText(const std::vector<double>& times) {
    const auto text = [](double time) { return fmt::format("{:g}", time); };
    if (times.size() <= 2 * shownTimes + 1) return joined(times, text);
    const std::vector<double> first(times.begin(), times.begin() + shownTimes);
    const std::vector<double> last(times.end() - shownTimes, times.end());
    return fmt::format("{} ... {} ({} times)", joined(first, text), joined(last, text),
                       times.size());
}

std::string patchRows(const std::vector<BoundaryGroups::PatchSummary>& groups, bool style) {
    if (groups.empty())
        return "\n" + entry("Patches", "none: every boundary face would be taken as wall", style);
    std::string text =
        "\n" + heading(fmt::format("{:<32}{:>10}  {}", "Patch", "faces", "group"), style) + "\n";
    for (const auto& patch : groups)
        text += fmt::format("{:<32}{:>10}  {}\n", patch.name, patch.faces, nameOf(patch.kind));
    return text;
}

std::string arrayRows(const std::vector<DataSetInfo::Array>& arrays, bool style) {
    if (arrays.empty()) return "\n" + entry("Arrays", "none", style);
    std::string text = "\n" +
                       heading(fmt::format("{:<28}{:<8}{:<9}{:>10}{:>12}{:>12}", "Array", "on",
                                           "type", "components", "smallest", "largest"),
                               style) +
                       "\n";
    for (const auto& array : arrays)
        text += fmt::format("{:<28}{:<8}{:<9}{:>10}{:>12.5g}{:>12.5g}\n", array.name, array.where,
                            array.type, array.components, array.minimum, array.maximum);
    return text;
}

std::string countsText(const std::vector<DataSetInfo::Count>& counts) {
    return joined(counts, [](const DataSetInfo::Count& item) {
        return fmt::format("{} {}", item.count, item.name);
    });
}

}  // namespace

std::string summaryTable(const Summary& s, bool style) {
    std::string text = entry("Input", s.input, style);
    text += entry("Fill time",
                  fmt::format("{}{}: {:.6g} to {:.6g} in {} of {} cells", s.field,
                              s.time ? fmt::format(" at time {:g}", *s.time) : "", s.fill.earliest,
                              s.fill.latest, s.fill.reached, s.cells),
                  style);
    text += entry("Mesh",
                  fmt::format("{}; {} nodes, {} inner and {} boundary faces",
                              joined(s.kinds,
                                     [](const Summary::Kind& kind) {
                                         return fmt::format("{} {}", kind.cells, kind.name);
                                     }),
                              s.nodes, s.innerFaces, s.boundaryFaces),
                  style);
    text += entry("Box", boxText(s.low, s.high) + fmt::format("; volume {:.6g}", s.volume), style);
    text += entry("Units", unitsText(s.scale), style);
    text += entry("Boundary", groupsText(s.patches), style);
    text += entry("Calculation", describeStages(stagesOf(s.settings)), style);
    text += entry("Settings", settingsText(s.settings), style);
    text += entry("Weld lines", weldLinesText(s), style);
    return text + weldLineRows(s.weldLines, style) + outputEntries(s.outputs, style);
}

std::string infoTable(const DataSetInfo& info,
                      const std::vector<BoundaryGroups::PatchSummary>& groups,
                      const Proposal& proposal, bool style) {
    std::string text = entry("File", info.file, style);
    text += entry("Format", info.format, style);
    text += entry(
        "Cells",
        fmt::format("{} ({}); {} points", info.cells, countsText(info.cellShapes), info.points),
        style);
    text += entry("Box", boxText(info.low, info.high), style);
    if (!info.blocks.empty()) text += entry("Blocks", countsText(info.blocks), style);
    text += entry("Times", info.times.empty() ? "none" : timesText(info.times), style);
    text += patchRows(groups, style);
    for (const MadePatch& made : proposal.patches)
        text += "\n" + entry("Proposal",
                             "no patch name tells " + nameOf(made.kind) +
                                 "s; 'weldline analyze "
                                 "--auto-groups' takes " +
                                 describe(made),
                             style);
    if (!proposal.patches.empty() && proposal.series)
        text += entry("Fill time", describe(*proposal.series), style);
    return text + arrayRows(info.arrays, style);
}

std::string controlTable(const std::string& file, const ControlReading& reading, bool style) {
    constexpr std::size_t lineColumns = 8;
    std::string text = entry("File", file, style) + "\n";
    for (const LineEffect& line : reading.lines) {
        if (!line.inSection && line.effects.empty()) continue;
        text += fmt::format("{:>5}{} {}\n", line.line, line.surprising ? " !" : "  ",
                            line.piece > 1 ? "(continued) " + line.text : line.text);
        for (const std::string& effect : line.effects)
            text += entry(std::string(lineColumns, ' ') + "-", effect, false, lineColumns + 2);
    }
    if (std::any_of(reading.lines.begin(), reading.lines.end(),
                    [](const LineEffect& line) { return line.surprising; }))
        text += "\n    ! the line does something else than it seems to say\n";
    for (const std::string& warning : reading.warnings)
        text += "\n" + entry("Note", warning, style);
    text += "\n" + entry("In force", settingsText(reading.settings), style);
    return text + entry("Calculation", describeStages(stagesOf(reading.settings)), style);
}

}  // namespace weldline
