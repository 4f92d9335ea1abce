#include "CrashNote.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>

// The sanitizers' run-time library has this hook; without it the address is null.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace weldline::reference {

namespace {

constexpr std::size_t longest = 2000;
char note[longest + 2] = {};
std::size_t noteLength = 0;
bool silent = false;

void printNote() {
    if (silent) return;
    const char intro[] = "\nThe process died in this case: ";
    const char hint[] = "scripts/soak --shrink \"...\" makes it simpler.\n";
    const bool printed = write(STDERR_FILENO, intro, sizeof intro - 1) > 0 &&
                         write(STDERR_FILENO, note, noteLength) > 0 &&
                         write(STDERR_FILENO, hint, sizeof hint - 1) > 0;
    if (!printed) {
        _exit(1);
    }
}

void onSignal(int signal) {
    printNote();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void install() {
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(printNote);
        return;
    }
    for (int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        std::signal(signal, onSignal);
    }
}

}  // namespace

void silenceNotes() {
    silent = true;
}

void noteCase(const std::string& text) {
    static const bool installed = (install(), true);
    (void)installed;
    noteLength = std::min(text.size(), longest);
    std::copy_n(text.begin(), noteLength, note);
    note[noteLength++] = '\n';
}

}  // namespace weldline::reference
