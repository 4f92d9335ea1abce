#include "CKVR3DWeldLine.h"
#include "Trace.h"

using weldline::core::trace;
using weldline::core::traceSetter;

namespace {

template <class List>
bool storeUnlessNull(CKVR3DWeldLine& record, List*& field, List* list, const char* text) {
    if (list == nullptr) return false;
    field = list;
    traceSetter(record, text);
    return true;
}

}  // namespace

bool CKVR3DWeldLine::setPartitionInterface(CPartitionFace_DLL* partitionFaces) {
    m_pPartitionFace = partitionFaces;
    traceSetter(*this, "CKVR3DWeldLine::setPartitionInterface\n");
    return true;
}

bool CKVR3DWeldLine::setKVRCom(CCommunication* communication, CKVRCom* collective) {
    m_pCommunication = communication;
    m_pKVRCom = collective;
    traceSetter(*this, "CKVR3DWeldLine::setKVRCom\n");
    return true;
}

bool CKVR3DWeldLine::setMeshFileType(int meshFileType) {
    m_MeshFileType = meshFileType;
    traceSetter(*this, "CKVR3DWeldLine::setMeshFileType\n");
    return true;
}

bool CKVR3DWeldLine::setCavityNodeConn(int** cavityNodeConn) {
    return storeUnlessNull(*this, m_pCavityNodeConn, cavityNodeConn,
                           "CKVR3DWeldLine::setCavityNodeConn\n");
}

bool CKVR3DWeldLine::setWallFace20(int** wallFaces) {
    return storeUnlessNull(*this, m_pWallFace20, wallFaces, "CKVR3DWeldLine::setWallFace20\n");
}

bool CKVR3DWeldLine::setInletFace20(int** inletFaces) {
    return storeUnlessNull(*this, m_pInletFace20, inletFaces, "CKVR3DWeldLine::setInletFace20\n");
}

bool CKVR3DWeldLine::setOutletFace20(int** outletFaces) {
    return storeUnlessNull(*this, m_pOutletFace20, outletFaces,
                           "CKVR3DWeldLine::setOutletFace20\n");
}

bool CKVR3DWeldLine::setSymmFace20(int** symmetryFaces) {
    return storeUnlessNull(*this, m_pSymmFace20, symmetryFaces, "CKVR3DWeldLine::setSymmFace20\n");
}

bool CKVR3DWeldLine::setCavityGlobalNode(int* globalNodes) {
    return storeUnlessNull(*this, m_pCavityGlobalNode, globalNodes,
                           "CKVR3DWeldLine::setCavityGlobalNode\n");
}

bool CKVR3DWeldLine::setMapCTG2ZNL(int** map) {
    return storeUnlessNull(*this, m_pMapCTG2ZNL, map, "CKVR3DWeldLine::setMapCTG2ZNL\n");
}

bool CKVR3DWeldLine::setBiIMFlowData(float* biInjectionData) {
    m_pBiIMFlowData = biInjectionData;
    traceSetter(*this, "CKVR3DWeldLine::setBiIMFlowData\n");
    return true;
}

// On purpose: stricter than the setters, this line is written on the master process only.
double* CKVR3DWeldLine::getMeetingAngle() {
    trace(*this, "calWeldLine: getMeetingAngle\n");
    return m_pMeetingAngle;
}
