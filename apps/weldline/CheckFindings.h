#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fill/FillQuality.h"
#include "io/SeriesFill.h"
#include "mesh/MeshQuality.h"

namespace weldline {

// One thing that a result depends on.
struct Finding {
    std::string name;   // of the number, for programs
    std::string title;  // for people
    double value = 0.0;
    std::string text;         // the number in words
    bool worthALook = false;  // then the two below say why and what to do
    std::string consequence;
    std::string advice;
};

struct CheckedInput {
    std::string file;
    std::string field;  // with the fill time, or the phase fraction that it was made from
    int cells = 0;
    MeshQuality mesh;
    FillQuality fill;
    std::vector<int> layers;
    std::optional<SeriesFill> series;
    bool hasOutlets = false;
    Vec3 largestPocket;  // middles of cells, where there are any
    Vec3 latest;         // of the late cells
};

std::vector<Finding> findingsOf(const CheckedInput& input);

// `style` emphasises by terminal control sequences.
std::string findingsTable(const CheckedInput& input, const std::vector<Finding>& findings,
                          bool style);

// schema weldline-check/1
std::string findingsJson(const CheckedInput& input, const std::vector<Finding>& findings);

}  // namespace weldline
