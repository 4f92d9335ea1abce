#pragma once

#include <functional>

#include "Calculation.h"
#include "Stage.h"

namespace weldline::performance {

// The body of a measuring program: reads the mesh and Google Benchmark's options from the command
// line, and times the stages that `stagesOf` gives, in processor time of one core. Answers the exit
// code.
int runStages(int argc, char** argv, const std::function<Stages(BoundCase&)>& stagesOf);

}  // namespace weldline::performance
