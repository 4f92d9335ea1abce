#pragma once

#include <string>

#include "Arguments.h"

namespace CLI {
class App;
}

namespace weldline {

// Options that commands on filling results share.
void addInput(CLI::App& command, std::string& input);
void addTime(CLI::App& command, std::string& time);
void addScale(CLI::App& command, double& scale);
void checkScale(double scale);
void addPatterns(CLI::App& command, GroupPatterns& patterns);
void addAutoGroups(CLI::App& command, bool& autoGroups);
void addJson(CLI::App& command, std::string& json);

}  // namespace weldline
