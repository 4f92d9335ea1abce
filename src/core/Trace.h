#pragma once

class CKVR3DWeldLine;

namespace weldline::core {

// True on the process that the host calls number 0, and where the host names no number.
bool isMaster(const CKVR3DWeldLine& record);

// True when lines of calculation steps are written: debug flag on, debug file open, master process.
bool isTracing(const CKVR3DWeldLine& record);

// A line of a calculation step, `text` ending in a newline.
void trace(const CKVR3DWeldLine& record, const char* text);

// A line of a setter. On purpose: the process number is not asked here; the line is dropped where
// no file is open.
void traceSetter(const CKVR3DWeldLine& record, const char* text);

}  // namespace weldline::core
