#pragma once

#include <string>

#include "VtkMessages.h"
#include "mesh/CellMesh.h"

class vtkUnstructuredGrid;

// Internal to the writers.
namespace weldline {

// Gives an empty grid the points and cells of a mesh.
void addMesh(const CellMesh& mesh, vtkUnstructuredGrid* grid);

// A .vtu file: appended raw data, zlib compressed. The name of the file is for messages. Throws
// RunError.
std::string gridBytes(const std::string& file, vtkUnstructuredGrid* grid,
                      const VtkMessages& messages);

}  // namespace weldline
