#include "ReportTemplate.h"

// The file becomes part of the program as it is.
asm(".section .rodata\n"
    ".global weldlineReportBegin\n"
    ".global weldlineReportEnd\n"
    "weldlineReportBegin:\n"
    ".incbin \"" WELDLINE_REPORT_TEMPLATE
    "\"\n"
    "weldlineReportEnd:\n"
    ".previous\n");

extern "C" {
extern const char weldlineReportBegin[];  // NOLINT(modernize-avoid-c-arrays)
extern const char weldlineReportEnd[];    // NOLINT(modernize-avoid-c-arrays)
}

namespace weldline {

std::string_view reportTemplate() {
    return {weldlineReportBegin, static_cast<std::size_t>(weldlineReportEnd - weldlineReportBegin)};
}

}  // namespace weldline
