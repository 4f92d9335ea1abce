#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bind/RankPart.h"
#include "mesh/FvMesh.h"

namespace weldline {

// Fronts that meet at a small angle leave a weld line in the narrow sense; those that flow on side
// by side leave a meld line, which is stronger and seen less.
enum class LineClass : std::uint8_t { Weld, Meld };

// What a weld line has of a field of the data set; NaN where no value was found.
struct CarriedValue {
    std::string name;
    double smallest = 0.0;
    double mean = 0.0;
    double largest = 0.0;
};

// One weld line: a connected set of weld nodes. Times and lengths in the data set's units.
struct WeldLine {
    int id = 0;                  // from 1: 1 has the most nodes
    std::int64_t nodeCount = 0;  // in the whole mesh
    std::vector<int> nodes;      // those of this rank, 0-based, ascending
    double smallestAngle = 0.0;  // degrees, as reported (see reportedAngle)
    double meanAngle = 0.0;      // mean of the reported angles of the nodes
    Vec3 low, high;              // box of the nodes
    Vec3 centroid;               // mean of the nodes
    double firstTime = 0.0;      // formation: earliest and latest formation time of its nodes; NaN
    double lastTime = 0.0;       // when no cell around its nodes was reached

    // Not of the nodes alone, filled in by describeLines.
    LineClass kind = LineClass::Weld;
    double length = 0.0;        // along the middle of the weld surface, end to end
    double branchLength = 0.0;  // of its branches
    double skinLength = 0.0;    // where it comes out of the part
    std::string patch;          // nearest inlet, outlet or symmetry patch; empty: there is none
    double patchDistance = 0.0;
    std::vector<CarriedValue> carried;
};

struct WeldLines {
    std::vector<WeldLine> lines;        // ordered by id; of the whole mesh
    std::vector<int> nodeLine;          // per node: id of its weld line, 0 none
    std::vector<double> formationTime;  // per node of a weld line: the largest fill time among the
                                        // reached cells around it; NaN for all other nodes
    std::int64_t weldNodes = 0;         // nodes in weld lines; of the whole mesh
    std::int64_t undefinedNodes = 0;    // nodes whose angle is NaN; in no weld line
};

// The angle that tables and summaries show. Two streams that meet exactly head-on leave the angle a
// rounding error below 0 (about -2e-7 degrees, because the library counts with an eight-digit pi);
// it is shown as 0. The data set of the result keeps the value as calculated.
inline double reportedAngle(double angle) {
    return angle < 0.0 ? 0.0 : angle;
}

// Joins weld nodes to weld lines.
//  - A weld node has an angle below 180 and below `limit` (degrees).
//  - Two weld nodes of a mesh face belong to the same weld line: across a mesh of hexahedra a line
//    steps from corner to opposite corner.
//  - Weld lines are ordered by number of nodes, descending, then by their smallest node number.
// `angles` has one value per point (degrees), `fillTime` one per cell (exactly 0 where the melt
// did not come). Cost: linear in the size of the mesh.
WeldLines findWeldLines(const FvMesh& mesh, const std::vector<double>& angles,
                        const std::vector<float>& fillTime, double limit = 180.0);

// The same on the parts of a mesh: weld lines of the whole, joined through the nodes that ranks
// share, whose angles are the same on all of them. The number of a line does not depend on the
// ranks; means may differ in their last digits, because sums go rank by rank. Collective. No rank
// sees more of another than its shared nodes; rank 0 sees what each has of each line.
WeldLines findWeldLines(const RankPart& part, const FvMesh& mesh, const std::vector<double>& angles,
                        const std::vector<float>& fillTime, double limit);

// Per node whether nobody of lower rank has it, so that each node of the whole mesh counts once.
std::vector<bool> ownedNodes(const RankPart& part);

}  // namespace weldline
