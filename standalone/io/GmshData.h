#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "GmshCursor.h"

namespace weldline {

// One $ElementData section: values of some elements at one time, which stay in the file.
struct GmshData {
    std::string name;
    double time = 0.0;
    int components = 1;
    std::size_t elements = 0;  // that have values
    std::uint64_t place = 0;   // of the first element and its values
};

// Reads what a section says of its values, from behind the line of its name, and goes over them.
// Values in text are looked at, so that whatever is no number is told here; of binary ones, where
// any bytes are numbers, the file must have all. Throws InputError.
GmshData passElementData(GmshCursor& cursor);

// Hands out one element after another, by the file's number, with its values. Throws InputError,
// also where the file has been changed since the cursor was there.
void readElementData(GmshCursor& cursor, const GmshData& data,
                     const std::function<void(std::int64_t, const double*)>& take);

}  // namespace weldline
