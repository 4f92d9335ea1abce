#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mesh/Rows.h"
#include "mesh/Vec3.h"

namespace weldline {

// What a gmsh .msh file holds, as far as it is of use here.
struct GmshMesh {
    // One $ElementData section: values of some elements at one time.
    struct Data {
        std::string name;
        double time = 0.0;
        int components = 1;
        std::vector<std::int64_t> elements;  // by the file's number
        std::vector<double> values;          // components of one element after another
    };

    std::vector<Vec3> points;

    // Volume elements, and the surface elements of physical groups. Points and lines, and surface
    // elements of no group, are left out.
    std::vector<std::int64_t> elements;  // the file's number
    std::vector<int> types;              // VTK's number of the shape
    std::vector<int> patches;            // -1 for a volume element
    Rows nodes;

    std::vector<std::string> patchNames;  // of the groups that occur, by ascending number
    std::vector<Data> data;
};

// Reads format 2.x or 4.1, text or binary, first-order elements. Throws InputError.
GmshMesh readGmshMesh(const std::string& file);

}  // namespace weldline
