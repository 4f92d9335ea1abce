#pragma once

#include <string>
#include <vector>

namespace weldline::accuracy {

// A Markdown table under construction; all cells are text.
class Table {
  public:
    explicit Table(std::vector<std::string> head) : m_rows{std::move(head)} {}
    void add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }
    std::string markdown() const;  // columns padded to equal width

  private:
    std::vector<std::vector<std::string>> m_rows;
};

// Numbers for tables; NaN is shown as a dash.
std::string fixed(double value, int decimals);
std::string percent(double share);  // 0.25 -> "25 %"

// A Markdown file in which tables stand between the lines "<!-- table NAME -->" and
// "<!-- end table -->". What stands between them is replaced, all else is kept.
class Document {
  public:
    // An empty file name: there is no document, and every table goes to standard output.
    explicit Document(std::string file);

    // A table for which the document has no place goes to standard output.
    void put(const std::string& name, const std::string& markdown);

    // Writes the file. Throws RunError when that fails.
    void save() const;

  private:
    std::string m_file;
    std::string m_text;
};

}  // namespace weldline::accuracy
