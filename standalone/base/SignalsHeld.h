#pragma once

#include <csignal>

namespace weldline {

// Holds all signals back for its life: between the making of a temporary and its registration for
// removal no handler may come.
class SignalsHeld {
  public:
    SignalsHeld() {
        sigset_t all;
        ::sigfillset(&all);
        ::sigprocmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsHeld() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

  private:
    sigset_t before_{};
};

}  // namespace weldline
