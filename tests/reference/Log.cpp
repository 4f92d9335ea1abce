#include "Log.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace weldline::reference {

namespace {

bool sameBits(double a, double b) {
    if (std::isnan(a) && std::isnan(b)) {
        return true;
    }
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

std::string inWords(double value) {
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%.17g (%a)", value, value);
    return buffer;
}

}  // namespace

std::vector<double> Log::last(const std::string& label) const {
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
        if (label == entry->label) {
            return entry->values;
        }
    }
    return {};
}

std::optional<std::string> Log::difference(const Entry& library, const Entry& reference) {
    if (std::strcmp(library.label, reference.label) != 0) {
        return std::string("the library has \"") + library.label + "\", the reference \"" +
               reference.label + "\"";
    }
    const std::string where = std::string("\"") + library.label + "\": ";
    if (library.text != reference.text) {
        return where + "library:\n" + library.text + "\n-- reference:\n" + reference.text + "\n--";
    }
    if (library.values.size() != reference.values.size()) {
        return where + "the library has " + std::to_string(library.values.size()) +
               " values, the reference " + std::to_string(reference.values.size());
    }
    for (std::size_t i = 0; i < library.values.size(); ++i) {
        if (!sameBits(library.values[i], reference.values[i])) {
            return where + "value " + std::to_string(i + 1) + " of " +
                   std::to_string(library.values.size()) + ": library " +
                   inWords(library.values[i]) + ", reference " + inWords(reference.values[i]);
        }
    }
    return std::nullopt;
}

std::optional<std::string> Log::difference(const Log& library, const Log& reference) {
    const std::size_t common = std::min(library.size(), reference.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (auto found = difference(library.entries_[i], reference.entries_[i])) {
            return "entry " + std::to_string(i + 1) + " " + *found;
        }
    }
    if (library.size() != reference.size()) {
        const bool more = library.size() > common;
        return std::string(more ? "the library" : "the reference") + " goes on with \"" +
               (more ? library : reference).entries_[common].label + "\"";
    }
    return std::nullopt;
}

}  // namespace weldline::reference
