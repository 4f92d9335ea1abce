#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace weldline::reference {

// What one process of a run did, in order: calls to the host with their arguments, results,
// contents of files. Two logs are equal when all entries are equal by bits, NaN equal to NaN;
// where the reference only knows a smallest number, the library's may be larger.
class Log {
  public:
    void number(const char* label, double value) {
        entries_.push_back({label, {value}, {}, false});
    }
    void text(const char* label, const std::string& value) {
        entries_.push_back({label, {}, value, false});
    }

    // Counts, of which each must be at least as large as the reference's, and zero where that is.
    void atLeast(const char* label, std::vector<double> counts) {
        entries_.push_back({label, std::move(counts), {}, true});
    }

    // Slots 1 to count of an array.
    template <class Array>
    void slots(const char* label, const Array& array, int count) {
        Entry entry{label, {}, {}, false};
        entry.values.reserve(static_cast<std::size_t>(count));
        for (int i = 1; i <= count; ++i) {
            entry.values.push_back(static_cast<double>(array[i]));
        }
        entries_.push_back(std::move(entry));
    }

    // Rows 1 to count of a row table, with their counts.
    template <class Rows>
    void rows(const char* label, const Rows& rows, int count) {
        Entry entry{label, {}, {}, false};
        for (int r = 1; r <= count; ++r) {
            for (int k = 0; k <= rows[r][0]; ++k) {
                entry.values.push_back(static_cast<double>(rows[r][k]));
            }
        }
        entries_.push_back(std::move(entry));
    }

    // The values of the last entry with the label, none if there is none.
    std::vector<double> last(const std::string& label) const;

    std::size_t size() const { return entries_.size(); }

    // The log as bytes, and back; for a log that another process has written.
    std::string bytes() const;
    static Log fromBytes(const std::string& bytes);

    // The first difference in words, or nothing.
    static std::optional<std::string> difference(const Log& library, const Log& reference);

  private:
    struct Entry {
        const char* label;
        std::vector<double> values;
        std::string text;
        bool smallest;  // the values are smallest numbers
    };

    static std::optional<std::string> difference(const Entry& library, const Entry& reference);

    std::vector<Entry> entries_;
};

}  // namespace weldline::reference
