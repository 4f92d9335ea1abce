#include <fmt/format.h>

#include <algorithm>

#include "Explanation.h"
#include "TextLayout.h"

namespace weldline {

namespace {

constexpr std::size_t shownPairs = 60;

std::string placeText(Vec3 p) {
    return fmt::format("x {:.6g}, y {:.6g}, z {:.6g}", p.x, p.y, p.z);
}

double shown(double angle) {
    return angle < 0.0 ? 0.0 : angle;
}

std::string angleText(const Explanation& e) {
    std::string text = fmt::format(
        "{:.1f} degrees, {}", shown(e.storedAngle),
        e.line > 0 ? "in weld line " + std::to_string(e.line) : std::string("in no weld line"));
    if (e.storedAngle != e.node.angle)
        text += fmt::format("; the calculation gives {:.6g} now", e.node.angle);
    return text;
}

std::string methodText(const Settings& s) {
    return fmt::format("{}: {}; angles count below {:g} degrees", s.method,
                       s.method == 1 ? "every two cells at the node, at the node"
                                     : "every two cells that share a face, at the face's centre",
                       s.truncateAngle);
}

std::string noteOf(const CellAtNode& cell) {
    if (cell.fillTime <= 0.0) return "  no melt";
    return cell.isFlat ? "  flat" : "";
}

std::string cellRows(const std::vector<CellAtNode>& cells, bool style) {
    std::string text =
        "\n" +
        heading(fmt::format("{:>8}{:>10}{:>11}{:>11}{:>11}{:>11}{:>9}", "cell", "fill time",
                            "gradient x", "y", "z", "length", "boundary"),
                style) +
        "\n";
    for (const CellAtNode& c : cells)
        text += fmt::format("{:>8}{:>10.5g}{:>11.4g}{:>11.4g}{:>11.4g}{:>11.4g}{:>9}{}\n", c.cell,
                            c.fillTime, c.gradient.x, c.gradient.y, c.gradient.z, norm(c.gradient),
                            c.boundaryFaces, noteOf(c));
    return text;
}

// Pairs that meet come first where not all are shown.
std::string pairRows(const std::vector<PairAtNode>& pairs, bool style) {
    if (pairs.empty()) return "\nNo two cells at this node are compared.\n";
    std::string text =
        "\n" +
        heading(fmt::format("{:>8}{:>8}{:>8}  {}", "cell", "cell", "angle", "streams"), style) +
        "\n";
    std::vector<const PairAtNode*> rows;
    rows.reserve(pairs.size());
    for (const PairAtNode& pair : pairs) rows.push_back(&pair);
    if (rows.size() > shownPairs)
        std::stable_partition(rows.begin(), rows.end(), [](const PairAtNode* pair) {
            return pair->judgement.refusal == Refusal::None;
        });
    for (std::size_t i = 0; i < std::min(rows.size(), shownPairs); ++i) {
        const PairAtNode& pair = *rows[i];
        text += fmt::format("{:>8}{:>8}{:>8.1f}{} {}\n", pair.a, pair.b,
                            shown(180.0 - pair.judgement.angle), pair.isKept ? '*' : ' ',
                            describe(pair));
    }
    if (rows.size() > shownPairs)
        text += fmt::format("          and {} more; --json lists them\n", rows.size() - shownPairs);
    return text;
}

}  // namespace

std::string explanationTable(const Explanation& e, bool style) {
    std::string text = entry("Result", e.file, style);
    text += entry(
        "Node", fmt::format("{} of {}: {}", e.node.node, e.nodes, placeText(e.node.place)), style);
    text += entry("Angle", angleText(e), style);
    text += entry("Because", describe(e.node), style);
    text += entry("Calculation", describeStages(stagesOf(e.settings)), style);
    text += entry("Method", methodText(e.settings), style);
    text += entry("Numbers",
                  "gradients of a second run of the library; the tests are asked anew by this "
                  "program",
                  style);
    return text + cellRows(e.node.cells, style) + pairRows(e.node.pairs, style);
}

}  // namespace weldline
