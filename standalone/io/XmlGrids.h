#pragma once

#include <string>
#include <vector>

#include "OpenDataSet.h"

namespace weldline {

// The grids of a .vtu file, one per piece; without a name where there is one piece. Throws
// InputError.
std::vector<Block> readXmlGrids(const std::string& file);

// The same grids with nothing but this cell array, where they have it: no points, no cells.
std::vector<Block> readXmlField(const std::string& file, const std::string& field);

}  // namespace weldline
