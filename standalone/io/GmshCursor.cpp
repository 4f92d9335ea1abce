#include "GmshCursor.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <system_error>

#include "OpenDataSet.h"

namespace weldline {

namespace {

constexpr std::string_view blanks = " \t\r\n";

// How far ahead the first of these characters is, or the end of the file.
std::size_t distanceTo(FileWindow& window, std::string_view characters) {
    std::size_t known = 0;
    for (;;) {
        const std::size_t found = window.ahead().find_first_of(characters, known);
        if (found != std::string_view::npos) return found;
        known = window.ahead().size();
        if (!window.extend()) return known;
    }
}

}  // namespace

void GmshCursor::fail(const std::string& reason) const {
    failOnInput(file(), "the gmsh file is damaged or incomplete (" + reason + ")");
}

std::string GmshCursor::nextSection() {
    while (!window_.ahead().empty() || window_.extend()) {
        const std::string text = line();
        if (text.starts_with('$')) return text.substr(1);
    }
    return {};
}

void GmshCursor::leaveSection(const std::string& name) {
    const std::string end = "$End" + name;
    for (;;) {
        const std::string_view ahead = window_.ahead();
        const std::size_t found = ahead.find(end);
        if (found != std::string_view::npos) {
            window_.pass(found);
            line();
            return;
        }
        // The end may have started.
        window_.pass(ahead.size() - std::min(ahead.size(), end.size() - 1));
        if (!window_.extend()) fail("'" + end + "' is missing");
    }
}

std::string GmshCursor::line() {
    const std::size_t length = distanceTo(window_, "\n");
    std::string text(window_.ahead().substr(0, length));
    window_.pass(std::min(length + 1, window_.ahead().size()));
    while (!text.empty() && blanks.find(text.back()) != std::string_view::npos) text.pop_back();
    return text;
}

std::int64_t GmshCursor::lineNumber() {
    const std::string number = line();
    std::int64_t value = 0;
    const char* end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end)
        fail("'" + number.substr(0, 40) + "' is no whole number");
    return value;
}

// The view ends with the next move.
std::string_view GmshCursor::word() {
    for (;;) {
        const std::size_t begin = window_.ahead().find_first_not_of(blanks);
        window_.pass(std::min(begin, window_.ahead().size()));
        if (begin != std::string_view::npos) break;
        if (!window_.extend()) fail("it ends too early");
    }
    const std::size_t length = distanceTo(window_, blanks);
    const std::string_view word = window_.ahead().substr(0, length);
    window_.pass(length);
    return word;
}

template <class Number>
Number GmshCursor::text() {
    const std::string_view number = word();
    Number value{};
    const char* end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end)
        fail("'" + std::string(number.substr(0, 40)) + "' is no number of the kind that is needed");
    return value;
}

template <class Number>
Number GmshCursor::binary() {
    Number value{};
    while (window_.ahead().size() < sizeof value)
        if (!window_.extend()) fail("it ends too early");
    std::memcpy(&value, window_.ahead().data(), sizeof value);
    window_.pass(sizeof value);
    return value;
}

std::int64_t GmshCursor::integer() {
    return isBinary_ ? binary<std::int32_t>() : text<std::int32_t>();
}

std::int64_t GmshCursor::size() {
    return isBinary_ ? binary<std::int64_t>() : text<std::int64_t>();
}

double GmshCursor::real() {
    return isBinary_ ? binary<double>() : text<double>();
}

std::size_t GmshCursor::count(std::int64_t items, std::size_t numbersEach) const {
    // A number in text is a digit and a blank at least.
    const std::size_t bytesEach = numbersEach * (isBinary_ ? 4 : 2);
    if (items < 0 || static_cast<std::uint64_t>(items) > window_.size() / bytesEach)
        fail("it announces " + std::to_string(items) + " items, more than it can hold");
    return static_cast<std::size_t>(items);
}

void GmshCursor::passBytes(std::size_t items, std::size_t bytesEach) {
    const std::uint64_t left = window_.size() - std::min(window_.at(), window_.size());
    if (items > left / bytesEach) fail("it ends too early");
    window_.goTo(window_.at() + items * bytesEach);
}

void GmshCursor::goBack(std::uint64_t place) {
    if (window_.isChanged())
        failOnInput(file(), "the file was changed while it was read; read it again");
    window_.goTo(place);
}

}  // namespace weldline
