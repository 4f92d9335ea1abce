#pragma once

class CKVR3DWeldLine;

namespace weldline::core {

// Opens the debug trace file on the master process when the debug flag is on; a file that is open
// from an earlier run is closed first. Its path is that of the control file with the extension
// replaced by "_KVRWDLineDebug.txt".
void openDebugFile(CKVR3DWeldLine& record);

// Writes the settings in force, one line each.
void traceSettings(const CKVR3DWeldLine& record);

}  // namespace weldline::core
