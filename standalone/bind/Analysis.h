#pragma once

#include <vector>

#include "HostModel.h"
#include "RecordedArrays.h"

namespace weldline {

// Runs the library once on a model, with a handle of its own, so that no setting of an earlier run
// stays: all setters in their documented order, the calculation, and the result. Answers the
// meeting angle per node (0-based) in degrees: 180 where nothing meets, small where streams meet
// head-on, by rounding slightly below 0 in exact head-on meetings.
//
// The library may print to standard output. Throws InputError when the control file cannot be
// opened, and std::bad_alloc.
std::vector<double> runWeldLine(HostModel& model);

// The same on all ranks of a run, for a model of this rank's part. Nodes that several ranks have
// hold the smallest of their angles, and 180 where the cell state of any rank's cell keeps them
// free of weld lines. Collective: a control file that some rank cannot open fails on all; a rank
// that runs out of memory within the calculation leaves the others waiting, and the caller has to
// end them.
std::vector<double> runWeldLine(HostModel& model, const RankPart& part);

// A run in one process with what the library calculated on the way.
struct RecordedRun {
    std::vector<double> angles;  // as runWeldLine answers them
    RecordedArrays arrays;
};
RecordedRun recordWeldLine(HostModel& model);

}  // namespace weldline
