#include <vtkDataSetSurfaceFilter.h>
#include <vtkGradientFilter.h>
#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>

#include <cstdlib>

#include "HostStages.h"
#include "VtkGrid.h"

namespace weldline::performance {

namespace {

// A grid that is made when the filter is to run for the first time.
template <class Filter>
struct Filtered {
    vtkNew<vtkUnstructuredGrid> grid;
    vtkNew<Filter> filter;

    void prepare(BoundCase& bound) {
        if (grid->GetNumberOfCells() == 0) {
            fillGrid(boxCells(bound.choice()), bound.model().globalVariables().m_pFlowVariable + 1,
                     grid);
            filter->SetInputData(grid);
        }
        filter->Modified();
    }
};

template <class Filter>
Stage stageOf(const char* name, BoundCase& bound, std::shared_ptr<Filtered<Filter>> filtered) {
    setenv("VTK_SMP_BACKEND_IN_USE", "Sequential", 1);  // one core for everybody
    return {name, [filtered, &bound] { filtered->prepare(bound); },
            [filtered] { filtered->filter->Update(); }};
}

}  // namespace

Stages surfaceFilterStages(BoundCase& bound) {
    return {stageOf("surface filter/vtk", bound,
                    std::make_shared<Filtered<vtkDataSetSurfaceFilter>>())};
}

Stages gradientFilterStages(BoundCase& bound) {
    const auto filtered = std::make_shared<Filtered<vtkGradientFilter>>();
    filtered->filter->SetInputScalars(vtkDataObject::FIELD_ASSOCIATION_CELLS, kFillTime);
    return {stageOf("gradient filter/vtk", bound, filtered)};
}

}  // namespace weldline::performance
