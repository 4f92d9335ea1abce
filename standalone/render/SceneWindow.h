#pragma once

#include <vtkRenderWindow.h>
#include <vtkSmartPointer.h>

namespace weldline {

// A window that nobody sees, to draw `size` by `size` pixels into: through EGL where that is
// possible, else through the X server that the environment variable DISPLAY names. Throws RunError
// where there is neither.
vtkSmartPointer<vtkRenderWindow> openWindow(int size);

}  // namespace weldline
