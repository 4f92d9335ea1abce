#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace weldline::core {

// Owner of zero-filled arrays of any type; all are released with it, in no list by hand.
class ArrayOwner {
  public:
    // A new array of `count` zeros. Throws std::bad_alloc (or a derived class) when memory is
    // exhausted or the count is beyond what an array can have.
    template <class Value>
    Value* zeros(std::size_t count) {
        auto array = std::make_unique<Value[]>(count);
        m_arrays.emplace_back(nullptr, [](void* p) { delete[] static_cast<Value*>(p); });
        m_arrays.back().reset(array.release());
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
    std::vector<std::unique_ptr<void, void (*)(void*)>> m_arrays;
};

// The memory behind the record's owned fields, with the sizes it was made for. The record's counts
// follow the mesh of the last binding; the work is confined to what these sizes allow.
struct WorkStorage {
    ArrayOwner arrays;
    int cellSlots = -1;  // last slot of the per-cell arrays, -1 before the first binding
    int nodes = -1;      // last entry of the per-node arrays

    ArrayOwner nodeCellRows;
    int nodeCellNodes = -1;  // last row of m_ppNodeCell

    ArrayOwner cellInnerFaceRows;
    int cellInnerFaceCells = -1;  // last row of m_ppCellInnerFace
};

}  // namespace weldline::core
