#include "KeyRule.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace weldline {

const std::array<Key, 10>& knownKeys() {
    using S = Settings;
    static const std::array<Key, 10> keys{{
        {"FlagDebugOutput", KeyKind::DebugSwitch},
        {"WeldlingAngleMethod", KeyKind::Integer, &S::method},
        {"nSmooth_beforeGrad", KeyKind::Integer, &S::smoothBefore},
        {"nSmooth_afterGrad", KeyKind::Integer, &S::smoothAfter},
        {"nGrad", KeyKind::Integer, &S::gradientIterations},
        {"TruncateAngle", KeyKind::FixedTruncation},
        {"BoundaryAngle", KeyKind::Real, nullptr, &S::boundaryAngle},
        {"GradValueFilterPara", KeyKind::Real, nullptr, &S::gradientFilter},
        {"VolumeFilter", KeyKind::Real, nullptr, &S::volumeFilter},
        {"GradMethodMFT", KeyKind::TruncatedReal, &S::gradientMethod},
    }};
    return keys;
}

std::string knownKeyNames() {
    std::string names;
    for (const Key& key : knownKeys()) names += (names.empty() ? "" : ", ") + std::string(key.name);
    return names;
}

KeyPlace takeKey(std::string& line, std::string_view key) {
    const std::size_t at = line.find(key);
    if (at == std::string::npos) return {};
    KeyPlace place;
    place.found = true;
    place.atStart = trimmed(std::string_view(line).substr(0, at)).empty();
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) return place;
    place.hasEquals = true;
    const std::size_t end = at + key.size();
    place.isWhole =
        equals >= end && trimmed(std::string_view(line).substr(end, equals - end)).empty();
    const bool blank = equals + 1 < line.size() && line[equals + 1] == ' ';
    line.erase(0, equals + (blank ? 2 : 1));
    return place;
}

LeadingNumber leadingInteger(const std::string& text) {
    char* end = nullptr;
    std::strtol(text.c_str(), &end, 10);
    // The value as atoi gives it, also for numbers beyond an int.
    return {static_cast<double>(std::atoi(text.c_str())), end != text.c_str(), std::string(end)};
}

LeadingNumber leadingReal(const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return {value, end != text.c_str(), std::string(end)};
}

int truncatedToInt(double value) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    const double whole = std::trunc(value);
    if (!(whole >= lowest && whole <= highest)) return lowest;
    return static_cast<int>(whole);
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::string shortNumber(double value) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.10g", value);
    return text.data();
}

}  // namespace weldline
