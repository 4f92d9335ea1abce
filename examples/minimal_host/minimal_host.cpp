// The smallest host: a bar of eight unit cubes along x, filled from both ends, in one process and
// without boundary faces. Everything is 1-based: slot 0 of each array is there and means nothing.
// Prints the meeting angle of each node.

#include <cmath>
#include <cstdio>
#include <vector>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKVR3D_WeldLine_Manipulator.h"
#include "CKvr3dGV.h"
#include "CKvrFaceRBFInternalObject.h"

namespace {

constexpr int kCells = 8;
constexpr int kNodes = 4 * (kCells + 1);

template <class Value>
std::vector<Value*> rowPointers(std::vector<std::vector<Value>>& rows) {
    std::vector<Value*> pointers;
    for (std::vector<Value>& row : rows) pointers.push_back(row.data());
    return pointers;
}

// Stencils of the host's interpolation to the inner faces: here just the two cells of each face.
std::vector<std::vector<int>> g_stencils{{}};
std::vector<std::vector<double>> g_weights{{}};
std::vector<int*> g_stencilRows;
std::vector<double*> g_weightRows;

}  // namespace

CKvrFaceRBFInternalObject::CKvrFaceRBFInternalObject() = default;
CKvrFaceRBFInternalObject::~CKvrFaceRBFInternalObject() = default;
int CKvrFaceRBFInternalObject::getKvr3dGV(CKvr3dGV*, CKVRGVGPU*, CKVRGVOpenMP*,
                                          CKVR3DFiniteVolumeMesh*) {
    return 0;
}
int CKvrFaceRBFInternalObject::getPartitionFace(CPartitionFace_DLL*) {
    return 0;
}
int CKvrFaceRBFInternalObject::Initialize_FaceInterpolateData(int) {
    m_ppFaceStencil = g_stencilRows.data();
    m_ppFaceWeight = g_weightRows.data();
    return 0;
}

int main() {
    std::vector<double> nodeX{0}, nodeY{0}, nodeZ{0}, x{0}, y(kCells + 1, 0.5), z = y;
    std::vector<double> volume(kCells + 1, 1.0), lambda(kCells, 0.5);
    std::vector<float> fillTime{0};
    std::vector<int> state(kCells + 1, 0);
    std::vector<std::vector<int>> cellNode{{}}, cellFace{{}}, faceType{{}}, neighbour{{}};
    std::vector<std::vector<double>> innerFace{{}};
    for (int n = 0; n < kNodes; ++n) {
        nodeX.push_back(n / 4);
        nodeY.push_back(n / 2 % 2);
        nodeZ.push_back(n % 2);
    }
    for (int c = 1; c <= kCells; ++c) {
        const int n = 4 * c;
        x.push_back(c - 0.5);
        fillTime.push_back(static_cast<float>(c <= kCells / 2 ? c : kCells + 1 - c));
        cellNode.push_back({8, n - 3, n - 2, n - 1, n, n + 1, n + 2, n + 3, n + 4});
        const bool isFirst = c == 1;
        const bool isEnd = isFirst || c == kCells;
        cellFace.push_back(isEnd ? std::vector{1, isFirst ? 1 : c - 1} : std::vector{2, c - 1, c});
        faceType.push_back(isEnd ? std::vector{1, 0} : std::vector{2, 0, 0});
        neighbour.push_back(isEnd ? std::vector{1, isFirst ? 2 : c - 1}
                                  : std::vector{2, c - 1, c + 1});
    }
    for (int f = 1; f < kCells; ++f) {  // cells, area vector, centre
        innerFace.push_back({0, 1.0 * f, f + 1.0, 1, 0, 0, 1.0 * f, 0.5, 0.5});
        g_stencils.push_back({2, f, f + 1});
        g_weights.push_back({0, 0.5, 0.5});
    }
    g_stencilRows = rowPointers(g_stencils);
    g_weightRows = rowPointers(g_weights);
    auto innerFaceRows = rowPointers(innerFace);
    auto cellNodeRows = rowPointers(cellNode), cellFaceRows = rowPointers(cellFace);
    auto faceTypeRows = rowPointers(faceType), neighbourRows = rowPointers(neighbour);

    CKVR3DFiniteVolumeMesh mesh;
    mesh.m_nCV = mesh.m_nCV_Total = kCells;
    mesh.m_nNode = kNodes;
    mesh.m_nInnerFace = kCells - 1;
    mesh.m_pXc = x.data(), mesh.m_pYc = y.data(), mesh.m_pZc = z.data();
    mesh.m_pNodeX = nodeX.data(), mesh.m_pNodeY = nodeY.data(), mesh.m_pNodeZ = nodeZ.data();
    mesh.m_pVolume = volume.data();
    mesh.m_pInnerFaceLambda = lambda.data();
    mesh.m_ppInnerFace = innerFaceRows.data();
    mesh.m_ppCellNode = cellNodeRows.data();
    mesh.m_ppCellFace = cellFaceRows.data();
    mesh.m_ppCellFaceType = faceTypeRows.data();
    mesh.m_ppCellNeighbour = neighbourRows.data();

    const int masterProcess = 0;
    const double secondGradientSet = 1.0;
    CKvr3dGV host;
    host.m_pFlowVariable = fillTime.data();
    host.m_pCellState = state.data();
    host.m_pProcessNumber = &masterProcess;
    host.m_pGradSetSwitch = &secondGradientSet;
    host.m_pControlFilePath = "run.cmp";  // where it is missing, the default settings hold

    CKVR3D_WeldLine_Manipulator weldLine;
    weldLine.setPartitionInterface(nullptr);  // one process: no interface, no exchange
    weldLine.setKVRCom(nullptr, nullptr);
    weldLine.setMeshFileType(1);
    weldLine.setFlowData(&host, &mesh);
    weldLine.calWeldLine();
    const double* angle = weldLine.getMeetingAngle();
    for (int n = 1; n <= kNodes; ++n) {
        // Head-on is -2e-07, not 0: the library's pi has eight digits.
        std::printf("node %2d at x = %.0f: %.3f degrees\n", n, nodeX[n], std::fabs(angle[n]));
    }
}
