#pragma once

#include <vector>

#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline {

// What a fill time looks like on its mesh, cell by cell against the cells across the inner faces.
struct FillQuality {
    int reached = 0;
    double filledVolume = 0.0;  // share of the whole, 0 to 1

    // Cells that the melt reaches last among their neighbours, all of which it reaches, and no
    // earlier than any cell two steps away, and that have no outlet face and no neighbour with one:
    // where air has nowhere to go.
    std::vector<int> lateCells;

    // Groups of neighbouring cells that the melt does not reach and of which none has an outlet
    // face: air that cannot leave. One cell of each, the largest group first.
    struct Pocket {
        int cell = 0;  // the lowest
        int cells = 0;
    };
    std::vector<Pocket> pockets;

    // The same for cells that it reaches first, which have no inlet face and no neighbour with one.
    // Melt does not start in the middle of the part: this is noise.
    std::vector<int> earlyCells;

    // Median over the reached cells of the largest difference to a reached neighbour: about the
    // time in which the front passes a cell.
    double cellTime = 0.0;

    // Median angle between the flow directions of two neighbours, degrees. Streams turn slowly; on
    // weld lines they do not, but those are few.
    double medianTurn = 0.0;
};

// `fillTime` per cell, 0 where not reached; `directions` as flowDirections() makes them. A cell
// without inner faces is neither late nor early.
FillQuality qualityOf(const FvMesh& mesh, const BoundaryGroups& groups,
                      const std::vector<float>& fillTime, const std::vector<Vec3>& directions);

// Of the values in ascending order the one at this share, 0 to 1; 0 without values.
double quantile(std::vector<double> values, double share);

}  // namespace weldline
