#pragma once

class CKVR3DWeldLine;

namespace weldline::core {

// Makes the work arrays of a record, once: a record that has them keeps them whatever its counts
// are. Answers whether every array is there. Throws std::bad_alloc, and then leaves the record
// without any of them.
bool allocateWorkArrays(CKVR3DWeldLine& record);

// Ends the process with status 0 after a message on standard output: the host's convention for
// work arrays that could not be made.
[[noreturn]] void exitWithoutWorkArrays();

// Copies a path into one of the record's names; a path that does not fit is cut.
void copyPath(const char* path, char (&name)[1024]);

}  // namespace weldline::core
