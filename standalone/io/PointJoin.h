#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/Vec3.h"

namespace weldline {

// A number that depends on the place alone; 0.0 and -0.0 are the same.
std::uint64_t placeKey(Vec3 place);

// Finds points by their exact coordinates.
class PointIndex {
  public:
    explicit PointIndex(const std::vector<Vec3>& points);  // borrowed

    // The lowest number of a point at this place, -1 where there is none.
    int find(Vec3 place) const;

  private:
    const std::vector<Vec3>& points_;  // borrowed
    std::vector<std::pair<std::uint64_t, int>> keys_;
};

// Joins the points of pieces. Points of different pieces at the same place become one; points of
// one piece at the same place stay apart, because there the data set wants a gap (of several such
// points the first is the one that is joined). `pieceStarts` holds the number of the first point of
// each piece and at the end the number of points. Per point the number of the joined point;
// `points` keeps the joined points, in order of their first appearance.
std::vector<int> joinPieces(std::vector<Vec3>& points, std::span<const int> pieceStarts);

}  // namespace weldline
