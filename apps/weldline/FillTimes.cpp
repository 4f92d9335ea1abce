#include "FillTimes.h"

#include <fmt/format.h>

#include <filesystem>

#include "Console.h"
#include "Outputs.h"
#include "Progress.h"
#include "TextLayout.h"
#include "io/DataSet.h"
#include "io/WriteFillTime.h"

namespace weldline {

namespace {

double percent(std::int64_t part, std::int64_t whole) {
    return 100.0 * static_cast<double>(part) / static_cast<double>(whole);
}

std::string fillTable(const FillTimeOptions& options, const SeriesFill& fill, bool style) {
    std::string text = entry("Input", options.input, style);
    text += entry("Field", fmt::format("{}, full from {:g}", fill.field, fill.level), style);
    text += entry("Times",
                  fmt::format("{} from {:g} to {:g}, the largest step is {:g}", fill.steps,
                              fill.firstTime, fill.lastTime, fill.largestStep),
                  style);
    text += entry("Cells", fmt::format("{}", fill.cells), style);
    text += entry("Filled",
                  fmt::format("{} ({:.2f} %), from {:.6g} to {:.6g}", fill.filled,
                              percent(fill.filled, fill.cells), fill.earliest, fill.latest),
                  style);
    text +=
        entry("At start", fmt::format("{} of them full at the first time", fill.atStart), style);
    text += entry("Emptied",
                  fmt::format("{} of them below {:g} again later; the first crossing counts",
                              fill.emptied, fill.level),
                  style);
    text += entry("Never filled",
                  fmt::format("{} ({:.2f} %)", fill.never, percent(fill.never, fill.cells)), style);
    return text + entry("Result", options.output, style);
}

void tellNotes(const DataSet& data) {
    const SeriesFill& fill = *data.series;
    for (const std::string& remark : data.remarks) writeMessage({"note: ", remark});
    if (fill.stepsWithout > 0)
        writeMessage({"note: ", std::to_string(fill.stepsWithout), " times have no '", fill.field,
                      "' and are left out"});
    if (fill.noNumber > 0)
        writeMessage({"note: ", std::to_string(fill.noNumber),
                      " cells have values that are no finite numbers; these count as not full"});
}

}  // namespace

void writeFillTimes(const FillTimeOptions& options) {
    checkTarget(options.output, options.input);
    Progress progress(2, true);
    progress.step("reading " + std::filesystem::path(options.input).filename().string());
    ReadOptions read;
    read.series.use = SeriesOptions::Use::Always;
    read.series.field = options.field;
    read.series.level = options.level;
    read.series.progress = [&](const std::string& text) { progress.within(text); };
    const DataSet data = [&] {
        const StandardOutputAside aside;
        return readDataSet(options.input, read);
    }();
    progress.step("writing");
    writeFillTime(options.output, data.mesh, data.patches, data.fillTime);
    progress.finish();
    tellNotes(data);
    writeStandardOutput(fillTable(options, *data.series, standardOutputTakesStyle()));
}

}  // namespace weldline
