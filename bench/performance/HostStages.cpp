#include "HostStages.h"

#include "rbf/FaceTables.h"

namespace weldline::performance {

namespace {

struct Made {
    CellMesh cells;
    FvMesh mesh;
    Filling filling;
    std::unique_ptr<HostModel> model;
    FaceTables tables;
};

}  // namespace

Stages hostStages(BoundCase& bound) {
    const auto made = std::make_shared<Made>();
    const auto makeCells = [made, &bound] {
        if (made->cells.kinds.empty()) made->cells = boxCells(bound.choice());
        made->mesh = {};
    };
    const auto makeMesh = [made, makeCells, &bound] {
        made->model = nullptr;
        if (made->mesh.owner.empty()) {
            makeCells();
            made->mesh = buildFvMesh(made->cells);
        }
        if (made->filling.fillTime.empty()) made->filling = fill(made->mesh, bound.choice().edge);
    };
    Stages stages;
    stages.push_back({"finite-volume mesh/weldline", makeCells,
                      [made] { made->mesh = buildFvMesh(made->cells); }});
    stages.push_back({"host objects/weldline", makeMesh, [made] {
                          HostOptions options;
                          options.controlFile = WELDLINE_CONTROL_FILE;
                          made->model = std::make_unique<HostModel>(
                              made->mesh, made->filling.groups, made->filling.fillTime, options);
                      }});
    const double faces = bound.model().mesh().m_nInnerFace;
    stages.push_back({"stencils per face/weldline", [made] { made->tables = {}; },
                      [made, &bound] {
                          HostModel& model = bound.model();
                          made->tables =
                              buildFaceTables(model.mesh(), &model.globalVariables(), nullptr);
                      },
                      faces});
    return stages;
}

}  // namespace weldline::performance
