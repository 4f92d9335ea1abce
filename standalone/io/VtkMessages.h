#pragma once

#include <memory>
#include <string>

namespace weldline {

// While it lives, what VTK would print to standard error is kept here instead. Readers often answer
// "no error" for a broken file and only print; the first error printed is the reason to tell.
// They may be nested; not for several threads.
class VtkMessages {
  public:
    VtkMessages();
    ~VtkMessages();
    VtkMessages(const VtkMessages&) = delete;
    VtkMessages& operator=(const VtkMessages&) = delete;

    bool hasError() const;

    // The first error in one line, without VTK's own file names and addresses.
    std::string firstError() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace weldline
