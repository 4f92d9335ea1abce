#include "LineDetails.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "bind/FillTime.h"
#include "comm/Messages.h"

namespace weldline {

namespace {

struct Lengths {
    int id = 0;
    double length = 0.0;
    double branchLength = 0.0;
    double skinLength = 0.0;
};

// Sums of a field over the cells round a line.
struct FieldSum {
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
    double sum = 0.0;
    std::int64_t cells = 0;

    void add(const FieldSum& more) {
        smallest = std::min(smallest, more.smallest);
        largest = std::max(largest, more.largest);
        sum += more.sum;
        cells += more.cells;
    }
};

std::vector<FieldSum> sumsHere(const FvMesh& mesh, const std::vector<float>& fillTime,
                               const std::vector<double>& values, const WeldLines& lines) {
    std::vector<FieldSum> sums(lines.lines.size());
    std::vector<int> around;
    for (int c = 0; c < mesh.cellCount(); ++c) {
        if (!isReached(fillTime[c]) || !std::isfinite(values[c])) continue;
        around.clear();
        for (const int n : mesh.cellNodes[c])
            if (lines.nodeLine[n] > 0) around.push_back(lines.nodeLine[n]);
        std::sort(around.begin(), around.end());
        around.erase(std::unique(around.begin(), around.end()), around.end());
        for (const int line : around)
            sums[static_cast<std::size_t>(line) - 1].add({values[c], values[c], values[c], 1});
    }
    return sums;
}

}  // namespace

std::string nameOf(LineClass kind) {
    return kind == LineClass::Weld ? "weld" : "meld";
}

void addShapes(Ranks& ranks, const std::vector<LineShape>& shapes, double weldLimit,
               WeldLines& lines) {
    std::vector<Lengths> lengths;
    lengths.reserve(shapes.size());
    for (const LineShape& shape : shapes)
        lengths.push_back({shape.id, shape.length, shape.branchLength, shape.skinLength});
    for (const Lengths& of : fromBytes<Lengths>(broadcast(ranks, toBytes(lengths)))) {
        WeldLine& line = lines.lines[static_cast<std::size_t>(of.id) - 1];
        line.length = of.length;
        line.branchLength = of.branchLength;
        line.skinLength = of.skinLength;
    }
    for (WeldLine& line : lines.lines)
        line.kind = line.meanAngle < weldLimit ? LineClass::Weld : LineClass::Meld;
}

void addCarried(Ranks& ranks, const FvMesh& mesh, const std::vector<float>& fillTime,
                const std::string& name, const std::vector<double>& cellValues, WeldLines& lines) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    std::vector<FieldSum> sums(lines.lines.size());
    const Bytes own = toBytes(sumsHere(mesh, fillTime, cellValues, lines));
    for (const Bytes& message : gatherToAll(ranks, own)) {
        const auto others = fromBytes<FieldSum>(message);
        for (std::size_t l = 0; l < sums.size(); ++l) sums[l].add(others[l]);
    }
    for (std::size_t l = 0; l < sums.size(); ++l) {
        CarriedValue value{name, none, none, none};
        if (sums[l].cells > 0)
            value = {name, sums[l].smallest, sums[l].sum / static_cast<double>(sums[l].cells),
                     sums[l].largest};
        lines.lines[l].carried.push_back(std::move(value));
    }
}

DroppedLines dropNoise(const LineFilter& filter, WeldLines& lines) {
    DroppedLines dropped;
    std::vector<bool> isNoise(lines.lines.size() + 1, false);
    for (const WeldLine& line : lines.lines) {
        if (line.length >= filter.minLength && line.nodeCount >= filter.minNodes) continue;
        isNoise[static_cast<std::size_t>(line.id)] = true;
        ++dropped.lines;
        dropped.nodes += line.nodeCount;
    }
    std::erase_if(lines.lines,
                  [&](const WeldLine& line) { return isNoise[static_cast<std::size_t>(line.id)]; });
    for (int& line : lines.nodeLine)
        if (isNoise[static_cast<std::size_t>(line)]) line = 0;
    lines.weldNodes -= dropped.nodes;
    return dropped;
}

}  // namespace weldline
