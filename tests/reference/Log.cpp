#include "Log.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <set>
#include <stdexcept>

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
        const double l = library.values[i];
        const double r = reference.values[i];
        const bool agree = library.smallest ? l >= r && (l == 0.0) == (r == 0.0) : sameBits(l, r);
        if (!agree) {
            return where + "value " + std::to_string(i + 1) + " of " +
                   std::to_string(library.values.size()) + ": library " + inWords(l) +
                   ", reference " + inWords(r);
        }
    }
    return std::nullopt;
}

namespace {

void append(std::string& bytes, const void* data, std::size_t count) {
    bytes.append(static_cast<const char*>(data), count);
}

void appendText(std::string& bytes, const std::string& text) {
    const std::size_t length = text.size();
    append(bytes, &length, sizeof length);
    bytes += text;
}

// Reads the bytes from the front.
class Reader {
  public:
    explicit Reader(const std::string& bytes) : bytes_(bytes) {}
    bool atEnd() const { return at_ == bytes_.size(); }

    void read(void* data, std::size_t count) {
        if (bytes_.size() - at_ < count) throw std::runtime_error("a log came in pieces");
        if (count > 0) std::memcpy(data, bytes_.data() + at_, count);
        at_ += count;
    }
    std::size_t number() {
        std::size_t value = 0;
        read(&value, sizeof value);
        return value;
    }
    std::string text() {
        std::string result(std::min(number(), bytes_.size()), '\0');
        read(result.data(), result.size());
        return result;
    }

  private:
    const std::string& bytes_;
    std::size_t at_ = 0;
};

}  // namespace

std::string Log::bytes() const {
    std::string result;
    for (const Entry& entry : entries_) {
        appendText(result, entry.label);
        appendText(result, entry.text);
        const std::size_t count = entry.values.size();
        append(result, &count, sizeof count);
        append(result, entry.values.data(), count * sizeof(double));
        append(result, &entry.smallest, sizeof entry.smallest);
    }
    return result;
}

Log Log::fromBytes(const std::string& bytes) {
    static std::set<std::string> labels;  // Entries refer to their labels.
    Log log;
    Reader reader(bytes);
    while (!reader.atEnd()) {
        Entry entry{labels.insert(reader.text()).first->c_str(), {}, reader.text(), false};
        entry.values.resize(std::min(reader.number(), bytes.size()));
        reader.read(entry.values.data(), entry.values.size() * sizeof(double));
        reader.read(&entry.smallest, sizeof entry.smallest);
        log.entries_.push_back(std::move(entry));
    }
    return log;
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
