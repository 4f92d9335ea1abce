#pragma once

#include <string>

#include "Arguments.h"
#include "RunControl.h"

namespace weldline {

// Files that a run leaves; an empty name stands for none.
struct Outputs {
    std::string result;   // .vtu, .pvtu or Exodus
    std::string json;     // "-" for standard output
    std::string control;  // kept beside the result when the user gave no control file
    std::string trace;
    std::string lines;  // .vtp
    std::string csv;    // "-" for standard output
};

// Names the files and makes sure, before the long work starts, that each can be written: its folder
// exists and takes files, it is not the input, the control file or another output, and no control
// file of somebody else is written over. Throws UsageError, InputError or RunError.
Outputs planOutputs(const AnalyzeOptions& options, const RunControl& control);

// The same for all ranks of a run: rank 0 looks and tells the others. Collective; all ranks throw
// the same.
Outputs planOutputs(Ranks& ranks, const AnalyzeOptions& options, const RunControl& control);

// Whether the result is one piece per rank.
bool isInPieces(const std::string& result);

// The same for the file of a command that writes nothing else.
void checkTarget(const std::string& file, const std::string& input);

// The same where the file may be missing ("") or standard output ("-").
void checkJsonTarget(const std::string& json, const std::string& input);

}  // namespace weldline
