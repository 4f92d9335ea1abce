#pragma once

#include <array>
#include <string>
#include <vector>

#include "comm/Ranks.h"
#include "partition/MeshPart.h"

namespace weldline::test {

// What one rank holds after a run of the library on its part of a mesh.
struct RankOutcome {
    std::vector<std::int64_t> cellNumber, nodeNumber;
    std::vector<double> angles;  // per node, shared ones with the smallest of all ranks

    // Per own cell, at the end of the calculation: smoothed variable, first gradient set, second
    // gradient set, 1 for a gradient set to zero.
    using Cell = std::array<double, 8>;
    std::vector<Cell> cells;

    // What the rank had to hold.
    std::size_t haloCells = 0;
    std::size_t cellSlots = 0;  // own cells, boundary faces and halo cells
    bool operator==(const RankOutcome&) const = default;
};

// Builds, joins, binds and runs the part of this rank, whose first cell field is the fill time and
// whose patches are grouped by the usual names. Collective. The control file is the caller's.
RankOutcome runPart(Ranks& ranks, const MeshPart& part, const std::string& controlFile);

// Splits the whole and runs its parts as threads; the outcomes in the order of the ranks.
std::vector<RankOutcome> runCut(const MeshPart& whole, const std::vector<int>& partOfCell,
                                int ranks, const std::string& controlFile);

// The outcomes of all ranks under the numbers of the whole mesh.
struct WholeOutcome {
    std::vector<double> angles;
    std::vector<RankOutcome::Cell> cells;
};
WholeOutcome assemble(const std::vector<RankOutcome>& outcomes);

}  // namespace weldline::test
