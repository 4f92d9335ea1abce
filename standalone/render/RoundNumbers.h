#pragma once

#include <string>

namespace weldline {

// Round numbers are 1, 2 and 5 times a power of ten.

// The largest round number that is not above `limit`, which is above 0.
double roundDown(double limit);

// The smallest round number that is not below `limit`, which is above 0.
double roundUp(double limit);

// A number as legends show it: six significant digits at most.
std::string legendNumber(double value);

}  // namespace weldline
