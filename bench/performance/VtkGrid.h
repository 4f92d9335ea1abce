#pragma once

#include "mesh/CellMesh.h"

class vtkUnstructuredGrid;

namespace weldline::performance {

inline constexpr const char* kFillTime = "FillTime";

// Fills an empty grid with the cells and their fill time, one value per cell.
void fillGrid(const CellMesh& mesh, const float* fillTime, vtkUnstructuredGrid* grid);

}  // namespace weldline::performance
