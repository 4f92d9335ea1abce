#pragma once

#include <string>

class vtkDataSet;

namespace weldline {

// Readers let broken files through. Proves that every number in a grid lies in range, that every
// array has its length and that coordinates are finite, so that nobody has to ask again. Throws
// InputError that names the file.
void checkGrid(const std::string& file, vtkDataSet* grid);

// Dimension (0 to 3) of a VTK cell type from 0 to 255, -1 for a type that VTK does not know.
int cellDimension(int cellType);

long long countVolumeCells(vtkDataSet* grid);

}  // namespace weldline
