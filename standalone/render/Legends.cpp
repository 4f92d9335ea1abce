#include "Legends.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Lettering.h"
#include "RoundNumbers.h"

namespace weldline {

namespace {

// In heights of a line of text, from the top of a legend.
constexpr double titleFoot = 1.0;
constexpr double barTop = 1.25;
constexpr double barBottom = 2.05;
constexpr double labelFoot = 3.2;

TextStyle titleStyle(double letter, const Palette& palette) {
    return {0.78 * letter, palette.text, false, TextAlign::Left};
}

TextStyle labelStyle(double letter, const Palette& palette, TextAlign align) {
    return {0.7 * letter, palette.faintText, false, align};
}

// A bar under a title; places on it are shares of its length.
class Scale {
  public:
    Scale(Canvas& canvas, const SheetBox& box, double width, double letter, const Palette& palette)
        : m_canvas(canvas), m_box(box), m_width(width), m_letter(letter), m_palette(palette) {}

    void title(const std::string& text) {
        writeText(m_canvas, text, m_box.left, below(titleFoot), titleStyle(m_letter, m_palette));
    }

    void part(double from, double to, Colour colour) {
        m_canvas.fill(at(from), below(barTop), at(to), below(barBottom), colour);
    }

    void tick(double share, const std::string& label) {
        const double width = std::max(1.0, 0.06 * m_letter);
        const double x = std::clamp(at(share), at(0.0) + 0.5 * width, at(1.0) - 0.5 * width);
        m_canvas.fill(x - 0.5 * width, below(barBottom), x + 0.5 * width, below(barBottom + 0.25),
                      m_palette.faintText);
        const TextAlign align = share == 0.0   ? TextAlign::Left
                                : share == 1.0 ? TextAlign::Right
                                               : TextAlign::Centre;
        writeText(m_canvas, label, at(share), below(labelFoot),
                  labelStyle(m_letter, m_palette, align));
    }

  private:
    double at(double share) const { return m_box.left + share * m_width; }
    double below(double lines) const { return m_box.top + lines * m_letter; }

    Canvas& m_canvas;
    const SheetBox& m_box;
    double m_width;
    double m_letter;
    const Palette& m_palette;
};

}  // namespace

void drawCaption(Canvas& canvas, const SheetLayout& layout, const Palette& palette,
                 const std::string& title, const std::string& subtitle) {
    const SheetBox& box = layout.caption;
    const TextStyle large{1.15 * layout.letter, palette.text, true, TextAlign::Left};
    const TextStyle small{0.82 * layout.letter, palette.faintText, false, TextAlign::Left};
    writeText(canvas, fitted(printable(title), box.width, large), box.left,
              box.top + 1.2 * layout.letter, large);
    writeText(canvas, fitted(subtitle, box.width, small), box.left, box.top + 2.4 * layout.letter,
              small);
}

void drawTimeLegend(Canvas& canvas, const SheetLayout& layout, const Palette& palette,
                    const TimeBands& bands, bool hasNotReached) {
    const SheetBox& box = layout.timeLegend;
    const double letter = layout.letter;
    const std::string note = "not reached";
    const TextStyle noteStyle = labelStyle(letter, palette, TextAlign::Left);
    const double noteWidth =
        hasNotReached ? std::max(1.2 * letter, textWidth(note, noteStyle)) + letter : 0.0;
    Scale scale(canvas, box, box.width - noteWidth, letter, palette);
    scale.title("fill time");
    const int count = bands.count();
    const int step = labelStep(count);
    for (int b = 0; b < count; ++b)
        scale.part(static_cast<double>(b) / count, (b + 1.0) / count,
                   timeColour((b + 0.5) / count));
    // The last edge has a number; one that came too near to it has none.
    for (int b = 0; b <= count; ++b)
        if (b == count || (b % step == 0 && b + step <= count))
            scale.tick(static_cast<double>(b) / count, legendNumber(bands.edges[b]));
    if (!hasNotReached) return;
    const double left = box.right() - noteWidth + letter;
    canvas.fill(left, box.top + barTop * letter, left + 1.2 * letter, box.top + barBottom * letter,
                palette.notReached);
    writeText(canvas, note, left, box.top + labelFoot * letter, noteStyle);
}

void drawAngleLegend(Canvas& canvas, const SheetLayout& layout, const Palette& palette) {
    const SheetBox& box = layout.angleLegend;
    Scale scale(canvas, box, box.width, layout.letter, palette);
    scale.title("meeting angle, degrees");
    for (int x = 0; x < box.width; ++x)
        scale.part(static_cast<double>(x) / box.width, (x + 1.0) / box.width,
                   angleColour(180.0 * (x + 0.5) / box.width));
    for (const int degrees : {0, 45, 90, 135, 180})
        scale.tick(degrees / 180.0, std::to_string(degrees));
}

void drawScaleBar(Canvas& canvas, const SheetLayout& layout, const Palette& palette, double pixel) {
    const SheetBox& box = layout.scaleBar;
    const double letter = layout.letter;
    const double most = std::min<double>(box.width, 12.0 * letter);
    const double length = roundDown(most * pixel);
    const double left = box.left;
    const double right = box.left + length / pixel;
    const double y = box.top + 0.5 * (barTop + barBottom) * letter;
    const double width = std::max(1.2, 0.12 * letter);
    writeText(canvas, "length", left, box.top + titleFoot * letter, titleStyle(letter, palette));
    const double half = 0.5 * width;
    canvas.fill(left, y - half, right, y + half, palette.text);
    for (const double end : {left + half, right - half})
        canvas.fill(end - half, y - 0.4 * letter, end + half, y + 0.4 * letter, palette.text);
    writeText(canvas, legendNumber(length), 0.5 * (left + right), box.top + labelFoot * letter,
              labelStyle(letter, palette, TextAlign::Centre));
}

void drawViewNotes(Canvas& canvas, const SheetBox& box, double letter, const Palette& palette,
                   const View& view) {
    const TextStyle style = labelStyle(letter, palette, TextAlign::Left);
    if (!view.name.empty())
        writeText(canvas, fitted(view.name, box.width, style), box.left, box.top + letter, style);
    struct Axis {
        Vec3 direction;
        const char* name;
    };
    const std::array<Axis, 3> axes{{{{1, 0, 0}, "x"}, {{0, 1, 0}, "y"}, {{0, 0, 1}, "z"}}};
    const double length = 1.5 * letter;
    const double x = box.left + 2.1 * letter;
    const double y = box.bottom() - 2.1 * letter;
    for (const Axis& axis : axes) {
        const double dx = dot(axis.direction, view.right);
        const double dy = -dot(axis.direction, view.up);
        // An axis towards the viewer or away from him is a point.
        if (std::hypot(dx, dy) < 0.2) continue;
        canvas.stroke(x, y, x + length * dx, y + length * dy, std::max(1.2, 0.09 * letter),
                      palette.faintText);
        const double beyond = length + 0.45 * letter;
        // An axis that looks short may lie on another: its name stands beside it.
        const double aside = std::hypot(dx, dy) < 0.75 ? 0.5 * letter : 0.0;
        writeText(canvas, axis.name, x + beyond * dx - aside, y + beyond * dy + 0.4 * letter,
                  labelStyle(letter, palette, TextAlign::Centre));
    }
}

}  // namespace weldline
