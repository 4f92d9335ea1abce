#include "SceneWindow.h"

#include <vtkNew.h>

#include <cstdlib>

#include "EglWindow.h"
#include "base/Errors.h"

namespace weldline {

vtkSmartPointer<vtkRenderWindow> openWindow(int size) {
    vtkSmartPointer<vtkRenderWindow> window;
    vtkNew<EglWindow> egl;
    if (egl->connect()) {
        egl->SetFrameBlitModeToNoBlit();
        window = egl;
    } else {
        const char* display = std::getenv("DISPLAY");
        if (display == nullptr || *display == '\0')
            throw RunError(
                "no picture can be drawn: EGL gives no OpenGL 3.2, and DISPLAY names no X server; "
                "install libegl1, libegl-mesa0 and libgl1-mesa-dri");
        window = vtkSmartPointer<vtkRenderWindow>::New();
    }
    window->SetOffScreenRendering(1);
    window->SetMultiSamples(0);
    window->SetAlphaBitPlanes(1);
    window->SetSize(size, size);
    return window;
}

}  // namespace weldline
