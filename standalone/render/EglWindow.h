#pragma once

#include <vtkGenericOpenGLRenderWindow.h>

namespace weldline {

// A window of VTK without a display: OpenGL draws into memory, through EGL. Debian's VTK itself
// only knows windows of X.
class EglWindow : public vtkGenericOpenGLRenderWindow {
  public:
    static EglWindow* New();

    // Gets an OpenGL 3.2 context and makes the window ready to be drawn to. False where the machine
    // has none to give.
    bool connect();

    void MakeCurrent() override;
    bool IsCurrent() override;
    void OpenGLInitContext() override;

  protected:
    EglWindow() = default;
    ~EglWindow() override;

  private:
    EglWindow(const EglWindow&) = delete;
    void operator=(const EglWindow&) = delete;

    void* m_display = nullptr;  // EGLDisplay
    void* m_context = nullptr;  // EGLContext
};

}  // namespace weldline
