#pragma once

#include <string>

#include "WriteResult.h"

namespace weldline {

// A result as an Exodus file, for programs that do not read .vtu. One element block for each shape,
// cells in their order within it; the element map tells the number of a cell in the data set, from
// 1. Values are kept to the last bit: node variables MeetingAngle and WeldLine (and RefusalReason),
// element variables FillTime and FlowDirectionX, Y, Z. Patches and notes are left out.

// By its extension: .exo, .e or .ex2.
bool isExodusName(const std::string& file);

// The format has blocks of polyhedra, but hardly a program reads them. Throws InputError.
void refusePolyhedra(const std::string& file, const CellMesh& mesh);

// Writes into the file at `path`; `file` is its name in messages. Throws RunError.
void writeExodus(const std::string& path, const std::string& file, const CellMesh& mesh,
                 const ResultFields& fields);

}  // namespace weldline
