#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "GmshData.h"
#include "mesh/Rows.h"
#include "mesh/Vec3.h"

namespace weldline {

// What a gmsh .msh file holds, as far as it is of use here.
struct GmshMesh {
    std::vector<Vec3> points;

    // Volume elements, and the surface elements of physical groups. Points and lines, and surface
    // elements of no group, are left out.
    std::vector<std::int64_t> elements;  // the file's number
    std::vector<int> types;              // VTK's number of the shape
    std::vector<int> patches;            // -1 for a volume element
    Rows nodes;

    std::vector<std::string> patchNames;  // of the groups that occur, by ascending number
    std::vector<GmshData> data;
};

// Reads format 2.x or 4.1, text or binary, first-order elements. The cursor stands at the start of
// the file. Throws InputError.
GmshMesh readGmshMesh(GmshCursor& cursor);

}  // namespace weldline
