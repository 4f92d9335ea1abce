#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace weldline::core {

// Owner of zero-filled arrays of plain types; all are released with it, in no list by hand.
//
// The zeros come from calloc: large arrays are pages that the system has cleared anyway and hands
// over one by one when they are first touched, so that what is never written costs nothing.
class ArrayOwner {
  public:
    // A new array of `count` zeros. Throws std::bad_alloc (or a derived class) when memory is
    // exhausted or the count is beyond what an array can have.
    template <class Value>
    Value* zeros(std::size_t count) {
        static_assert(std::is_trivial_v<Value>);
        if (count > PTRDIFF_MAX / sizeof(Value)) throw std::bad_array_new_length();
        m_arrays.emplace_back();
        m_arrays.back().reset(std::calloc(std::max<std::size_t>(count, 1), sizeof(Value)));
        if (m_arrays.back() == nullptr) throw std::bad_alloc();
        return static_cast<Value*>(m_arrays.back().get());
    }

    // `rows` rows of `width` zeros each, rows one behind the other in one array.
    template <class Value>
    Value** zeroRows(std::size_t rows, std::size_t width) {
        Value* values = zeros<Value>(rows * width);
        Value** table = zeros<Value*>(rows);
        for (std::size_t row = 0; row < rows; ++row) table[row] = values + row * width;
        return table;
    }

  private:
    struct Release {
        void operator()(void* array) const { std::free(array); }
    };

    std::vector<std::unique_ptr<void, Release>> m_arrays;
};

// The memory behind the record's owned fields, with the sizes it was made for. The record's counts
// follow the mesh of the last binding; the work is confined to what these sizes allow.
struct WorkStorage {
    ArrayOwner arrays;
    int cellSlots = -1;      // last slot of the per-cell arrays, -1 before the first binding
    int nodes = -1;          // last entry of the per-node arrays
    bool isCleared = false;  // nobody has written to the arrays since they were made

    ArrayOwner nodeCellRows;
    int nodeCellNodes = -1;  // last row of m_ppNodeCell

    ArrayOwner cellInnerFaceRows;
    int cellInnerFaceCells = -1;  // last row of m_ppCellInnerFace
};

}  // namespace weldline::core
