#pragma once

#include <string>
#include <vector>

#include "mesh/CellMesh.h"

namespace weldline {

// The mesh with cell data FillTime as a VTK XML unstructured grid. The faces of the patches follow
// as 2-D cells, their patch counted from 0 in PatchId and named in the field data PatchNames:
// readDataSet finds the patches again. Throws RunError when the file cannot be written.
void writeFillTime(const std::string& file, const CellMesh& mesh, const std::vector<Patch>& patches,
                   const std::vector<double>& fillTime);

}  // namespace weldline
