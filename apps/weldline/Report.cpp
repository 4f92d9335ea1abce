#include "Report.h"

#include <filesystem>

#include "Console.h"
#include "Outputs.h"
#include "ReadResult.h"
#include "ReportData.h"
#include "ReportTemplate.h"
#include "base/AtomicFile.h"
#include "base/Errors.h"

namespace weldline {

namespace {

void checkName(const std::string& output) {
    const auto kind = std::filesystem::path(output).extension();
    if (kind != ".html" && kind != ".htm")
        throw UsageError(output + ": not a name for the page; -o needs a file that ends in .html");
}

std::string pageWith(const std::string& data) {
    const std::string_view page = reportTemplate();
    const std::size_t at = page.find(kReportPlaceholder);
    std::string text;
    text.reserve(page.size() + data.size());
    text += page.substr(0, at);
    text += data;
    text += page.substr(at + kReportPlaceholder.size());
    return text;
}

}  // namespace

void writeReport(const ReportOptions& options) {
    checkName(options.output);
    checkTarget(options.output, options.input);
    const ResultModel model = [&] {
        const StandardOutputAside aside;
        return readResult(options.input, options.lines, options.carry);
    }();
    writeWholeFile(options.output, pageWith(reportData(model, options.lines, options.title)));
}

}  // namespace weldline
