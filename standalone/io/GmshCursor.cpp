#include "GmshCursor.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <system_error>

#include "OpenDataSet.h"

namespace weldline {

namespace {

constexpr std::string_view blanks = " \t\r\n";

}  // namespace

void GmshCursor::fail(const std::string& reason) const {
    failOnInput(file_, "the gmsh file is damaged or incomplete (" + reason + ")");
}

std::string GmshCursor::nextSection() {
    while (at_ < bytes_.size()) {
        const std::string text = line();
        if (text.starts_with('$')) return text.substr(1);
    }
    return {};
}

void GmshCursor::leaveSection(const std::string& name) {
    const std::size_t end = bytes_.find("$End" + name, at_);
    if (end == std::string::npos) fail("'$End" + name + "' is missing");
    at_ = end;
    line();
}

std::string GmshCursor::line() {
    const std::size_t end = std::min(bytes_.find('\n', at_), bytes_.size());
    std::string text = bytes_.substr(at_, end - at_);
    at_ = std::min(end + 1, bytes_.size());
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

std::string_view GmshCursor::word() {
    const std::size_t begin = bytes_.find_first_not_of(blanks, at_);
    if (begin == std::string::npos) fail("it ends too early");
    at_ = std::min(bytes_.find_first_of(blanks, begin), bytes_.size());
    return std::string_view(bytes_).substr(begin, at_ - begin);
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
    if (bytes_.size() - at_ < sizeof(Number)) fail("it ends too early");
    Number value{};
    std::memcpy(&value, bytes_.data() + at_, sizeof value);
    at_ += sizeof value;
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
    if (items < 0 || static_cast<std::uint64_t>(items) > bytes_.size() / bytesEach)
        fail("it announces " + std::to_string(items) + " items, more than it can hold");
    return static_cast<std::size_t>(items);
}

}  // namespace weldline
