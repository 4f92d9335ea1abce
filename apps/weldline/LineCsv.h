#pragma once

#include <string>

#include "results/WeldLines.h"

namespace weldline {

// The table of the weld lines as comma-separated values, one line of text each below the names of
// the columns: id, class, nodes, lengths, angles in degrees, times, box, centroid, nearest patch,
// and for each carried field its smallest, mean and largest value. What a line does not have is
// left empty; lengths and times are in the data set's units.
std::string lineCsv(const WeldLines& lines);

}  // namespace weldline
