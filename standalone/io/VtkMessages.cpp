#include "VtkMessages.h"

#include <vtkLogger.h>
#include <vtkOutputWindow.h>
#include <vtkSmartPointer.h>

#include <algorithm>
#include <string_view>

namespace weldline {
namespace {

class CatchingWindow : public vtkOutputWindow {
  public:
    static CatchingWindow* New() { return new CatchingWindow; }

    void DisplayText(const char* /*text*/) override {}
    void DisplayDebugText(const char* /*text*/) override {}
    // On purpose: the legacy reader calls it a warning when it meets the end of a damaged file.
    void DisplayWarningText(const char* text) override {
        if (std::string_view(text).find("Error reading") != std::string_view::npos) {
            DisplayErrorText(text);
        }
    }
    void DisplayGenericWarningText(const char* text) override { DisplayWarningText(text); }
    void DisplayErrorText(const char* text) override {
        if (firstError.empty()) {
            firstError = text;
        }
    }

    std::string firstError;
};

// "ERROR: In file.cxx, line 7\nvtkReader (0x5581): What happened\n\n" becomes "What happened".
std::string plainText(std::string text) {
    const std::size_t object = text.find("): ");
    const std::size_t place = text.find(", line ");
    if (object != std::string::npos) {
        text.erase(0, object + 3);
    } else if (place != std::string::npos) {
        text.erase(0, text.find('\n', place));
    }
    std::replace(text.begin(), text.end(), '\n', ' ');
    text.erase(text.find_last_not_of(" .") + 1);
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

}  // namespace

struct VtkMessages::State {
    vtkSmartPointer<vtkOutputWindow> before = vtkOutputWindow::GetInstance();
    int loggerBefore = vtkLogger::GetCurrentVerbosityCutoff();
    vtkSmartPointer<CatchingWindow> window = vtkSmartPointer<CatchingWindow>::New();
};

VtkMessages::VtkMessages() : state_(std::make_unique<State>()) {
    vtkOutputWindow::SetInstance(state_->window);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

VtkMessages::~VtkMessages() {
    vtkOutputWindow::SetInstance(state_->before);
    vtkLogger::SetStderrVerbosity(static_cast<vtkLogger::Verbosity>(state_->loggerBefore));
}

bool VtkMessages::hasError() const {
    return !state_->window->firstError.empty();
}

std::string VtkMessages::firstError() const {
    return plainText(state_->window->firstError);
}

}  // namespace weldline
