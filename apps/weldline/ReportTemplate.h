#pragma once

#include <string_view>

namespace weldline {

// The page without its data (web/report/dist/report.html); the data takes the place of
// kReportPlaceholder, which stands in it once.
std::string_view reportTemplate();

inline constexpr std::string_view kReportPlaceholder = "@REPORT_DATA@";

}  // namespace weldline
