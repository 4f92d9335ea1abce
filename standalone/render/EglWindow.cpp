// GLEW first: it brings the OpenGL headers along.
#include <vtk_glew.h>

#include "EglWindow.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <vtkObjectFactory.h>

#include <array>

namespace weldline {

namespace {

EGLDisplay openDisplay() {
    const auto displayOf = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        ::eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (displayOf == nullptr) return EGL_NO_DISPLAY;
    EGLDisplay display = displayOf(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY) return EGL_NO_DISPLAY;
    return ::eglInitialize(display, nullptr, nullptr) == EGL_TRUE ? display : EGL_NO_DISPLAY;
}

EGLContext openContext(EGLDisplay display) {
    constexpr std::array<EGLint, 5> wanted{EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE,
                                           EGL_PBUFFER_BIT, EGL_NONE};
    constexpr std::array<EGLint, 7> version{EGL_CONTEXT_MAJOR_VERSION,
                                            3,
                                            EGL_CONTEXT_MINOR_VERSION,
                                            2,
                                            EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                            EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                            EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (::eglBindAPI(EGL_OPENGL_API) != EGL_TRUE ||
        ::eglChooseConfig(display, wanted.data(), &config, 1, &count) != EGL_TRUE || count < 1)
        return EGL_NO_CONTEXT;
    return ::eglCreateContext(display, config, EGL_NO_CONTEXT, version.data());
}

}  // namespace

vtkStandardNewMacro(EglWindow);

EglWindow::~EglWindow() {
    Finalize();
    if (m_display == nullptr) return;
    ::eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (m_context != nullptr) ::eglDestroyContext(m_display, m_context);
    ::eglTerminate(m_display);
}

bool EglWindow::connect() {
    m_display = openDisplay();
    if (m_display == EGL_NO_DISPLAY) return false;
    m_context = openContext(m_display);
    if (m_context == EGL_NO_CONTEXT) return false;
    MakeCurrent();
    if (!IsCurrent()) return false;
    OpenGLInit();
    SetReadyForRendering(true);
    return GlewInitValid;
}

void EglWindow::MakeCurrent() {
    if (m_context != nullptr)
        ::eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, m_context);
}

bool EglWindow::IsCurrent() {
    return m_context != nullptr && ::eglGetCurrentContext() == m_context;
}

// GLEW looks for the display of X after it has all it needs: its answer that there is none is no
// failure here.
void EglWindow::OpenGLInitContext() {
    ContextCreationTime.Modified();
    if (Initialized) return;
    glewExperimental = GL_TRUE;
    const GLenum answer = ::glewInit();
    GlewInitValid = answer == GLEW_OK || answer == GLEW_ERROR_NO_GLX_DISPLAY;
    if (!GlewInitValid) return;
    Initialized = true;
    std::array<GLfloat, 2> lineWidths{1.0F, 1.0F};
    ::glGetFloatv(GL_ALIASED_LINE_WIDTH_RANGE, lineWidths.data());
    MaximumHardwareLineWidth = lineWidths[1];
}

}  // namespace weldline
