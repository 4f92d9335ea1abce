// Setters, binding and the sequence of the calculation.
#include "Reference.h"

namespace weldline::reference {

namespace {

// The file names of the record hold 1023 characters.
std::string cut(const std::string& name) {
    return name.substr(0, 1023);
}

}  // namespace

Reference::~Reference() {
    trace("calWeldLine: ~CKVR3DWeldLine...Done!!\n");
    if (m_pDebugFile != nullptr) {
        std::fclose(m_pDebugFile);
    }
}

void Reference::trace(const char* text) {
    if (m_FlagDebugOutput && m_pDebugFile != nullptr && isMaster()) {
        std::fprintf(m_pDebugFile, "%s", text);
    }
}

void Reference::traceWithoutGate(const char* text) {
    if (m_FlagDebugOutput && m_pDebugFile != nullptr) {
        std::fprintf(m_pDebugFile, "%s", text);
    }
}

bool Reference::isMaster() const {
    return m_pGV->m_pProcessNumber == nullptr || *m_pGV->m_pProcessNumber == 0;
}

int Reference::partitionFaces() const {
    return m_pPartitionFace == nullptr ? 0 : m_pPartitionFace->NParInterFace();
}

// The host expects an array with all slots of its present mesh.
void Reference::exchange(Array& cellArray) {
    if (m_pCommunication == nullptr) return;
    if (!outgrown()) {
        m_pCommunication->DDM_Exch(cellArray.data());
        return;
    }
    Array whole(m_nCV_Total + 1, 0.0);
    std::copy(cellArray.begin(), cellArray.end(), whole.begin());
    m_pCommunication->DDM_Exch(whole.data());
    std::copy_n(whole.begin(), cellArray.size(), cellArray.begin());
}

int Reference::innerFaceCell(int face, int side) const {
    return static_cast<int>(m_bound.m_ppInnerFace[face][side]);
}

Reference::Group Reference::wall() const {
    const CKVR3DFiniteVolumeMesh& m = m_bound;
    return {m.m_nWallFace,   m.m_pWallFaceXc, m.m_pWallFaceYc, m.m_pWallFaceZc, m.m_pWallFaceSx,
            m.m_pWallFaceSy, m.m_pWallFaceSz, m.m_pWallFaceCV, m.m_pWallFaceBnd};
}

Reference::Group Reference::inlet() const {
    const CKVR3DFiniteVolumeMesh& m = m_bound;
    return {m.m_nInletFace,   m.m_pInletFaceXc, m.m_pInletFaceYc,
            m.m_pInletFaceZc, m.m_pInletFaceSx, m.m_pInletFaceSy,
            m.m_pInletFaceSz, m.m_pInletFaceCV, m.m_pInletFaceBnd};
}

Reference::Group Reference::symmetry() const {
    const CKVR3DFiniteVolumeMesh& m = m_bound;
    return {m.m_nSymmFace,   m.m_pSymmFaceXc, m.m_pSymmFaceYc, m.m_pSymmFaceZc, m.m_pSymmFaceSx,
            m.m_pSymmFaceSy, m.m_pSymmFaceSz, m.m_pSymmFaceCV, m.m_pSymmFaceBnd};
}

bool Reference::setPartitionInterface(CPartitionFace_DLL* partitionFaces) {
    m_pPartitionFace = partitionFaces;
    traceWithoutGate("CKVR3DWeldLine::setPartitionInterface\n");
    return true;
}

bool Reference::setKVRCom(CCommunication* communication, CKVRCom* collective) {
    m_pCommunication = communication;
    m_pKVRCom = collective;
    traceWithoutGate("CKVR3DWeldLine::setKVRCom\n");
    return true;
}

bool Reference::setMeshFileType(int meshFileType) {
    m_MeshFileType = meshFileType;
    traceWithoutGate("CKVR3DWeldLine::setMeshFileType\n");
    return true;
}

bool Reference::setCavityNodeConn(int** list) {
    if (list == nullptr) return false;
    m_pCavityNodeConn = list;
    traceWithoutGate("CKVR3DWeldLine::setCavityNodeConn\n");
    return true;
}

bool Reference::setWallFace20(int** list) {
    if (list == nullptr) return false;
    m_pWallFace20 = list;
    traceWithoutGate("CKVR3DWeldLine::setWallFace20\n");
    return true;
}

bool Reference::setInletFace20(int** list) {
    if (list == nullptr) return false;
    m_pInletFace20 = list;
    traceWithoutGate("CKVR3DWeldLine::setInletFace20\n");
    return true;
}

bool Reference::setOutletFace20(int** list) {
    if (list == nullptr) return false;
    m_pOutletFace20 = list;
    traceWithoutGate("CKVR3DWeldLine::setOutletFace20\n");
    return true;
}

bool Reference::setSymmFace20(int** list) {
    if (list == nullptr) return false;
    m_pSymmFace20 = list;
    traceWithoutGate("CKVR3DWeldLine::setSymmFace20\n");
    return true;
}

bool Reference::setCavityGlobalNode(int* list) {
    if (list == nullptr) return false;
    m_pCavityGlobalNode = list;
    traceWithoutGate("CKVR3DWeldLine::setCavityGlobalNode\n");
    return true;
}

bool Reference::setMapCTG2ZNL(int** list) {
    if (list == nullptr) return false;
    m_pMapCTG2ZNL = list;
    traceWithoutGate("CKVR3DWeldLine::setMapCTG2ZNL\n");
    return true;
}

bool Reference::setBiIMFlowData(float* biInjectionData) {
    m_pBiIMFlowData = biInjectionData;
    traceWithoutGate("CKVR3DWeldLine::setBiIMFlowData\n");
    return true;
}

bool Reference::setFlowData(CKvr3dGV* globalVariables, CKVR3DFiniteVolumeMesh* mesh) {
    m_pGV = globalVariables;
    m_pMesh = mesh;
    m_bound = *mesh;
    m_nCV_Total = mesh->m_nCV_Total;
    m_nCV = mesh->m_nCV;
    m_nNode = mesh->m_nNode;
    m_nInnerFace = mesh->m_nInnerFace;
    m_nBoundaryFace =
        mesh->m_nWallFace + mesh->m_nInletFace + mesh->m_nOutletFace + mesh->m_nSymmFace;

    if (m_pVariable.empty()) {
        for (Array* cellArray :
             {&m_pVariable, &m_pVariableOrg, &m_pWork1X, &m_pWork1Y, &m_pWork1Z, &m_pGradX,
              &m_pGradY, &m_pGradZ, &m_pGrad2X, &m_pGrad2Y, &m_pGrad2Z}) {
            cellArray->assign(m_nCV_Total + 1, 0.0);
        }
        m_firstSlots = m_nCV_Total;
        m_firstNodes = m_nNode;
        m_pMeetingAngle.assign(m_nNode + 1, 0.0);
        m_pZeroGradFlag.assign(m_nCV_Total + 1, 0);
    }
    InitialValue();
    m_pCellState = globalVariables->m_pCellState;

    for (int i = 1; i <= slots(); ++i) {
        m_pVariable[i] = static_cast<double>(globalVariables->m_pFlowVariable[i]);
        m_pVariableOrg[i] = m_pVariable[i];
    }
    const int* mode = globalVariables->m_pAnalysisMode;
    if (mode != nullptr && *mode == 11) {
        // The float nearest to 1.0e-30 widens to slightly more than the double 1.0e-30 and still
        // takes the bi-injection value.
        const double limit = static_cast<double>(1.0e-30f);
        for (int i = 1; i <= slots(); ++i) {
            if (m_pVariable[i] <= limit) {
                met(Event::biInjectionValue);
                m_pVariable[i] = static_cast<double>(m_pBiIMFlowData[i]);
                m_pVariableOrg[i] = m_pVariable[i];
            }
        }
    }
    m_pControlFilePath = globalVariables->m_pControlFilePath;

    const char* path = globalVariables->m_pMeshFilePath;
    std::string meshFile = path == nullptr ? "" : path;
    const std::size_t extension = meshFile.find(".q7f");
    if (extension != std::string::npos) {
        meshFile.replace(extension, 4, ".q7p");
    }
    m_MeshFileName = cut(meshFile);
    traceWithoutGate("CKVR3DWeldLine::setFlowData\n");
    return true;
}

void Reference::InitialValue() {
    for (int i = 0; i <= slots(); ++i) {
        m_pWork1X[i] = m_pWork1Y[i] = m_pWork1Z[i] = 0.0;
        m_pGradX[i] = m_pGradY[i] = m_pGradZ[i] = 0.0;
        m_pZeroGradFlag[i] = 0;
    }
    for (int i = 0; i <= nodes(); ++i) {
        m_pMeetingAngle[i] = 0.0;
    }
    traceWithoutGate("CKVR3DWeldLine::InitialValue\n");
}

double* Reference::getMeetingAngle() {
    trace("calWeldLine: getMeetingAngle\n");
    return m_pMeetingAngle.empty() ? nullptr : m_pMeetingAngle.data();
}

int Reference::calWeldLine() {
    readControlFile();
    getMeshTopologyConn();
    Smooth_Variable(m_pVariable, m_nSmooth_beforeGrad);

    if (m_WeldlingAngleMethod != 4) {
        GradVarb(m_nGrad, m_pVariable, m_pGradX, m_pGradY, m_pGradZ);
    } else if (m_GradMethodMFT == 2) {
        GradVarb_Upwind(m_pVariable, m_pGradX, m_pGradY, m_pGradZ);
        GradVarb_RBF(m_pVariable, m_pGrad2X, m_pGrad2Y, m_pGrad2Z);
    } else if (m_GradMethodMFT == 3) {
        GradVarb_Upwind(m_pVariable, m_pGradX, m_pGradY, m_pGradZ);
        int own = checkSingularLSMatrix();
        if (own == 1) met(Event::singularMesh);
        const int overall = m_pKVRCom == nullptr ? own : m_pKVRCom->AllMax(own);
        if (overall == 1) {
            GradVarb_RBF(m_pVariable, m_pGrad2X, m_pGrad2Y, m_pGrad2Z);
        } else {
            GradVarb_Iterative(m_pVariable, m_pGrad2X, m_pGrad2Y, m_pGrad2Z);
        }
    } else if (m_GradMethodMFT == 1) {
        GradVarb(m_nGrad, m_pVariable, m_pGradX, m_pGradY, m_pGradZ);
    } else if (m_GradMethodMFT == 4) {
        GradVarb_Upwind(m_pVariable, m_pGradX, m_pGradY, m_pGradZ);
    }

    Smooth_Variable(m_pGradX, m_nSmooth_afterGrad);
    Smooth_Variable(m_pGradY, m_nSmooth_afterGrad);
    Smooth_Variable(m_pGradZ, m_nSmooth_afterGrad);
    if (m_WeldlingAngleMethod == 4 && (m_GradMethodMFT == 2 || m_GradMethodMFT == 3)) {
        Smooth_Variable(m_pGrad2X, m_nSmooth_afterGrad);
        Smooth_Variable(m_pGrad2Y, m_nSmooth_afterGrad);
        Smooth_Variable(m_pGrad2Z, m_nSmooth_afterGrad);
    }

    if (m_WeldlingAngleMethod == 1) CalNodeVectorAngle_Modified_03Loop();
    if (m_WeldlingAngleMethod == 2) CalNodeVectorAngle_Modified_FaceLoop();
    if (m_WeldlingAngleMethod == 3) CalNodeVectorAngle_Modified_Hybrid();
    if (m_WeldlingAngleMethod == 4) CalNodeVectorAngle_Modified_RBF_Holvex01();
    return 0;
}

}  // namespace weldline::reference
