#include "Document.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

#include "base/Errors.h"

namespace weldline::accuracy {

std::string Table::markdown() const {
    std::vector<std::size_t> width(m_rows.front().size(), 3);
    for (const auto& row : m_rows)
        for (std::size_t c = 0; c < row.size(); ++c) width[c] = std::max(width[c], row[c].size());
    std::string text;
    for (std::size_t r = 0; r < m_rows.size(); ++r) {
        for (std::size_t c = 0; c < width.size(); ++c) {
            const std::string& cell = m_rows[r][c];
            text += "| " + cell + std::string(width[c] - cell.size() + 1, ' ');
        }
        text += "|\n";
        if (r > 0) continue;
        for (const std::size_t w : width) text += "|" + std::string(w + 2, '-');
        text += "|\n";
    }
    return text;
}

std::string fixed(double value, int decimals) {
    if (std::isnan(value)) return "-";
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string percent(double share) {
    return std::isnan(share) ? "-" : fixed(100.0 * share, 0) + " %";
}

Document::Document(std::string file) : m_file(std::move(file)) {
    if (m_file.empty()) return;
    std::ifstream stream(m_file);
    if (!stream) throw InputError("document '" + m_file + "' cannot be opened");
    std::ostringstream text;
    text << stream.rdbuf();
    m_text = text.str();
}

void Document::put(const std::string& name, const std::string& markdown) {
    const std::string head = "<!-- table " + name + " -->\n";
    const std::size_t begin = m_text.find(head);
    const std::size_t end = m_text.find("<!-- end table -->", begin);
    if (begin == std::string::npos || end == std::string::npos) {
        std::cout << "\n" << name << "\n\n" << markdown << std::flush;
        return;
    }
    const std::size_t first = begin + head.size();
    m_text.replace(first, end - first, "\n" + markdown + "\n");
}

void Document::save() const {
    if (m_file.empty()) return;
    std::ofstream stream(m_file);
    stream << m_text;
    stream.close();
    if (!stream) throw RunError("document '" + m_file + "' cannot be written");
}

}  // namespace weldline::accuracy
