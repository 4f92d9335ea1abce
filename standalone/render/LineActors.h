#pragma once

#include <vtkActor.h>
#include <vtkSmartPointer.h>

#include <vector>

#include "Palette.h"
#include "results/LineShapes.h"

namespace weldline {

// Radii of the tubes of weld lines, in the data set's unit of length.
struct TubeRadii {
    double line = 0.0;
    double halo = 0.0;  // of the rim that sets a line off from what lies behind it
};

// Weld lines as tubes with round ends in the colours of their meeting angles, and their halos. The
// halo is the far half of a thicker tube, so that it shows beside the line only.
std::vector<vtkSmartPointer<vtkActor>> lineActors(const std::vector<LineCurve>& curves,
                                                  const Palette& palette, TubeRadii radii);

}  // namespace weldline
