#include "Picture.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <map>

#include "Document.h"
#include "base/Errors.h"

namespace weldline::accuracy {

namespace {

constexpr double kPlot = 300.0;   // edge of a panel's plot
constexpr double kMargin = 50.0;  // around it
constexpr double kLegend = 18.0;  // height of a line of the legend
constexpr double kBin = 10.0;     // degrees
constexpr std::array<const char*, 9> kColours{"#1b9e77", "#d95f02", "#7570b3", "#e7298a", "#66a61e",
                                              "#e6ab02", "#a6761d", "#666666", "#1f78b4"};

std::string number(double x) {
    return fixed(x, 1);
}

std::string open(double width, double height) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(width) + "\" height=\"" +
           number(height) + "\" font-family=\"sans-serif\" font-size=\"12\">\n" +
           "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
}

std::string text(double x, double y, const std::string& words, const std::string& anchor) {
    return "<text x=\"" + number(x) + "\" y=\"" + number(y) + "\" text-anchor=\"" + anchor + "\">" +
           words + "</text>\n";
}

std::string polyline(const std::vector<Point2>& points, const std::string& style) {
    std::string svg = "<polyline fill=\"none\" " + style + " points=\"";
    for (const Point2& p : points) svg += number(p[0]) + "," + number(p[1]) + " ";
    return svg + "\"/>\n";
}

std::string frame(double x, double y, double width, double height) {
    return "<rect x=\"" + number(x) + "\" y=\"" + number(y) + "\" width=\"" + number(width) +
           "\" height=\"" + number(height) + "\" fill=\"none\" stroke=\"#999\"/>\n";
}

// Median of the calculated angles per bin of the true angle, at the middle of the bin.
std::vector<Point2> medians(const std::vector<TrueLine::Sample>& samples) {
    std::map<int, std::vector<double>> bins;
    for (const TrueLine::Sample& s : samples)
        bins[static_cast<int>(s.truth / kBin)].push_back(s.result);
    std::vector<Point2> points;
    for (auto& [bin, results] : bins) {
        const auto middle = results.begin() + static_cast<std::ptrdiff_t>(results.size() / 2);
        std::nth_element(results.begin(), middle, results.end());
        points.push_back({(bin + 0.5) * kBin, *middle});
    }
    return points;
}

std::string anglePanel(const Panel& panel, double left) {
    const auto place = [&](Point2 p) {
        return Point2{left + kPlot * p[0] / 180.0, kMargin + kPlot * (1.0 - p[1] / 180.0)};
    };
    std::string svg = frame(left, kMargin, kPlot, kPlot) +
                      text(left + kPlot / 2, kMargin - 12, panel.title, "middle") +
                      text(left + kPlot / 2, kMargin + kPlot + 34, "true angle, degrees", "middle");
    for (int degrees = 0; degrees <= 180; degrees += 30) {
        const Point2 below = place({static_cast<double>(degrees), 0.0});
        const Point2 beside = place({0.0, static_cast<double>(degrees)});
        svg += text(below[0], below[1] + 16, std::to_string(degrees), "middle") +
               text(beside[0] - 6, beside[1] + 4, std::to_string(degrees), "end");
    }
    svg += polyline({place({0, 0}), place({180, 180})}, "stroke=\"black\" stroke-dasharray=\"4\"");
    for (std::size_t c = 0; c < panel.curves.size(); ++c) {
        std::vector<Point2> points = medians(panel.curves[c].samples);
        for (Point2& p : points) p = place(p);
        svg += polyline(points, std::string("stroke-width=\"2\" stroke=\"") +
                                    kColours[c % kColours.size()] + "\"");
    }
    return svg;
}

// Red over grey to blue.
std::string colourOf(double angle) {
    const double t = std::clamp(angle / 180.0, 0.0, 1.0);
    const auto channel = [](double x) { return std::to_string(static_cast<int>(255.0 * x)); };
    return "rgb(" + channel(0.9 - 0.8 * t) + "," + channel(0.15) + "," + channel(0.1 + 0.8 * t) +
           ")";
}

}  // namespace

std::string anglePicture(const std::vector<Panel>& panels) {
    const auto count = static_cast<double>(panels.size());
    const double legend = kLegend * static_cast<double>(panels.front().curves.size());
    const double below = kMargin + kPlot + kMargin;
    std::string svg = open(kMargin + count * (kPlot + kMargin), below + legend + 10);
    for (std::size_t p = 0; p < panels.size(); ++p)
        svg += anglePanel(panels[p], kMargin + static_cast<double>(p) * (kPlot + kMargin));
    for (std::size_t c = 0; c < panels.front().curves.size(); ++c) {
        const double y = below + kLegend * static_cast<double>(c);
        svg += polyline({{kMargin, y}, {kMargin + 30, y}},
                        std::string("stroke-width=\"2\" stroke=\"") +
                            kColours[c % kColours.size()] + "\"") +
               text(kMargin + 38, y + 4, panels.front().curves[c].name, "start");
    }
    return svg + "</svg>\n";
}

std::string mapPicture(const FrontCase& front, const std::vector<Map>& maps) {
    const double scale = kPlot / (front.high[0] - front.low[0]);
    const double height = scale * (front.high[1] - front.low[1]);
    const double step = kPlot + kMargin / 2;
    std::string svg = open(kMargin + static_cast<double>(maps.size()) * step, height + 2 * kMargin);
    for (std::size_t m = 0; m < maps.size(); ++m) {
        const double left = kMargin / 2 + static_cast<double>(m) * step;
        const auto place = [&](Point2 p) {
            return Point2{left + scale * (p[0] - front.low[0]),
                          kMargin + scale * (front.high[1] - p[1])};
        };
        svg += frame(left, kMargin, kPlot, height) +
               text(left + kPlot / 2, kMargin - 12, maps[m].title, "middle");
        std::vector<Point2> line;
        for (const LinePoint& p : front.line)
            if (p.angle <= kLargestAngle && p.place[0] >= front.low[0] &&
                p.place[0] <= front.high[0] && p.place[1] >= front.low[1] &&
                p.place[1] <= front.high[1])
                line.push_back(place(p.place));
        svg += polyline(line, "stroke=\"#bbb\" stroke-width=\"5\"");
        const Point2 centre = place({0, 0});
        if (front.holeRadius > 0.0)
            svg += "<circle cx=\"" + number(centre[0]) + "\" cy=\"" + number(centre[1]) +
                   "\" r=\"" + number(scale * front.holeRadius) +
                   "\" fill=\"#eee\" stroke=\"#999\"/>\n";
        for (const LinePoint& node : maps[m].nodes) {
            const Point2 p = place(node.place);
            svg += "<circle cx=\"" + number(p[0]) + "\" cy=\"" + number(p[1]) +
                   "\" r=\"1.6\" fill=\"" + colourOf(node.angle) + "\"/>\n";
        }
    }
    return svg + "</svg>\n";
}

void savePicture(const std::string& file, const std::string& svg) {
    std::ofstream stream(file);
    stream << svg;
    stream.close();
    if (!stream) throw RunError("picture '" + file + "' cannot be written");
}

}  // namespace weldline::accuracy
