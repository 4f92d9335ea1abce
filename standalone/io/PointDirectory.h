#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "PointJoin.h"
#include "comm/Ranks.h"

namespace weldline {

// Numbers the points of all ranks as one process would that joins all pieces (see joinPieces): in
// order of their first appearance over the ranks. Of the points that one rank has at one place the
// first is joined with the first of other ranks; the others stay apart.
//
// A place is dealt with by the rank that its coordinates hash to, so that no rank sees all points.
class PointDirectory {
  public:
    // `points` of this rank have been joined among themselves; borrowed. `used` tells of each
    // whether a cell of this rank has it. Collective.
    PointDirectory(Ranks& ranks, const std::vector<Vec3>& points, const std::vector<bool>& used);
    PointDirectory(const PointDirectory&) = delete;
    PointDirectory& operator=(const PointDirectory&) = delete;

    const std::vector<std::int64_t>& numbers() const { return m_numbers; }  // per point
    std::int64_t total() const { return m_total; }                          // over all ranks

    // Per point whether it belongs to this rank: a cell of the rank has it, or no cell of any rank
    // has it and it appears here first.
    const std::vector<bool>& belongs() const { return m_belongs; }

    // Per place the lowest number of a point there, -1 where there is none. Collective.
    std::vector<std::int64_t> find(const std::vector<Vec3>& places) const;

  private:
    // Per rank the points, or places, that hash to it; the first one of several at one place.
    using Sent = std::vector<std::vector<std::size_t>>;

    Sent firstsByRank() const;
    std::vector<bool> askWhichAreOwn(const Sent& sent);
    void numberOwn(const std::vector<bool>& own);
    void shareNumbers(const Sent& sent, const std::vector<bool>& own,
                      const std::vector<bool>& used);

    Ranks& m_ranks;
    const std::vector<Vec3>& m_points;
    std::vector<std::int64_t> m_numbers;
    std::vector<bool> m_belongs;
    std::int64_t m_total = 0;

    // What the ranks told about the places that hash to this one, rank by rank; every rank that has
    // a place tells it once. The first entry of a place holds its number.
    std::vector<Vec3> m_places;
    std::optional<PointIndex> m_index;
    std::vector<std::int64_t> m_placeNumbers;
};

}  // namespace weldline
