#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mesh/CellMesh.h"

namespace weldline {

struct ReadOptions {
    std::string field = "FillTime";  // cell array; with fieldGiven false "fillTime" is tried, too
    bool fieldGiven = false;
    std::string time =
        "latest";  // "latest" or a time value of the data set (nearest within 1e-6 relative)
};

// One filling result, read: the volume cells, the boundary patches where the data set has any, and
// the fill time per cell. Patches are
//  - the patches of an OpenFOAM case and the surface blocks of a multi-block data set, by name;
//  - 2-D cells beside the volume cells, named by their number in the first integer cell array of
//    PatchId, PatchIds, BoundaryId, boundary_id, CellEntityIds, gmsh:physical, medit:ref.
// Other cells that are no volume cells are left out, with a remark. Pentagonal and hexagonal prisms
// become polyhedra. Pieces and blocks are joined where their points have the same coordinates.
struct DataSet {
    std::string file;
    CellMesh mesh;
    std::vector<Patch> patches;

    std::string fieldName;
    std::vector<double> fillTime;  // per cell of `mesh`, as stored (NaN, 0 and negative values too)
    std::optional<double> time;    // time value that was read, where the data set has times

    std::vector<std::string> remarks;  // what the user should know, one sentence each
};

// Reads .vtu, .pvtu, .vtk, .vtm and OpenFOAM (.foam) data sets. Throws InputError with one line:
// no such file, not a data set, damaged, no volume cells, volume cells of a higher order, field
// missing (names those that exist), field on points instead of cells, not one component. Throws
// UsageError when the time is neither a number nor "latest".
DataSet readDataSet(const std::string& file, const ReadOptions& options);

// What a data set holds, for listing before any run. No field is needed.
struct DataSetInfo {
    struct Array {
        std::string name;
        std::string where;  // "cells" or "points"
        std::string type;   // "Float32", "Int64", ...
        int components = 1;
        double minimum = 0.0;  // over all finite values of the first component
        double maximum = 0.0;
    };
    struct Count {
        std::string name;  // of a cell shape, a patch or a block
        long long count = 0;
    };
    std::string file;
    std::string format;  // "VTK XML unstructured grid", "OpenFOAM case", ...
    long long points = 0;
    long long cells = 0;
    Vec3 low, high;                 // box of the points
    std::vector<Count> cellShapes;  // by VTK's name of the shape
    std::vector<Count> blocks;      // name and number of cells; none for a single grid
    std::vector<Count> patches;     // name and number of faces
    std::vector<Array> arrays;
    std::vector<double> times;
};
DataSetInfo describeDataSet(const std::string& file, const std::string& time);

}  // namespace weldline
