#pragma once

#include <vector>

#include "bind/RecordedArrays.h"
#include "mesh/Vec3.h"
#include "settings/Settings.h"

namespace weldline {

// What the angle methods of the library read of a cell, one value per cell.
struct LibraryFields {
    std::vector<float> fillTime;    // as loaded
    std::vector<double> smoothed;   // the fill time after its smoothing
    std::vector<Vec3> gradient;     // of the set that is compared, after its smoothing
    std::vector<double> steepness;  // length of the gradient before that; of several sets the
                                    // smallest
    double flatLimit = 0.0;         // gradients shorter than this count as no flow
};

// Whether the library found a cell's gradient too short to tell a direction.
bool isFlat(const LibraryFields& fields, int cell);

// The fields behind a run with these settings, out of what the run handed to its exchange.
// `secondSet`: the host asks for the second gradient set, where there is one. Throws RunError when
// the arrays are not those of such a run.
LibraryFields libraryFields(const RecordedArrays& arrays, const std::vector<float>& fillTime,
                            const Settings& settings, bool secondSet);

}  // namespace weldline
