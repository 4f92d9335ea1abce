#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace weldline {

// A list of integer lists in two flat arrays: row i holds entries[offsets[i]] up to, not
// including, entries[offsets[i + 1]].
struct Rows {
    std::vector<std::int64_t> offsets{0};
    std::vector<int> entries;

    int count() const { return static_cast<int>(offsets.size()) - 1; }

    std::span<const int> operator[](int row) const {
        const auto begin = static_cast<std::size_t>(offsets[row]);
        const auto end = static_cast<std::size_t>(offsets[row + 1]);
        return {entries.data() + begin, end - begin};
    }

    void append(std::span<const int> row) {
        entries.insert(entries.end(), row.begin(), row.end());
        offsets.push_back(static_cast<std::int64_t>(entries.size()));
    }

    // Keeps the first rows.
    void truncate(std::size_t rows) {
        offsets.resize(rows + 1);
        entries.resize(static_cast<std::size_t>(offsets.back()));
    }
};

}  // namespace weldline
