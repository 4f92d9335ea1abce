#include "RowTable.h"

#include <numeric>

namespace weldline {

RowTable::RowTable(const std::vector<int>& sizes) {
    const auto members = std::accumulate(sizes.begin(), sizes.end(), std::size_t{0});
    m_entries.assign(members + sizes.size(), 0);
    m_rows.reserve(sizes.size() + 1);
    int* next = m_entries.data();
    for (const int size : sizes) {
        m_rows.push_back(next);
        *next = size;
        next += size + 1;
    }
}

RowTable oneBased(const Rows& rows, int first) {
    std::vector<int> sizes;
    for (int i = first; i < rows.count(); ++i) sizes.push_back(static_cast<int>(rows[i].size()));
    RowTable table(sizes);
    for (int i = first; i < rows.count(); ++i) {
        int* row = table.row(i - first + 1);
        for (const int entry : rows[i]) *++row = entry + 1;
    }
    return table;
}

}  // namespace weldline
