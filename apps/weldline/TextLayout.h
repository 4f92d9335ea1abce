#pragma once

#include <cstddef>
#include <string>

namespace weldline {

// Pieces of texts for people. `style` emphasises by terminal control sequences.

inline constexpr std::size_t labelWidth = 13;

std::string heading(const std::string& text, bool style);

// A label and a text that is broken at blanks and continues under itself. A word that is longer
// than a line, a file name for example, stays whole.
std::string entry(const std::string& label, const std::string& text, bool style,
                  std::size_t indent = labelWidth);

}  // namespace weldline
