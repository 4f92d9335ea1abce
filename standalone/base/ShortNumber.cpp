#include "ShortNumber.h"

#include <array>
#include <charconv>

namespace weldline {

std::string shortNumber(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

}  // namespace weldline
