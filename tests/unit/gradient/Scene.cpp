#include "Scene.h"

namespace weldline::test {

namespace {

struct GroupArrays {
    int count;
    const double *xc, *yc, *zc, *sx, *sy, *sz;
    const int *cell, *slot;
};

std::vector<SceneFace> facesOf(const GroupArrays& group) {
    std::vector<SceneFace> faces;
    for (int k = 1; k <= group.count; ++k)
        faces.push_back({group.cell[k],
                         group.slot[k],
                         {group.sx[k], group.sy[k], group.sz[k]},
                         {group.xc[k], group.yc[k], group.zc[k]},
                         0.0});
    return faces;
}

std::vector<SceneFace> innerFacesOf(const CKVR3DFiniteVolumeMesh& m) {
    std::vector<SceneFace> faces;
    for (int f = 1; f <= m.m_nInnerFace; ++f) {
        const double* row = m.m_ppInnerFace[f];
        faces.push_back({static_cast<int>(row[1]),
                         static_cast<int>(row[2]),
                         {row[3], row[4], row[5]},
                         {row[6], row[7], row[8]},
                         m.m_pInnerFaceLambda[f]});
    }
    return faces;
}

std::vector<SceneFace> interfaceFacesOf(CPartitionFace_DLL& p) {
    return facesOf({p.NParInterFace(), p.ijParxc(), p.ijParyc(), p.ijParzc(), p.ijParSx(),
                    p.ijParSy(), p.ijParSz(), p.ijParCV(), p.ijPar()});
}

}  // namespace

Scene sceneOf(TestHost& host) {
    const CKVR3DFiniteVolumeMesh& m = *host.mesh();
    CPartitionFace_DLL& p = *host.partition();
    Scene scene{m.m_nCV, m.m_nCV_Total, {{}}, {NaN}, innerFacesOf(m), interfaceFacesOf(p), {}, {},
                {}};
    for (int c = 1; c <= scene.slots; ++c) {
        scene.centre.push_back({m.m_pXc[c], m.m_pYc[c], m.m_pZc[c]});
        scene.volume.push_back(m.m_pVolume[c]);
    }
    for (std::size_t i = 0; i < scene.interface.size(); ++i)
        scene.interface[i].lambda = p.ParInterFace_Lamda()[i + 1];
    scene.inlet = facesOf({m.m_nInletFace, m.m_pInletFaceXc, m.m_pInletFaceYc, m.m_pInletFaceZc,
                           m.m_pInletFaceSx, m.m_pInletFaceSy, m.m_pInletFaceSz, m.m_pInletFaceCV,
                           m.m_pInletFaceBnd});
    scene.symm =
        facesOf({m.m_nSymmFace, m.m_pSymmFaceXc, m.m_pSymmFaceYc, m.m_pSymmFaceZc, m.m_pSymmFaceSx,
                 m.m_pSymmFaceSy, m.m_pSymmFaceSz, m.m_pSymmFaceCV, m.m_pSymmFaceBnd});
    scene.wall =
        facesOf({m.m_nWallFace, m.m_pWallFaceXc, m.m_pWallFaceYc, m.m_pWallFaceZc, m.m_pWallFaceSx,
                 m.m_pWallFaceSy, m.m_pWallFaceSz, m.m_pWallFaceCV, m.m_pWallFaceBnd});
    return scene;
}

SceneState stateOf(const CKVR3DWeldLine& calc, int slots) {
    const auto copy = [slots](const auto* array) { return std::vector(array, array + slots + 1); };
    return {copy(calc.m_pVariableOrg),
            copy(calc.m_pZeroGradFlag),
            {copy(calc.m_pWork1X), copy(calc.m_pWork1Y), copy(calc.m_pWork1Z)},
            calc.m_FaceAreaMag};
}

}  // namespace weldline::test
