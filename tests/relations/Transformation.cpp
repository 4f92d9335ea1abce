#include "Transformation.h"

#include <algorithm>
#include <array>
#include <vector>

namespace weldline::test {

namespace {

// The three components of a vector quantity; 1-based, `count` entries.
struct Columns {
    std::array<double*, 3> component;
    int count;
};

std::vector<Columns> positions(TestHost& host) {
    const CKVR3DFiniteVolumeMesh& m = *host.mesh();
    CPartitionFace_DLL& faces = *host.partition();
    return {{{m.m_pXc, m.m_pYc, m.m_pZc}, m.m_nCV_Total},
            {{m.m_pNodeX, m.m_pNodeY, m.m_pNodeZ}, m.m_nNode},
            {{m.m_pWallFaceXc, m.m_pWallFaceYc, m.m_pWallFaceZc}, m.m_nWallFace},
            {{m.m_pInletFaceXc, m.m_pInletFaceYc, m.m_pInletFaceZc}, m.m_nInletFace},
            {{m.m_pSymmFaceXc, m.m_pSymmFaceYc, m.m_pSymmFaceZc}, m.m_nSymmFace},
            {{faces.ijParxc(), faces.ijParyc(), faces.ijParzc()}, faces.NParInterFace()}};
}

std::vector<Columns> areas(TestHost& host) {
    const CKVR3DFiniteVolumeMesh& m = *host.mesh();
    CPartitionFace_DLL& faces = *host.partition();
    return {{{m.m_pWallFaceSx, m.m_pWallFaceSy, m.m_pWallFaceSz}, m.m_nWallFace},
            {{m.m_pInletFaceSx, m.m_pInletFaceSy, m.m_pInletFaceSz}, m.m_nInletFace},
            {{m.m_pSymmFaceSx, m.m_pSymmFaceSy, m.m_pSymmFaceSz}, m.m_nSymmFace},
            {{faces.ijParSx(), faces.ijParSy(), faces.ijParSz()}, faces.NParInterFace()}};
}

}  // namespace

void transform(TestHost& host, const Transformation& t) {
    const CKVR3DFiniteVolumeMesh& mesh = *host.mesh();
    const double areaFactor = t.length * t.length;
    for (int axis = 0; axis < 3; ++axis) {
        const auto moved = [&](double x) { return t.mirror[axis] * t.length * x + t.shift[axis]; };
        for (const Columns& c : positions(host))
            for (int i = 1; i <= c.count; ++i) c.component[axis][i] = moved(c.component[axis][i]);
        for (const Columns& c : areas(host))
            for (int i = 1; i <= c.count; ++i) c.component[axis][i] *= t.mirror[axis] * areaFactor;
        for (int f = 1; f <= mesh.m_nInnerFace; ++f) {
            double* row = mesh.m_ppInnerFace[f];
            row[3 + axis] *= t.mirror[axis] * areaFactor;
            row[6 + axis] = moved(row[6 + axis]);
        }
    }
    for (int s = 1; s <= mesh.m_nCV_Total; ++s) {
        mesh.m_pVolume[s] *= areaFactor * t.length;
        host.gv()->m_pFlowVariable[s] *= static_cast<float>(t.time);
    }
}

void exchangeXAndY(TestHost& host) {
    for (const std::vector<Columns>& quantities : {positions(host), areas(host)})
        for (const Columns& c : quantities)
            for (int i = 1; i <= c.count; ++i) std::swap(c.component[0][i], c.component[1][i]);
    for (int f = 1; f <= host.mesh()->m_nInnerFace; ++f) {
        double* row = host.mesh()->m_ppInnerFace[f];
        std::swap(row[3], row[4]);
        std::swap(row[6], row[7]);
    }
}

void turnInnerFaces(TestHost& host) {
    const CKVR3DFiniteVolumeMesh& mesh = *host.mesh();
    for (int f = 1; f <= mesh.m_nInnerFace; ++f) {
        double* row = mesh.m_ppInnerFace[f];
        std::swap(row[1], row[2]);
        for (int axis = 0; axis < 3; ++axis) row[3 + axis] = -row[3 + axis];
        mesh.m_pInnerFaceLambda[f] = 1.0 - mesh.m_pInnerFaceLambda[f];
    }
}

void reverseInnerFaces(TestHost& host) {
    const CKVR3DFiniteVolumeMesh& mesh = *host.mesh();
    const int count = mesh.m_nInnerFace;
    std::reverse(mesh.m_ppInnerFace + 1, mesh.m_ppInnerFace + count + 1);
    std::reverse(mesh.m_pInnerFaceLambda + 1, mesh.m_pInnerFaceLambda + count + 1);
}

}  // namespace weldline::test
