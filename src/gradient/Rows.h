#pragma once

#include <cstddef>
#include <span>

#include "Extent.h"
#include "WorkStorage.h"

namespace weldline::core {

// Rows of values, 1-based, one behind the other in one array. They are filled in two rounds: count
// the values of every row, make room, add them. A row keeps the order in which it got its values.
template <class Value>
class Rows {
  public:
    explicit Rows(int rows) : m_size(slotsUpTo(rows)), m_first(zeros<std::size_t>(m_size + 2)) {}

    void count(int row, std::size_t values = 1) { m_first[row + 2] += values; }

    void makeRoom() {
        for (std::size_t i = 1; i < m_size + 2; ++i) m_first[i] += m_first[i - 1];
        m_values = zeros<Value>(m_first[m_size + 1]);
    }

    // Until a row is full, m_first[row + 1] is where its next value goes; then it is where the next
    // row begins.
    void add(int row, const Value& value) { m_values[m_first[row + 1]++] = value; }

    std::span<const Value> operator[](int row) const {
        return {m_values + m_first[row], m_values + m_first[row + 1]};
    }

  private:
    template <class Entry>
    Entry* zeros(std::size_t count) {
        return m_memory.zeros<Entry>(count);
    }

    ArrayOwner m_memory;
    std::size_t m_size;
    std::size_t* m_first;
    Value* m_values = nullptr;
};

// Numbers 1 to `rows` in an order in which neighbours lie close together: breadth first from the
// first one that is left, again and again, row [n] being the neighbours of number n. The order is
// 1-based: entry 0 is not used.
int* breadthFirst(const Rows<int>& neighbours, int rows, ArrayOwner& memory);

}  // namespace weldline::core
