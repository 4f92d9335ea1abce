#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LineShapes.h"
#include "WeldLines.h"

namespace weldline {

// A line whose mean meeting angle is below this is a weld, else a meld line; degrees.
inline constexpr double kWeldLimit = 135.0;

// "weld" or "meld".
std::string nameOf(LineClass kind);

// Adds to each line its class and, out of the shapes that rank 0 has, its lengths. Collective.
void addShapes(Ranks& ranks, const std::vector<LineShape>& shapes, double weldLimit,
               WeldLines& lines);

// Adds to each line what it has of a field: of the values of the reached cells that have one of its
// nodes, NaN left out. Means are sums over the ranks in their order. Collective.
void addCarried(Ranks& ranks, const FvMesh& mesh, const std::vector<float>& fillTime,
                const std::string& name, const std::vector<double>& cellValues, WeldLines& lines);

// Lines below either limit are noise.
struct LineFilter {
    double minLength = 0.0;
    std::int64_t minNodes = 1;
};

struct DroppedLines {
    std::int64_t lines = 0;
    std::int64_t nodes = 0;
};

// Takes the noise out; the other lines keep their ids.
DroppedLines dropNoise(const LineFilter& filter, WeldLines& lines);

}  // namespace weldline
