#pragma once

#include <vector>

#include "ExplainNode.h"

namespace weldline {

// Why a node has no smaller angle, as a number for viewers: 0 where it has one; the Refusal of the
// pair of cells that passes most tests where all pairs are refused; else one of these. They are
// documented in docs/explain.md and stay.
enum class NodeReason : int {
    WeldNode = 0,
    AboveLimit = 11,
    Isolated = 12,
    KeptFree = 13,  // by the state of a cell
    NoPairs = 14    // no two cells are compared there
};

int reasonOf(const NodeExplanation& explanation);

// The reasons of all nodes. `angles` are those of the library, `cellState` has one value per cell
// or none at all.
std::vector<int> nodeReasons(const FvMesh& mesh, const NodeExplainer& explainer,
                             const std::vector<double>& angles, const std::vector<int>& cellState);

}  // namespace weldline
