#include "Calculation.h"

namespace weldline::performance {

BoundCase::BoundCase(const MeshChoice& choice) : m_choice(choice) {
    FvMesh mesh = buildFvMesh(boxCells(choice));
    if (choice.shuffled) shuffleInnerFaces(mesh);
    const Filling filling = fill(mesh, choice.edge);
    HostOptions options;
    options.controlFile = WELDLINE_CONTROL_FILE;
    m_model = std::make_unique<HostModel>(mesh, filling.groups, filling.fillTime, options);
}

}  // namespace weldline::performance
