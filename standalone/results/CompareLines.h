#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LineShapes.h"
#include "WeldLines.h"
#include "mesh/FvMesh.h"

namespace weldline {

// The weld lines of one result, for comparing with those of another. Borrowed.
struct LinesOfResult {
    const WeldLines& lines;
    const std::vector<LineShape>& shapes;  // by id; may have more lines than `lines`
};

enum class LineFate : std::uint8_t { Same, Changed, Moved, Gone, New };

// What has become of a line of result A in result B.
struct ComparedLine {
    LineFate fate = LineFate::Same;
    const WeldLine* before = nullptr;  // in A; null where the line is new
    const WeldLine* after = nullptr;   // in B; null where the line is gone
    double distance = 0.0;             // between both; NaN where there is one of them only
    bool angleChanged = false;         // smallest angles differ by more than 5 degrees
    bool lengthChanged = false;        // lengths differ by more than a tenth of that in A
    bool classChanged = false;
};

// Distance of two lines: the mean, over the points of the curves of one line, of the distance to
// the nearest point of the other line's curves; of both directions the mean again. It is small only
// where each line follows the other all along.
double distanceBetween(const LineShape& a, const LineShape& b);

// Cube root of the median cell volume; 0 without cells.
double typicalCellSize(const FvMesh& mesh);

// Matches the lines of two results by place, one to one, and tells what has become of each: first
// those of A by their ids, then the new ones by theirs.
//  - Two lines can be the same where their distance is not above `tolerance` nor above half the
//    geometric mean of their lengths, whichever is more.
//  - The nearest pair is matched first, then the nearest of what is left; of equally near pairs the
//    one with the lower id in A, then in B.
//  - A matched line whose distance is above the tolerance has moved, whatever else changed.
std::vector<ComparedLine> compareLines(const LinesOfResult& a, const LinesOfResult& b,
                                       double tolerance);

// "same", "changed", "moved", "gone", "new".
std::string nameOf(LineFate fate);

}  // namespace weldline
