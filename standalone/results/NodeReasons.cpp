#include "NodeReasons.h"

#include <algorithm>

namespace weldline {

namespace {

// The states that make the library free the nodes of a cell.
bool keepsFree(int state) {
    return state >= 1 || state == -1;
}

}  // namespace

int reasonOf(const NodeExplanation& e) {
    switch (e.verdict) {
        case NodeVerdict::Kept:
            return static_cast<int>(NodeReason::WeldNode);
        case NodeVerdict::AboveLimit:
            return static_cast<int>(NodeReason::AboveLimit);
        case NodeVerdict::Isolated:
            return static_cast<int>(NodeReason::Isolated);
        default:
            break;
    }
    int farthest = 0;
    for (const PairAtNode& pair : e.pairs)
        farthest = std::max(farthest, static_cast<int>(pair.judgement.refusal));
    return farthest > 0 ? farthest : static_cast<int>(NodeReason::NoPairs);
}

std::vector<int> nodeReasons(const FvMesh& mesh, const NodeExplainer& explainer,
                             const std::vector<double>& angles, const std::vector<int>& cellState) {
    std::vector<int> reasons;
    reasons.reserve(static_cast<std::size_t>(mesh.pointCount()));
    for (int n = 0; n < mesh.pointCount(); ++n)
        reasons.push_back(reasonOf(explainer.explain(n, angles[static_cast<std::size_t>(n)])));
    for (std::size_t c = 0; c < cellState.size(); ++c)
        if (keepsFree(cellState[c]))
            for (const int n : mesh.cellNodes[static_cast<int>(c)])
                reasons[static_cast<std::size_t>(n)] = static_cast<int>(NodeReason::KeptFree);
    return reasons;
}

}  // namespace weldline
