#pragma once

#include <string>
#include <vector>

namespace weldline::test {

// A control section with the given lines, closed.
inline std::string section(const std::vector<std::string>& lines) {
    std::string text = "[WeldLinePlotCtrl]\n";
    for (const std::string& line : lines) text += line + "\n";
    return text + "[/WeldLinePlotCtrl]\n";
}

}  // namespace weldline::test
