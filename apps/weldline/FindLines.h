#pragma once

#include <string>
#include <vector>

#include "Arguments.h"
#include "bind/RankPart.h"
#include "results/LineDetails.h"
#include "results/LineShapes.h"
#include "results/PatchPlaces.h"

namespace weldline {

// A field whose values the weld lines get; one value per cell of this rank.
struct CarriedField {
    std::string name;
    std::vector<double> values;
};

// What the weld lines follow from; all borrowed, of this rank.
struct LineSources {
    const FvMesh& mesh;
    const PatchPlaces& patches;
    const std::vector<float>& fillTime;   // per cell, exactly 0 where the melt did not come
    const std::vector<Vec3>& directions;  // per cell
    const std::vector<double>& angles;    // per node, degrees
    const std::vector<CarriedField>& carried;
};

struct FoundLines {
    WeldLines lines;
    DroppedLines dropped;
    std::vector<LineShape> shapes;  // of all lines, also those dropped; rank 0 has them
    LineMesh mesh;                  // the same
};

// From node angles to weld lines with all that tables tell of them. Collective.
FoundLines findLines(const RankPart& part, const LineSources& sources, const LineOptions& options);

}  // namespace weldline
