#include <vtkDataSetSurfaceFilter.h>
#include <vtkGradientFilter.h>
#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>

#include <cstdlib>

#include "HostStages.h"
#include "VtkGrid.h"

namespace weldline::performance {

namespace {

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
        fillGrid(boxCells(bound.choice()), bound.model().globalVariables().m_pFlowVariable + 1,
                 filters->grid);
        filters->gradient->SetInputData(filters->grid);
        filters->gradient->SetInputScalars(vtkDataObject::FIELD_ASSOCIATION_CELLS, kFillTime);
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
