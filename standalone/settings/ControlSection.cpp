#include "ControlSection.h"

#include <fstream>
#include <sstream>

#include "SectionReader.h"
#include "base/Errors.h"

namespace weldline {

namespace {

// The library reads with a buffer of 255 characters, the closing zero included.
constexpr std::size_t longestPiece = 254;

// Calls `action` with each piece, the line's number and the piece's number in its line.
template <class Action>
void forEachPiece(std::string_view text, Action action) {
    int line = 1;
    int piece = 1;
    while (!text.empty()) {
        const std::size_t newline = text.substr(0, longestPiece).find('\n');
        const bool ends = newline != std::string_view::npos;
        const std::string_view part = text.substr(0, ends ? newline + 1 : longestPiece);
        // A zero character ends a line for the library.
        action(std::string(part.substr(0, part.find('\0'))), line, piece);
        line += ends ? 1 : 0;
        piece = ends ? 1 : piece + 1;
        text.remove_prefix(part.size());
    }
}

void warnAboutSettings(ControlReading& reading) {
    const Settings& s = reading.settings;
    const Stages stages = stagesOf(s);
    if (stages.angleMethod == 0)
        reading.warnings.push_back("WeldlingAngleMethod " + std::to_string(s.method) +
                                   " is none of 1, 2, 3, 4: no meeting angle is calculated");
    if (stages.first == FirstGradient::None)
        reading.warnings.push_back("GradMethodMFT " + std::to_string(s.gradientMethod) +
                                   " is none of 1, 2, 3, 4: no gradient is calculated, so nothing "
                                   "meets anywhere");
}

}  // namespace

ControlReading readControlText(std::string_view text, const Settings& before) {
    ControlReading reading;
    reading.settings = before;
    SectionReader reader(reading);
    forEachPiece(text, [&](const std::string& piece, int line, int number) {
        reader.read(piece, line, number);
    });
    if (!reading.sectionFound)
        reading.warnings.push_back(
            "there is no section [WeldLinePlotCtrl]: all settings keep the values they had");
    else if (!reading.sectionClosed)
        reading.warnings.push_back(
            "the section is not closed by [/WeldLinePlotCtrl]: it is read to the end of the file");
    warnAboutSettings(reading);
    return reading;
}

ControlReading readControlFile(const std::string& file, const Settings& before) {
    std::ifstream stream(file, std::ios::binary);
    stream.peek();  // a folder can be opened, but not read
    if (!stream.is_open() || stream.bad())
        throw InputError("control file '" + file +
                         "' cannot be read; give an existing, readable file");
    std::ostringstream text;
    if (!stream.eof()) text << stream.rdbuf();
    return readControlText(text.str(), before);
}

}  // namespace weldline
