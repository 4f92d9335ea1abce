#pragma once

#include <cstdint>
#include <numeric>
#include <vector>

#include "comm/OneRank.h"
#include "partition/MeshInterface.h"

namespace weldline {

// The part of a run that this rank takes; all borrowed. `nodeNumber` has per node its 0-based
// number in the whole mesh.
struct RankPart {
    Ranks& ranks;
    const MeshInterface& interface;
    const std::vector<std::int64_t>& nodeNumber;
};

// The part that one process takes of its run: everything, under its own numbers.
class UncutMesh {
  public:
    explicit UncutMesh(int nodes = 0) : m_nodeNumber(static_cast<std::size_t>(nodes)) {
        std::iota(m_nodeNumber.begin(), m_nodeNumber.end(), std::int64_t{0});
    }
    RankPart part() { return {m_ranks, m_interface, m_nodeNumber}; }

  private:
    OneRank m_ranks;
    MeshInterface m_interface;
    std::vector<std::int64_t> m_nodeNumber;
};

}  // namespace weldline
