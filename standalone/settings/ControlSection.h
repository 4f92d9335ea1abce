#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Settings.h"

namespace weldline {

// What one line of a control file does.
struct LineEffect {
    int line = 0;                      // from 1, as an editor counts
    int piece = 1;                     // the library reads a line of more than 254 characters in
                                       // pieces, each like a line of its own; from 1
    std::string text;                  // the piece without its end of line
    bool inSection = false;            // between the opening and the closing line, these included
    std::vector<std::string> effects;  // plain sentences, in the order in which they happen
    bool surprising = false;           // does something else than it seems to say
};

// A control file as the library reads it.
struct ControlReading {
    Settings settings;                  // in force after reading
    std::vector<LineEffect> lines;      // every line, those without effect included
    std::vector<std::string> warnings;  // about the file as a whole: no section, not closed, ...
    bool sectionFound = false;
    bool sectionClosed = false;  // of the last section
};

// Reads a control text by the library's own rules, starting from `before`. Never fails.
ControlReading readControlText(std::string_view text, const Settings& before = {});

// The same for a file. Throws InputError when it cannot be read.
ControlReading readControlFile(const std::string& file, const Settings& before = {});

// A commented control text with one section that holds the defaults, to start from. Comments stand
// outside the section, where nothing can be mistaken for a key; the method stands first. Reading
// it gives exactly the settings of an empty section.
std::string defaultSectionText();

// A complete control text with the settings "KEY=VALUE", the method first. Throws UsageError,
// naming the known keys or the values that make sense, for an unknown or repeated key, a value that
// the library would read otherwise than written, and a value without a meaning.
std::string sectionFromOptions(const std::vector<std::string>& keyValues);

// A complete control text after which these settings are in force, without the trace. Throws
// InputError for settings that no control text brings about.
std::string sectionFromSettings(const Settings& settings);

}  // namespace weldline
