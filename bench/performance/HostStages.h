#pragma once

#include "Calculation.h"
#include "Stage.h"

namespace weldline::performance {

// From a data set's cells to bound host objects: finite-volume mesh, host objects, and per inner
// face the stencil and the weights of the RBF gradient ("weldline"). Borrows `bound`.
Stages hostStages(BoundCase& bound);

// Work of the same kind by VTK ("vtk") on the same cells: the surface out of the cells, and the
// gradient of the fill time. Borrow `bound`.
Stages surfaceFilterStages(BoundCase& bound);
Stages gradientFilterStages(BoundCase& bound);

}  // namespace weldline::performance
