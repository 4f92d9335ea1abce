#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDataSetSurfaceFilter.h>
#include <vtkDoubleArray.h>
#include <vtkGradientFilter.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>

#include <cstdlib>

#include "HostStages.h"

namespace weldline::performance {

namespace {

constexpr const char* kField = "FillTime";

void addCells(const CellMesh& mesh, vtkUnstructuredGrid* grid) {
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
}

void addField(const float* fillTime, vtkUnstructuredGrid* grid) {
    vtkNew<vtkDoubleArray> field;
    field->SetName(kField);
    field->SetNumberOfValues(grid->GetNumberOfCells());
    std::copy_n(fillTime + 1, grid->GetNumberOfCells(), field->GetPointer(0));
    grid->GetCellData()->AddArray(field);
}

struct Filters {
    vtkNew<vtkUnstructuredGrid> grid;
    vtkNew<vtkGradientFilter> gradient;
    vtkNew<vtkDataSetSurfaceFilter> surface;
};

}  // namespace

Stages vtkStages(BoundCase& bound) {
    setenv("VTK_SMP_BACKEND_IN_USE", "Sequential", 1);  // one core for everybody
    const auto filters = std::make_shared<Filters>();
    const auto makeGrid = [filters, &bound] {
        if (filters->grid->GetNumberOfCells() > 0) return;
        addCells(boxCells(bound.choice()), filters->grid);
        addField(bound.model().globalVariables().m_pFlowVariable, filters->grid);
        filters->gradient->SetInputData(filters->grid);
        filters->gradient->SetInputScalars(vtkDataObject::FIELD_ASSOCIATION_CELLS, kField);
        filters->surface->SetInputData(filters->grid);
    };
    Stages stages;
    stages.push_back({"gradient filter/vtk",
                      [makeGrid, filters] {
                          makeGrid();
                          filters->gradient->Modified();
                      },
                      [filters] { filters->gradient->Update(); }});
    stages.push_back({"surface filter/vtk",
                      [makeGrid, filters] {
                          makeGrid();
                          filters->surface->Modified();
                      },
                      [filters] { filters->surface->Update(); }});
    return stages;
}

}  // namespace weldline::performance
