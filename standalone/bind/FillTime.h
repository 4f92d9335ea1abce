#pragma once

#include <cstdint>
#include <vector>

#include "RankPart.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline {

// What a fill time of exactly 0 means; see docs/decisions/fill-time-zero.md.
enum class ZeroFillTime {
    Automatic,   // decided from the data set, see prepareFillTime
    NotReached,  // the melt never came
    Filled       // filled at the start
};

// Cells of a data set by what their fill time says. reached + notReached is the number of cells.
struct FillTimeCounts {
    std::int64_t reached = 0;
    std::int64_t notReached = 0;
    std::int64_t marked = 0;          // of notReached: NaN, infinite or negative
    std::int64_t zeroNotReached = 0;  // of notReached: value 0, read as "the melt never came"
    std::int64_t zeroFilled = 0;      // of reached: value 0, read as "filled at the start"
    std::int64_t closed = 0;          // of notReached: got a time from closeTrappedAir
    double earliest = 0.0;  // smallest and largest time above 0, in the data set's unit; 0 when
    double latest = 0.0;    // there is none
};

struct FillTime {
    std::vector<float> values;  // per cell: above 0 where reached, exactly 0 where not
    FillTimeCounts counts;
};

// Value that the library takes as reached: not below 1e-30.
inline bool isReached(float fillTime) {
    return !(static_cast<double>(fillTime) < 1e-30);
}

// Turns fill times as a data set stores them into those the library works with.
//  - NaN, infinite and negative values mean "not reached" and become 0.
//  - Values from 0 to 1e-30 count as 0. With ZeroFillTime::Automatic a 0 means "filled at the
//    start" in a data set that marks unreached cells by NaN, infinity or a negative value. In a
//    data set without such marks it means "filled at the start" for cells that touch an inlet face,
//    directly or through other cells of value 0, and "not reached" for all others.
//  - Cells filled at the start get a small positive time, a millionth of the earliest time above 0
//    (of one time unit, when there is none): too small to bend a gradient, and reached for the
//    library.
// `raw` has one value per cell, `groups` belongs to `mesh`. Throws InputError when the number of
// values is not the number of cells.
FillTime prepareFillTime(const std::vector<double>& raw, const FvMesh& mesh,
                         const BoundaryGroups& groups, ZeroFillTime zero = ZeroFillTime::Automatic);

// The same on the parts of a mesh: marks, times and inlets count wherever they are, and so do the
// counts, which are those of the whole. Collective.
FillTime prepareFillTime(const RankPart& part, const std::vector<double>& raw, const FvMesh& mesh,
                         const BoundaryGroups& groups, ZeroFillTime zero);

}  // namespace weldline
