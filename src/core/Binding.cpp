// Binding of the host's mesh and solver objects (setFlowData): counts, work arrays, borrowed
// arrays, flow variable, paths.

#include "Binding.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKVR3DWeldLine.h"
#include "CKvr3dGV.h"
#include "Extent.h"
#include "Trace.h"

namespace weldline::core {

namespace {

constexpr std::size_t kNodeScratchBytes = 80;
constexpr int kBiInjection = 11;

// The flow variable is single precision: "no melt" is the float nearest to 1e-30, which as a double
// lies just above 1e-30.
constexpr double kNoMelt = 1.0e-30F;

void copyCounts(CKVR3DWeldLine& r, const CKVR3DFiniteVolumeMesh& mesh) {
    r.m_nCV_Total = mesh.m_nCV_Total;
    r.m_nCV = mesh.m_nCV;
    r.m_nNode = mesh.m_nNode;
    r.m_nCountAux = mesh.m_nCountAux;
    r.m_nInnerFace = mesh.m_nInnerFace;
    r.m_nWallFace = mesh.m_nWallFace;
    r.m_nInletFace = mesh.m_nInletFace;
    r.m_nOutletFace = mesh.m_nOutletFace;
    r.m_nSymmFace = mesh.m_nSymmFace;
    r.m_nBoundaryFace = r.m_nWallFace + r.m_nInletFace + r.m_nOutletFace + r.m_nSymmFace;
}

void bindMesh(CKVR3DWeldLine& r, const CKVR3DFiniteVolumeMesh& mesh) {
    r.m_pXc = mesh.m_pXc;
    r.m_pYc = mesh.m_pYc;
    r.m_pZc = mesh.m_pZc;
    r.m_pVolume = mesh.m_pVolume;
    r.m_pHostCellArrayB = mesh.m_pHostCellArrayB;
    r.m_ppCellNode = mesh.m_ppCellNode;
    r.m_ppCellFace = mesh.m_ppCellFace;
    r.m_ppCellFaceType = mesh.m_ppCellFaceType;
    r.m_ppCellNeighbour = mesh.m_ppCellNeighbour;
    r.m_pNodeX = mesh.m_pNodeX;
    r.m_pNodeY = mesh.m_pNodeY;
    r.m_pNodeZ = mesh.m_pNodeZ;
    r.m_ppInnerFace = mesh.m_ppInnerFace;
    r.m_pInnerFaceLambda = mesh.m_pInnerFaceLambda;
    r.m_ppParFaceNode = mesh.m_ppParFaceNode;
}

void bindBoundaryGroups(CKVR3DWeldLine& r, const CKVR3DFiniteVolumeMesh& mesh) {
    r.m_pWallFaceXc = mesh.m_pWallFaceXc;
    r.m_pWallFaceYc = mesh.m_pWallFaceYc;
    r.m_pWallFaceZc = mesh.m_pWallFaceZc;
    r.m_pWallFaceSx = mesh.m_pWallFaceSx;
    r.m_pWallFaceSy = mesh.m_pWallFaceSy;
    r.m_pWallFaceSz = mesh.m_pWallFaceSz;
    r.m_pWallFaceCV = mesh.m_pWallFaceCV;
    r.m_pWallFaceBnd = mesh.m_pWallFaceBnd;
    r.m_pInletFaceXc = mesh.m_pInletFaceXc;
    r.m_pInletFaceYc = mesh.m_pInletFaceYc;
    r.m_pInletFaceZc = mesh.m_pInletFaceZc;
    r.m_pInletFaceSx = mesh.m_pInletFaceSx;
    r.m_pInletFaceSy = mesh.m_pInletFaceSy;
    r.m_pInletFaceSz = mesh.m_pInletFaceSz;
    r.m_pInletFaceCV = mesh.m_pInletFaceCV;
    r.m_pInletFaceBnd = mesh.m_pInletFaceBnd;
    r.m_pOutletFaceXc = mesh.m_pOutletFaceXc;
    r.m_pOutletFaceYc = mesh.m_pOutletFaceYc;
    r.m_pOutletFaceZc = mesh.m_pOutletFaceZc;
    r.m_pOutletFaceSx = mesh.m_pOutletFaceSx;
    r.m_pOutletFaceSy = mesh.m_pOutletFaceSy;
    r.m_pOutletFaceSz = mesh.m_pOutletFaceSz;
    r.m_pOutletFaceCV = mesh.m_pOutletFaceCV;
    r.m_pOutletFaceBnd = mesh.m_pOutletFaceBnd;
    r.m_pSymmFaceXc = mesh.m_pSymmFaceXc;
    r.m_pSymmFaceYc = mesh.m_pSymmFaceYc;
    r.m_pSymmFaceZc = mesh.m_pSymmFaceZc;
    r.m_pSymmFaceSx = mesh.m_pSymmFaceSx;
    r.m_pSymmFaceSy = mesh.m_pSymmFaceSy;
    r.m_pSymmFaceSz = mesh.m_pSymmFaceSz;
    r.m_pSymmFaceCV = mesh.m_pSymmFaceCV;
    r.m_pSymmFaceBnd = mesh.m_pSymmFaceBnd;
}

void loadFlowVariable(const float* loaded, int slots, double* variable, double* variableOrg) {
    for (int i = 1; i <= slots; ++i) {
        const double value = loaded[i];
        variable[i] = value;
        variableOrg[i] = value;
    }
}

void substituteBiInjection(const float* biInjection, int slots, double* variable,
                           double* variableOrg) {
    for (int i = 1; i <= slots; ++i) {
        if (variable[i] <= kNoMelt) {
            variable[i] = biInjection[i];
            variableOrg[i] = variable[i];
        }
    }
}

void clearResults(CKVR3DWeldLine& r) {
    const Extent extent = extentOf(r);
    for (double* array :
         {r.m_pWork1X, r.m_pWork1Y, r.m_pWork1Z, r.m_pGradX, r.m_pGradY, r.m_pGradZ}) {
        for (int i = 0; i <= extent.slots; ++i) array[i] = 0.0;
    }
    for (int i = 0; i <= extent.slots; ++i) {
        r.m_pCellFlag2[i] = 0;
        r.m_pZeroGradFlag[i] = 0;
    }
    for (int i = 0; i <= extent.nodes; ++i) r.m_pMeetingAngle[i] = 0.0;
}

// On purpose: only the first ".q7f" turns into ".q7p", wherever it stands.
std::string resultMeshPath(const char* meshFilePath) {
    std::string path = meshFilePath == nullptr ? "" : meshFilePath;
    const std::size_t extension = path.find(".q7f");
    if (extension != std::string::npos) path.replace(extension, 4, ".q7p");
    return path;
}

}  // namespace

bool allocateWorkArrays(CKVR3DWeldLine& r) {
    if (r.m_pVariable != nullptr) return true;
    ArrayOwner arrays;
    const std::size_t cells = slotsUpTo(r.m_nCV_Total);
    const std::size_t nodes = slotsUpTo(r.m_nNode);
    double** cellFields[] = {&r.m_pVariable, &r.m_pVariableOrg, &r.m_pWork1X, &r.m_pWork1Y,
                             &r.m_pWork1Z,   &r.m_pGradX,       &r.m_pGradY,  &r.m_pGradZ,
                             &r.m_pGrad2X,   &r.m_pGrad2Y,      &r.m_pGrad2Z};
    double* cellArrays[std::size(cellFields)];
    for (double*& array : cellArrays) array = arrays.zeros<double>(cells);
    void** nodeScratch = arrays.zeros<void*>(nodes);
    char* scratchBytes = arrays.zeros<char>(nodes * kNodeScratchBytes);
    for (std::size_t n = 0; n < nodes; ++n) nodeScratch[n] = scratchBytes + n * kNodeScratchBytes;
    double* meetingAngle = arrays.zeros<double>(nodes);
    int* cellFlag2 = arrays.zeros<int>(cells);
    int* zeroGradFlag = arrays.zeros<int>(cells);

    for (std::size_t i = 0; i < std::size(cellFields); ++i) *cellFields[i] = cellArrays[i];
    r.m_ppNodeScratch = nodeScratch;
    r.m_pMeetingAngle = meetingAngle;
    r.m_pCellFlag2 = cellFlag2;
    r.m_pZeroGradFlag = zeroGradFlag;
    r.m_Storage.arrays = std::move(arrays);
    r.m_Storage.cellSlots = r.m_nCV_Total;
    r.m_Storage.nodes = r.m_nNode;
    r.m_Storage.isCleared = true;
    return r.m_pVariable != nullptr && r.m_pMeetingAngle != nullptr;
}

void exitWithoutWorkArrays() {
    std::printf("Allocate Local accuracy improvement memory error, now exit!!!\n");
    std::exit(0);
}

void copyPath(const char* path, char (&name)[1024]) {
    const std::size_t length = std::min(std::strlen(path), sizeof(name) - 1);
    std::memcpy(name, path, length);
    name[length] = '\0';
}

}  // namespace weldline::core

bool CKVR3DWeldLine::setFlowData(CKvr3dGV* globalVariables, CKVR3DFiniteVolumeMesh* mesh) {
    using namespace weldline::core;
    m_pGV = globalVariables;
    m_pMesh = mesh;
    copyCounts(*this, *mesh);
    if (!allocateWorkArrays(*this)) exitWithoutWorkArrays();
    InitialValue();
    bindMesh(*this, *mesh);
    bindBoundaryGroups(*this, *mesh);
    m_pHostCellArrayA = m_pGV->m_pHostCellArrayA;
    m_pCellState = m_pGV->m_pCellState;

    const Extent extent = extentOf(*this);
    loadFlowVariable(m_pGV->m_pFlowVariable, extent.slots, m_pVariable, m_pVariableOrg);
    if (m_pGV->m_pAnalysisMode != nullptr && *m_pGV->m_pAnalysisMode == kBiInjection) {
        substituteBiInjection(m_pBiIMFlowData, extent.slots, m_pVariable, m_pVariableOrg);
    }

    m_pHostArray1 = m_pGV->m_pHostArray1;
    m_pHostArray2 = m_pGV->m_pHostArray2;
    m_pHostArray3 = m_pGV->m_pHostArray3;
    m_pHostArray4 = m_pGV->m_pHostArray4;
    m_pControlFilePath = m_pGV->m_pControlFilePath;
    copyPath(resultMeshPath(m_pGV->m_pMeshFilePath).c_str(), m_MeshFileName);
    traceSetter(*this, "CKVR3DWeldLine::setFlowData\n");
    return true;
}

// On purpose: the second gradient set and the variable keep what they hold. Arrays that are just
// made hold zeros, and writing more of them would only fetch the memory.
void CKVR3DWeldLine::InitialValue() {
    if (!m_Storage.isCleared) weldline::core::clearResults(*this);
    m_Storage.isCleared = false;
    weldline::core::traceSetter(*this, "CKVR3DWeldLine::InitialValue\n");
}
