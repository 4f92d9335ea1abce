#include "TextLayout.h"

#include <algorithm>

namespace weldline {

namespace {

constexpr std::size_t tableWidth = 80;

}  // namespace

std::string heading(const std::string& text, bool style) {
    return style ? "\033[1m" + text + "\033[0m" : text;
}

std::string entry(const std::string& label, const std::string& text, bool style,
                  std::size_t indent) {
    std::string result;
    std::string line;
    std::size_t at = 0;
    const auto endLine = [&] {
        result += (result.empty() ? "" : std::string(indent, ' ')) + line + "\n";
        line.clear();
    };
    while (at < text.size()) {
        const std::size_t blank = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, blank - at);
        if (!line.empty() && indent + line.size() + 1 + word.size() > tableWidth) endLine();
        line += (line.empty() ? "" : " ") + word;
        at = blank + 1;
    }
    endLine();
    const std::size_t filler = indent - std::min(indent, label.size());
    return heading(label, style) + std::string(filler, ' ') + result;
}

}  // namespace weldline
