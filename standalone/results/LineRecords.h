#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "WeldLines.h"
#include "comm/Ranks.h"

namespace weldline {

// What one or all ranks have of a weld line, each node counted once.
struct LineRecord {
    std::int64_t smallestNode = 0;  // of the whole line; names it
    std::int64_t nodes = 0;
    double smallestAngle = 180.0;
    double angleSum = 0.0;
    Vec3 low, high;
    Vec3 sum;  // of the nodes' places
    double firstTime = 0.0;
    double lastTime = 0.0;
};

// The weld lines of this rank, node by node.
class LineRecords {
  public:
    void add(std::int64_t smallestNode, double angle, Vec3 place, double time);

    std::vector<LineRecord> all() const;  // by smallest node

  private:
    std::map<std::int64_t, LineRecord> m_records;
};

// The weld lines of all ranks, ordered by number of nodes, descending, then by smallest node.
// Collective; rank 0 adds up rank by rank.
std::vector<LineRecord> recordsOfAll(Ranks& ranks, const LineRecords& own);

// Without id and nodes.
WeldLine lineOf(const LineRecord& record);

}  // namespace weldline
