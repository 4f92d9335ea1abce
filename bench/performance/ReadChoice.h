#pragma once

#include "MeshCase.h"

namespace weldline::performance {

inline constexpr const char* kChoiceUsage =
    "  hexahedra, tetrahedra   shape of the cells (hexahedra)\n"
    "  EDGE                    cubes along each edge of the box, 2 to 400 (100); a cube is one\n"
    "                          hexahedron or six tetrahedra\n"
    "  shuffled                cells and faces in random order\n";

// Reads a mesh from words in any order. Throws UsageError.
MeshChoice readChoice(int count, char** words);

}  // namespace weldline::performance
