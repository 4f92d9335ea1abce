#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

#include "LibraryFields.h"
#include "mesh/FvMesh.h"

namespace weldline {

// Which test of an angle method refuses a pair of cells. The numbers are documented in
// docs/explain.md and stay.
enum class Refusal : std::uint8_t {
    None = 0,                 // the streams meet
    NotReached = 1,           // the melt did not come to one of the cells
    Flat = 2,                 // the gradient of one of the cells tells no direction
    Steep = 3,                // ... is longer than the largest of the mesh lets count
    Shallow = 4,              // ... is shorter than the mean of the mesh lets count
    Alike = 5,                // the streams run so much the same way that they do not meet
    SameSigns = 6,            // the gradients share the sign of all three components
    NotTowardsEachOther = 7,  // one of the gradients does not lead to the middle of both centres
    Volumes = 8,              // the volumes of the cells are too different
    OutsideCone = 9,          // the gradient of one of the cells points away from where they meet
    Parting = 10              // a step along the flow takes the cells no closer to each other
};

// "not reached", "outside cone", ...
std::string nameOf(Refusal refusal);

// What a method makes of two cells. NaN stands for a number that there is not.
struct Judgement {
    Refusal refusal = Refusal::None;
    int cell = -1;  // that of the pair which is refused; -1: both together
    double value = std::numeric_limits<double>::quiet_NaN();  // what the test compares, and with
    double limit = std::numeric_limits<double>::quiet_NaN();  // what
    double angle = std::numeric_limits<double>::quiet_NaN();  // between the gradients, degrees
};

// The pair tests of an angle method of the library, written down once more on the host's side: the
// library asks them in any order that is quick and answers with angles alone. All conditions have
// to hold, so that the order decides only which test is named; unreached cells come first, because
// their gradients are flat, too.
class PairJudge {
  public:
    virtual ~PairJudge() = default;

    // Do the streams of cells a and b meet at Q?
    virtual Judgement judge(int a, int b, Vec3 Q) const = 0;
};

// The tests of method 4. Borrows mesh and fields.
std::unique_ptr<PairJudge> convergingPairs(const FvMesh& mesh, const LibraryFields& fields,
                                           const Settings& settings);

// The tests of methods 1 and 2. Borrows mesh and fields.
std::unique_ptr<PairJudge> meetingPairs(const FvMesh& mesh, const LibraryFields& fields,
                                        const Settings& settings, int meshFileType);

}  // namespace weldline
