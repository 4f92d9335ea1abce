#include "GmshData.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace weldline {

namespace {

constexpr int mostComponents = 9;

std::size_t lineCount(GmshCursor& cursor) {
    return cursor.count(cursor.lineNumber(), 1);
}

double timeOf(const GmshCursor& cursor, const std::string& text) {
    double time = 0.0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), time);
    if (read.ec != std::errc() || !std::isfinite(time))
        cursor.fail("'" + text.substr(0, 40) + "' is no time");
    return time;
}

// Texts, real numbers and whole numbers, each after their count, are lines in any file.
GmshData readHead(GmshCursor& cursor) {
    GmshData data;
    for (std::size_t i = 0, texts = lineCount(cursor); i < texts; ++i) {
        const std::string text = cursor.line();
        if (i == 0) data.name = text.size() < 2 ? text : text.substr(1, text.size() - 2);
    }
    for (std::size_t i = 0, reals = lineCount(cursor); i < reals; ++i) {
        const std::string text = cursor.line();
        if (i == 0) data.time = timeOf(cursor, text);
    }
    std::array<std::int64_t, 3> numbers{};  // step, components, elements
    const std::int64_t given = cursor.lineNumber();
    for (std::int64_t i = 0; i < given; ++i) {
        const std::int64_t number = cursor.lineNumber();
        if (i < 3) numbers.at(static_cast<std::size_t>(i)) = number;
    }
    if (data.name.empty() || numbers[1] < 1 || numbers[1] > mostComponents)
        cursor.fail("a field has no name, or not 1 to 9 components");
    data.components = static_cast<int>(numbers[1]);
    data.elements = cursor.count(numbers[2], 2);
    data.place = cursor.place();
    return data;
}

void readValues(GmshCursor& cursor, const GmshData& data,
                const std::function<void(std::int64_t, const double*)>& take) {
    std::array<double, mostComponents> values{};
    for (std::size_t left = data.elements; left > 0; --left) {
        const std::int64_t element = cursor.integer();
        for (int i = 0; i < data.components; ++i)
            values.at(static_cast<std::size_t>(i)) = cursor.real();
        take(element, values.data());
    }
}

}  // namespace

GmshData passElementData(GmshCursor& cursor) {
    GmshData data = readHead(cursor);
    const std::size_t bytesEach =
        sizeof(std::int32_t) + sizeof(double) * static_cast<std::size_t>(data.components);
    if (cursor.isBinary())
        cursor.passBytes(data.elements, bytesEach);
    else
        readValues(cursor, data, [](std::int64_t, const double*) {});
    return data;
}

void readElementData(GmshCursor& cursor, const GmshData& data,
                     const std::function<void(std::int64_t, const double*)>& take) {
    cursor.goBack(data.place);
    readValues(cursor, data, take);
}

}  // namespace weldline
