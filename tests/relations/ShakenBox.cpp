#include "ShakenBox.h"

#include <algorithm>
#include <cmath>

#include "ControlText.h"

namespace weldline::test {

namespace {

constexpr int kNx = 6;
constexpr int kNy = 4;
constexpr int kNz = 3;
constexpr double kEdge = 0.5;
constexpr double kCoordinateStep = 0x1p-10;
constexpr double kWeightStep = 0x1p-6;

std::optional<Group> groupOfSide(Point normal, Point) {
    if (normal[0] > 0.0) return std::nullopt;  // the side of the interface faces
    if (normal[0] < 0.0) return Group::Inlet;
    if (normal[1] < 0.0) return Group::Symm;
    if (normal[2] > 0.0) return Group::Outlet;
    return Group::Wall;
}

void addInterfaceFaces(TestHost& host) {
    for (int k = 0; k < kNz; ++k)
        for (int j = 0; j < kNy; ++j) {
            const Point centre{kNx * kEdge, (j + 0.5) * kEdge, (k + 0.5) * kEdge};
            const Point beyond{centre[0] + 0.5 * kEdge, centre[1], centre[2]};
            std::vector<int> nodes;
            for (int v = 0; v < 2; ++v)
                for (int u = 0; u < 2; ++u) nodes.push_back(boxNode(kNx, kNy, kNx, j + u, k + v));
            host.addInterface(boxCell(kNx, kNy, kNx - 1, j, k), {kEdge * kEdge, 0.0, 0.0}, centre,
                              0.5, beyond, kEdge * kEdge * kEdge, nodes);
        }
}

void copyAcross(const TestHost& host, double* cellArray) {
    for (int k = 0; k < kNz; ++k)
        for (int j = 0; j < kNy; ++j)
            cellArray[host.haloSlot(1 + j + kNy * k)] = cellArray[boxCell(kNx, kNy, 0, j, k)];
}

void shake(double* values, int count, Shaker& shaker) {
    for (int i = 1; i <= count; ++i) values[i] += shaker.multiple(kCoordinateStep, 50);
}

void shakeAreas(double* component, int count, Shaker& shaker) {
    for (int i = 1; i <= count; ++i) component[i] += shaker.between(-0.02, 0.02);
}

void shakeInnerFaces(const CKVR3DFiniteVolumeMesh& mesh, Shaker& shaker) {
    for (int f = 1; f <= mesh.m_nInnerFace; ++f) {
        shakeAreas(mesh.m_ppInnerFace[f] + 2, 3, shaker);
        shake(mesh.m_ppInnerFace[f] + 5, 3, shaker);
        mesh.m_pInnerFaceLambda[f] += shaker.multiple(kWeightStep, 8);
    }
}

void shakeMesh(TestHost& host, Shaker& shaker) {
    const CKVR3DFiniteVolumeMesh& m = *host.mesh();
    for (double* x : {m.m_pNodeX, m.m_pNodeY, m.m_pNodeZ}) shake(x, m.m_nNode, shaker);
    for (double* x : {m.m_pXc, m.m_pYc, m.m_pZc}) shake(x, m.m_nCV_Total, shaker);
    for (int c = 1; c <= m.m_nCV; ++c) m.m_pVolume[c] *= shaker.between(0.8, 1.2);
    shakeInnerFaces(m, shaker);
    for (double* x : {m.m_pWallFaceXc, m.m_pWallFaceYc, m.m_pWallFaceZc})
        shake(x, m.m_nWallFace, shaker);
    for (double* s : {m.m_pWallFaceSx, m.m_pWallFaceSy, m.m_pWallFaceSz})
        shakeAreas(s, m.m_nWallFace, shaker);
    for (double* x : {m.m_pInletFaceXc, m.m_pInletFaceYc, m.m_pInletFaceZc})
        shake(x, m.m_nInletFace, shaker);
    for (double* s : {m.m_pInletFaceSx, m.m_pInletFaceSy, m.m_pInletFaceSz})
        shakeAreas(s, m.m_nInletFace, shaker);
    for (double* x : {m.m_pSymmFaceXc, m.m_pSymmFaceYc, m.m_pSymmFaceZc})
        shake(x, m.m_nSymmFace, shaker);
    for (double* s : {m.m_pSymmFaceSx, m.m_pSymmFaceSy, m.m_pSymmFaceSz})
        shakeAreas(s, m.m_nSymmFace, shaker);
    CPartitionFace_DLL& faces = *host.partition();
    for (double* x : {faces.ijParxc(), faces.ijParyc(), faces.ijParzc()})
        shake(x, faces.NParInterFace(), shaker);
    for (double* s : {faces.ijParSx(), faces.ijParSy(), faces.ijParSz()})
        shakeAreas(s, faces.NParInterFace(), shaker);
    for (int i = 1; i <= faces.NParInterFace(); ++i)
        faces.ParInterFace_Lamda()[i] += shaker.multiple(kWeightStep, 8);
}

}  // namespace

void addShakenBox(TestHost& host) {
    addBox(host, kNx, kNy, kNz, kEdge, groupOfSide);
    addInterfaceFaces(host);
    host.finish();
    host.exchange = [&host](double* cellArray) { copyAcross(host, cellArray); };
    Shaker shaker;
    setField(host, [&shaker](Point p) {
        const double left = std::hypot(p[0], p[1] - 0.6, p[2] - 0.4);
        const double right = std::hypot(p[0] - 2.8, p[1] - 1.4, p[2] - 1.0);
        return 0.1 + std::min(left, right) + shaker.between(0.0, 0.02);
    });
    shakeMesh(host, shaker);
    host.setValue(boxCell(kNx, kNy, 2, 3, 2), 0.0F);
    host.setValue(boxCell(kNx, kNy, 3, 3, 2), 0.0F);
}

std::string settings(int method, int gradientMethod, const std::vector<std::string>& lines) {
    std::vector<std::string> all{"WeldlingAngleMethod = " + std::to_string(method),
                                 "GradMethodMFT = " + std::to_string(gradientMethod),
                                 "nSmooth_afterGrad = 2", "nGrad = 4"};
    all.insert(all.end(), lines.begin(), lines.end());
    return section(all);
}

}  // namespace weldline::test
