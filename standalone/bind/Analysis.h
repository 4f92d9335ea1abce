#pragma once

#include <vector>

#include "HostModel.h"

class CCommunication;
class CKVRCom;
class CPartitionFace_DLL;

namespace weldline {

// The host objects that connect the processes of a run; borrowed for the length of a run.
struct HostServices {
    CPartitionFace_DLL& partition;
    CCommunication& exchange;
    CKVRCom& collective;
};

// Runs the library once on a model, with a handle of its own, so that no setting of an earlier run
// stays: all setters in their documented order, the calculation, and the result. Answers the
// meeting angle per node (0-based) in degrees: 180 where nothing meets, small where streams meet
// head-on, by rounding slightly below 0 in exact head-on meetings.
//
// The library may print to standard output. Throws InputError when the control file cannot be
// opened, and std::bad_alloc. With `services` the call is collective over all processes.
std::vector<double> runWeldLine(HostModel& model, HostServices services);

// The same in one process without interface faces.
std::vector<double> runWeldLine(HostModel& model);

}  // namespace weldline
