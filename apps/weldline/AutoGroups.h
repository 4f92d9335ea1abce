#pragma once

#include <string>
#include <vector>

#include "bind/RankPart.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"
#include "results/Openings.h"

namespace weldline {

// Where no patch name tells inlets, or outlets, makes a patch of the walls that fill first, or
// where the front runs out, and lets the patterns find it. `fillTime` per cell, as stored.
// Collective.
std::vector<MadePatch> makeAutoGroups(const RankPart& part, const FvMesh& mesh,
                                      const std::vector<double>& fillTime,
                                      std::vector<Patch>& patches, GroupPatterns& patterns);

// "60 faces that fill first (60 of 'nozzle'), x 0 to 0, y 1 to 4, z 0 to 0"
std::string describe(const MadePatch& made);

// What a run with --auto-groups should tell, one sentence each.
std::vector<std::string> autoGroupRemarks(const std::vector<MadePatch>& made);

}  // namespace weldline
