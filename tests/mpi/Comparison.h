#pragma once

#include <iosfwd>
#include <vector>

#include "CutRun.h"
#include "mesh/FvMesh.h"

namespace weldline::test {

// A cut seen on the uncut mesh.
class CutMap {
  public:
    CutMap(const FvMesh& mesh, const std::vector<int>& partOfCell);

    // Face neighbours away from the nearest cell with a face on an interface; 0 for such cells.
    const std::vector<int>& layers() const { return m_layers; }

    // Cells of several parts have the node.
    bool isShared(int node) const { return m_isShared[static_cast<std::size_t>(node)]; }

    // The cells that flat cells (flag 1) make differ after `passes` smoothing passes: a rank does
    // not know the flags of its halo cells, so that the cell beside such a one takes its gradient
    // into the mean; each further pass carries the difference one layer on.
    std::vector<bool> reachedByFlags(const std::vector<RankOutcome::Cell>& cells, int passes) const;

    // Cells whose gradient is among the largest of their rank: methods 1 to 3 leave out cells
    // within 1 % of the largest gradient, and each rank sees that of its own cells only.
    std::vector<bool> nearLargestOfRank(const std::vector<RankOutcome::Cell>& cells) const;

    // The nodes of these cells and of their neighbours around nodes.
    std::vector<bool> nodesAround(const std::vector<bool>& cells) const;

  private:
    std::vector<int> spread(const std::vector<int>& from) const;

    const FvMesh& m_mesh;
    const std::vector<int>& m_partOfCell;
    std::vector<int> m_layers;
    std::vector<bool> m_isShared;
};

// The largest difference between the gradients of two runs, divided by the largest gradient of the
// first, over all cells but those in `except`. Both sets count.
double gradientDifference(const WholeOutcome& one, const WholeOutcome& other,
                          const std::vector<bool>& except);

// Nodes whose angles differ between two runs, but those in `except`.
struct AngleDifference {
    int weldNodes = 0;  // below 180 in the first run
    int lost = 0;       // of these: 180 in the second
    int gained = 0;     // below 180 in the second run only
    int larger = 0;     // below 180 in both, but larger in the second
    int smaller = 0;    // the same, but smaller
    bool operator==(const AngleDifference&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const AngleDifference& difference);
AngleDifference angleDifference(const WholeOutcome& one, const WholeOutcome& other,
                                const std::vector<bool>& except);

// What two angles of equal streams may differ by, in degrees: gradients that agree to rounding have
// a cosine that does, too, and the arc cosine near 180 degrees, where streams meet head-on, makes
// its square root of it.
inline constexpr double angleTolerance = 2e-6;

}  // namespace weldline::test
