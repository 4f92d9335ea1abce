#include "CKVR3D_WeldLine_Manipulator.h"

#include "CKVR3DWeldLine.h"

CKVR3D_WeldLine_Manipulator::CKVR3D_WeldLine_Manipulator()
    : m_pWeldLine(new CKVR3DWeldLine),
      m_pReserved1(nullptr),
      m_pReserved2(nullptr),
      m_pReserved3(nullptr),
      m_pReserved4(nullptr),
      m_pReserved5(nullptr) {}

// On purpose: shallow, the copy refers to the same calculator.
CKVR3D_WeldLine_Manipulator::CKVR3D_WeldLine_Manipulator(const CKVR3D_WeldLine_Manipulator& other) =
    default;

CKVR3D_WeldLine_Manipulator& CKVR3D_WeldLine_Manipulator::operator=(
    const CKVR3D_WeldLine_Manipulator& other) = default;

CKVR3D_WeldLine_Manipulator::~CKVR3D_WeldLine_Manipulator() {
    delete m_pWeldLine;
    m_pWeldLine = nullptr;
}

bool CKVR3D_WeldLine_Manipulator::setFlowData(CKvr3dGV* globalVariables,
                                              CKVR3DFiniteVolumeMesh* mesh) {
    return m_pWeldLine->setFlowData(globalVariables, mesh);
}

bool CKVR3D_WeldLine_Manipulator::setPartitionInterface(CPartitionFace_DLL* partitionFaces) {
    return m_pWeldLine->setPartitionInterface(partitionFaces);
}

bool CKVR3D_WeldLine_Manipulator::setKVRCom(CCommunication* communication, CKVRCom* collective) {
    return m_pWeldLine->setKVRCom(communication, collective);
}

bool CKVR3D_WeldLine_Manipulator::setMeshFileType(int meshFileType) {
    return m_pWeldLine->setMeshFileType(meshFileType);
}

bool CKVR3D_WeldLine_Manipulator::setCavityNodeConn(int** cavityNodeConn) {
    return m_pWeldLine->setCavityNodeConn(cavityNodeConn);
}

bool CKVR3D_WeldLine_Manipulator::setWallFace20(int** wallFaces) {
    return m_pWeldLine->setWallFace20(wallFaces);
}

bool CKVR3D_WeldLine_Manipulator::setInletFace20(int** inletFaces) {
    return m_pWeldLine->setInletFace20(inletFaces);
}

bool CKVR3D_WeldLine_Manipulator::setOutletFace20(int** outletFaces) {
    return m_pWeldLine->setOutletFace20(outletFaces);
}

bool CKVR3D_WeldLine_Manipulator::setSymmFace20(int** symmetryFaces) {
    return m_pWeldLine->setSymmFace20(symmetryFaces);
}

bool CKVR3D_WeldLine_Manipulator::setCavityGlobalNode(int* globalNodes) {
    return m_pWeldLine->setCavityGlobalNode(globalNodes);
}

bool CKVR3D_WeldLine_Manipulator::setMapCTG2ZNL(int** map) {
    return m_pWeldLine->setMapCTG2ZNL(map);
}

bool CKVR3D_WeldLine_Manipulator::setBiIMFlowData(float* biInjectionData) {
    return m_pWeldLine->setBiIMFlowData(biInjectionData);
}

int CKVR3D_WeldLine_Manipulator::calWeldLine() {
    return m_pWeldLine->calWeldLine();
}

double* CKVR3D_WeldLine_Manipulator::getMeetingAngle() {
    return m_pWeldLine->getMeetingAngle();
}
