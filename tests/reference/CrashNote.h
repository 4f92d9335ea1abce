#pragma once

#include <string>

namespace weldline::reference {

// Remembers the case that is being run: if the process dies of a signal or a sanitizer's finding,
// the case is printed to standard error.
void noteCase(const std::string& text);

// From now on nothing is printed: somebody else watches this process.
void silenceNotes();

}  // namespace weldline::reference
