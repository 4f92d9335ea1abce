#pragma once

#include <string>
#include <vector>

#include "bind/FillTime.h"
#include "bind/TrappedAir.h"
#include "io/WriteResult.h"
#include "mesh/BoundaryGroups.h"
#include "settings/Settings.h"

namespace weldline {

// What a result tells of its run, as far as the run can be repeated from it.
struct RunNotes {
    Settings settings;
    int meshFileType = 0;
    double gradientSetSwitch = 1.0;
    std::vector<GroupKind> groupOfPatch;              // of ResultNotes::patches.names
    ZeroFillTime zeroTime = ZeroFillTime::Automatic;  // older results do not tell it
    TrappedAir trappedAir = TrappedAir::Keep;         // nor this
    std::string biField;                              // nor these two; empty: none
    std::string cellState;
};

// Throws InputError where the result tells nothing or nothing that can be understood.
RunNotes readRunNotes(const std::string& file, const ResultNotes& notes);

// Whether the run closed trapped air. Of a result that does not tell it: no.
TrappedAir trappedAirOf(const ResultNotes& notes);

// "auto", "filled", "unreached"; as the option --zero-time names them.
std::string nameOf(ZeroFillTime zero);

// "keep", "close"; as the option --trapped-air names them.
std::string nameOf(TrappedAir gaps);

}  // namespace weldline
