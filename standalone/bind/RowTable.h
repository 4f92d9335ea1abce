#pragma once

#include <vector>

#include "mesh/Rows.h"

namespace weldline {

// One row table of the host contract in two flat arrays: pointer i (1-based, pointer 0 is null)
// leads to a row whose element 0 is the count and elements 1 to count the members.
class RowTable {
  public:
    RowTable() = default;
    // Sizes of the rows 0, 1, ... (0-based); all counts are set, all members 0.
    explicit RowTable(const std::vector<int>& sizes);

    int* row(int number) { return m_rows[number]; }  // 1-based
    int** data() { return m_rows.data(); }

  private:
    std::vector<int> m_entries;
    std::vector<int*> m_rows = std::vector<int*>(1, nullptr);
};

// The rows from `first` on with all their members, moved to 1-based numbers.
RowTable oneBased(const Rows& rows, int first = 0);

}  // namespace weldline
