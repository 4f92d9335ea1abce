#pragma once

#include <string>
#include <vector>

#include "Arguments.h"
#include "comm/Ranks.h"
#include "settings/Settings.h"

namespace weldline {

// The control text of a run and what it means.
struct RunControl {
    std::string file;  // the user's own control file; empty: made from the options
    std::string text;
    Settings settings;
    std::vector<std::string> remarks;
};

// Reads the user's control file or makes a control text from --set, --method and --gradient.
// Refuses a control file without a "." in its name (UsageError), one that is missing, unreadable
// or without an angle method (InputError), and options that are no settings (UsageError).
RunControl prepareControl(const AnalyzeOptions& options);

// The same for all ranks of a run, which must go by one text: rank 0 reads it and tells the others.
// Collective; all ranks throw the same.
RunControl prepareControl(Ranks& ranks, const AnalyzeOptions& options);

// Whether a file that stands where a control file is to be written was written by this program.
// Throws InputError when it cannot be read.
bool isOwnControlFile(const std::string& file);

// Name of the trace that the library writes beside a control file: the last "." and up to 18
// characters after it give way to "_KVRWDLineDebug.txt".
std::string traceNameFor(const std::string& controlFile);

}  // namespace weldline
