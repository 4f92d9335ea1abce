#pragma once

#include <vtkActor.h>
#include <vtkSmartPointer.h>

#include <vector>

#include "Palette.h"
#include "PictureScene.h"

namespace weldline {

// The skin for VTK, lit and shaded: what the melt reached in bands of fill time (or one colour),
// what it did not reach grey.
std::vector<vtkSmartPointer<vtkActor>> skinActors(const PictureScene& scene,
                                                  const Palette& palette);

// The edges of the part as lines of this width in pixels of the window.
vtkSmartPointer<vtkActor> rimActor(const Skin& skin, const Palette& palette, double width);

}  // namespace weldline
