#pragma once

#include <map>
#include <string>
#include <vector>

#include "DataSet.h"
#include "GridCells.h"
#include "OpenDataSet.h"
#include "PointDirectory.h"
#include "partition/DeliverPatches.h"

namespace weldline {

// Where patches come from on one rank; borrowed.
struct PatchSources {
    bool isCase;  // then surfaces of the same name are parts of one patch
    const std::vector<Block>& surfaces;
    const std::vector<std::string>& remarks;
    const std::map<long long, Rows>& numbered;      // corners are points as given to the directory
    const std::map<long long, std::string>& names;  // of the numbered
    const LeftOut& leftOut;
};

// Puts the names of the patches of all ranks into the part, the numbered ones first, by number, and
// then the surfaces in their order; adds remarks on what was left out. Answers the faces that this
// rank has read. Collective.
PatchFaces collectPatches(Ranks& ranks, const PointDirectory& directory,
                          const PatchSources& sources, DataPart& data);

// The points of a grid at the end of the list.
void appendPoints(vtkDataSet* grid, std::vector<Vec3>& points);

}  // namespace weldline
