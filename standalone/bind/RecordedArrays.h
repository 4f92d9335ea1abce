#pragma once

#include <vector>

namespace weldline {

// One cell array of the library as it passed the host's exchange, which sees every array after
// each step that fills it: values per own cell, 0-based.
struct RecordedArray {
    std::vector<double> first;  // at its first exchange
    std::vector<double> last;   // at its last one
};

// By first exchange: the flow variable where it is smoothed, the previous gradient of an iterated
// scheme, then x, y and z of each gradient set.
using RecordedArrays = std::vector<RecordedArray>;

}  // namespace weldline
