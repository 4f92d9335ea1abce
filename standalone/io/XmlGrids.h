#pragma once

#include <string>
#include <vector>

#include "OpenDataSet.h"

namespace weldline {

// The grids of a .vtu file, one per piece; without a name where there is one piece. Throws
// InputError.
std::vector<Block> readXmlGrids(const std::string& file);

}  // namespace weldline
