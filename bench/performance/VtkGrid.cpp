#include "VtkGrid.h"

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>

namespace weldline::performance {

void fillGrid(const CellMesh& mesh, const float* fillTime, vtkUnstructuredGrid* grid) {
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    for (const Vec3& x : mesh.points) points->InsertNextPoint(x.x, x.y, x.z);
    grid->SetPoints(points);
    grid->AllocateExact(mesh.cellCount(), static_cast<vtkIdType>(mesh.cellNodes.entries.size()));
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const std::vector<vtkIdType> nodes(mesh.cellNodes[c].begin(), mesh.cellNodes[c].end());
        const int type = mesh.kinds[c] == CellKind::Tetrahedron ? VTK_TETRA : VTK_HEXAHEDRON;
        grid->InsertNextCell(type, static_cast<vtkIdType>(nodes.size()), nodes.data());
    }
    vtkNew<vtkFloatArray> field;
    field->SetName(kFillTime);
    field->SetNumberOfValues(grid->GetNumberOfCells());
    std::copy_n(fillTime, grid->GetNumberOfCells(), field->GetPointer(0));
    grid->GetCellData()->AddArray(field);
}

}  // namespace weldline::performance
