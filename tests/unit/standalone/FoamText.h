#pragma once

#include <functional>
#include <string>

namespace weldline::test {

// OpenFOAM cases as text.

// Gets the name of a file in the case and its content.
using PutFile = std::function<void(const std::string&, const std::string&)>;

// Two boxes side by side as in boxRowPoints, the first from x = start; the face between them comes
// first, then those of the patches gate (left end), vent (right end) and walls.
void putFoamMesh(const PutFile& put, double start = 0.0);

void putFoamControl(const PutFile& put);

// A scalar field on the two boxes.
std::string foamField(const std::string& name, const std::string& values);

}  // namespace weldline::test
