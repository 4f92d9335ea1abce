#include <fmt/format.h>

#include <algorithm>

#include "Comparison.h"
#include "TextLayout.h"

namespace weldline {

namespace {

constexpr LineFate fates[] = {LineFate::Same, LineFate::Changed, LineFate::Moved, LineFate::Gone,
                              LineFate::New};

std::string countsText(const std::vector<ComparedLine>& lines) {
    std::string text;
    for (const LineFate fate : fates) {
        const auto count = std::count_if(lines.begin(), lines.end(), [&](const ComparedLine& line) {
            return line.fate == fate;
        });
        text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, nameOf(fate));
    }
    return text;
}

std::string resultText(const ResultToCompare& result) {
    const std::size_t lines = result.found.lines.lines.size();
    return fmt::format("{}: {} {}", result.file, lines, lines == 1 ? "line" : "lines");
}

template <class Text>
std::string ofLine(const WeldLine* line, Text text) {
    return line == nullptr ? "-" : text(*line);
}

std::string classText(const ComparedLine& line) {
    if (line.classChanged) return nameOf(line.before->kind) + "/" + nameOf(line.after->kind) + "*";
    return nameOf(line.before == nullptr ? line.after->kind : line.before->kind);
}

std::string row(const ComparedLine& line) {
    const auto id = [](const WeldLine& l) { return std::to_string(l.id); };
    const auto length = [](const WeldLine& l) { return fmt::format("{:.3g}", l.length); };
    const auto angle = [](const WeldLine& l) { return fmt::format("{:.1f}", l.smallestAngle); };
    return fmt::format(
        "{:>4}{:>5} {:<10}{:>9}{:>9}{:<1}{:>9}{:>9}{:<1}{:>10}  {}\n", ofLine(line.before, id),
        ofLine(line.after, id), classText(line), ofLine(line.before, length),
        ofLine(line.after, length), line.lengthChanged ? "*" : "", ofLine(line.before, angle),
        ofLine(line.after, angle), line.angleChanged ? "*" : "",
        line.before != nullptr && line.after != nullptr ? fmt::format("{:.3g}", line.distance)
                                                        : "-",
        nameOf(line.fate));
}

std::string rows(const std::vector<ComparedLine>& lines, bool style) {
    if (lines.empty()) return {};
    std::string text =
        "\n" +
        heading(fmt::format("{:>4}{:>5} {:<10}{:>9}{:>9} {:>9}{:>9} {:>10}  {}", "A", "B", "class",
                            "length A", "length B", "angle A", "angle B", "distance", "line is"),
                style) +
        "\n";
    bool anyMark = false;
    for (const ComparedLine& line : lines) {
        text += row(line);
        anyMark = anyMark || line.angleChanged || line.lengthChanged || line.classChanged;
    }
    if (anyMark)
        text +=
            "\n   * changed: the class, the length by more than a tenth, or the smallest\n"
            "     meeting angle by more than 5 degrees\n";
    return text;
}

}  // namespace

std::string comparisonTable(const Comparison& c, bool style) {
    std::string text = entry("A", resultText(c.a), style);
    text += entry("B", resultText(c.b), style);
    text += entry("Tolerance",
                  fmt::format("{:.4g}{}", c.tolerance,
                              c.toleranceGiven ? "" : " (twice the typical size of a cell)"),
                  style);
    text += entry("Lines", countsText(c.lines), style);
    return text + rows(c.lines, style);
}

}  // namespace weldline
