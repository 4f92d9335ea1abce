// What the stencils and weights of the RBF gradient cost.

#include <ctime>

#include "CKvrFaceRBFInternalObject.h"
#include "CaseMesh.h"
#include "Study.h"
#include "bind/HostModel.h"

namespace weldline::accuracy {

void studyRbfCost(Document& document) {
    Table table({"cells", "inner faces", "cells in a stencil", "us a face", "bytes a face"});
    const FrontCase front = twoSources();
    for (const CellShape shape : kCellShapes) {
        const CaseMesh mesh = meshOf(front, shape, kFinestSize);
        HostOptions options;
        options.controlFile = "unused.cmp";
        HostModel model(mesh.mesh, mesh.groups, arrivalTimes(front, mesh, 0.0), options);
        CKvrFaceRBFInternalObject object;
        object.getKvr3dGV(&model.globalVariables(), nullptr, nullptr, &model.mesh());
        const std::clock_t start = std::clock();
        object.Initialize_FaceInterpolateData(1);
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        const int faces = mesh.mesh.innerFaces;
        double entries = 0.0;
        for (int f = 1; f <= faces; ++f) entries += object.m_ppFaceStencil[f][0];
        // Per face two row pointers and two rows, each with one entry beside the stencil.
        constexpr double entry = sizeof(int) + sizeof(double);
        table.add({nameOf(shape), std::to_string(faces), fixed(entries / faces, 1),
                   fixed(1e6 * seconds / faces, 1),
                   fixed(2.0 * sizeof(void*) + entry * (entries / faces + 1.0), 0)});
    }
    document.put("rbf", table.markdown());
}

}  // namespace weldline::accuracy
