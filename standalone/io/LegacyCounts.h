#pragma once

#include <string>

namespace weldline {

// VTK's legacy reader believes every count, and a count of arrays that there are not keeps it busy
// for hours. Throws InputError where a legacy file announces more points, cells, values or arrays
// than it has bytes; each takes at least one. The same where node lists in text are longer than the
// line before them says: VTK writes beyond its array then.
void checkLegacyCounts(const std::string& file);

}  // namespace weldline
