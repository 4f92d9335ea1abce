#pragma once

#include <optional>
#include <string>
#include <vector>

#include "SeriesFill.h"
#include "WriteResult.h"
#include "comm/Ranks.h"
#include "mesh/CellMesh.h"
#include "partition/MeshPart.h"

namespace weldline {

struct ReadOptions {
    std::string field = "FillTime";  // cell array; with fieldGiven false "fillTime" is tried, too
    bool fieldGiven = false;
    std::string time =
        "latest";  // "latest" or a time value of the data set (nearest within 1e-6 relative)
    std::vector<std::string> cellArrays;  // further cell arrays to read
    std::vector<std::string> carried;  // further cell or point arrays; of a point array each cell
                                       // gets the mean over its nodes
    std::vector<std::string> pointArrays;  // in one process only
    SeriesOptions series;
    double scale = 1.0;  // lengths of the data set are multiplied by it
};

// One filling result, read: the volume cells, the boundary patches where the data set has any, and
// the fill time per cell. Patches are
//  - the patches of an OpenFOAM case and the surface blocks of a multi-block data set, by name;
//  - the physical surfaces of a gmsh file, by name;
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
    std::vector<std::vector<double>> carried;      // per array asked for: one value per cell
    std::vector<std::vector<double>> pointFields;  // per array asked for: one value per point
    ResultNotes notes;                             // where the data set is a result
    std::optional<SeriesFill> series;              // where the fill time comes from one

    std::vector<std::string> remarks;  // what the user should know, one sentence each
};

// Reads .vtu, .pvtu, .vtk, .vtm, .pvd, CGNS (.cgns), EnSight (.case), Exodus (.e, .ex2, .exo), gmsh
// (.msh) and OpenFOAM (.foam) data sets in one process. Throws InputError with one line: no such
// file, not a data set, damaged, no volume cells, volume cells of a higher order, field missing
// (names those that exist), field on points instead of cells, not one component. Throws UsageError
// when the time is neither a number nor "latest".
DataSet readDataSet(const std::string& file, const ReadOptions& options);

// What one rank of a run holds of a filling result.
struct DataPart {
    MeshPart part;  // cellFields: the fill time, then ReadOptions::cellArrays, then ::carried; as
                    // stored
    std::vector<std::vector<double>> pointFields;  // ReadOptions::pointArrays
    ResultNotes notes;       // where one of the pieces that this rank read is a result
    std::int64_t cells = 0;  // of the whole data set
    std::int64_t nodes = 0;

    std::string fieldName;  // as in DataSet
    std::optional<double> time;
    std::optional<SeriesFill> series;
    std::vector<std::string> remarks;
};

// The same, spread over the ranks of a run: every rank has a part, and the parts together are what
// one process would read, with its numbers of cells and points. A data set consists of pieces: the
// files that a .pvtu or .vtm file names, the processor folders of a decomposed OpenFOAM case, or
// one. The pieces are dealt to the ranks in their order, about the same number of bytes to each.
// Ranks that have no cells then take over parts of those that have (spreadMesh). Collective; all
// ranks throw the same.
DataPart readPart(Ranks& ranks, const std::string& file, const ReadOptions& options);

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
    bool hasSeries = false;            // a phase fraction over several times; see SeriesOptions
    std::vector<std::string> remarks;  // on what is left out, one sentence each
};
DataSetInfo describeDataSet(const std::string& file, const std::string& time);

// The .foam file of an OpenFOAM case that is named by its folder; it need not exist. Any other name
// comes back as it is.
std::string foamFileOf(const std::string& input);

}  // namespace weldline
