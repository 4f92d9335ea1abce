// The host's RBF objects, as the random cases have them: all calls go to the host of the thread.
#include "CKvrFaceRBFInternalObject.h"
#include "StrictHost.h"

using weldline::reference::StrictHost;

CKvrFaceRBFInternalObject::CKvrFaceRBFInternalObject() {
    StrictHost::ofThisThread().rbfConstructed(this);
}

CKvrFaceRBFInternalObject::~CKvrFaceRBFInternalObject() {
    StrictHost::ofThisThread().rbfDestroyed(this);
}

int CKvrFaceRBFInternalObject::getKvr3dGV(CKvr3dGV* gv, CKVRGVGPU* gpu, CKVRGVOpenMP* openMP,
                                          CKVR3DFiniteVolumeMesh* mesh) {
    StrictHost::ofThisThread().rbfVariables(this, gv, gpu, openMP, mesh);
    return -1;
}

int CKvrFaceRBFInternalObject::getPartitionFace(CPartitionFace_DLL* partitionFaces) {
    StrictHost::ofThisThread().rbfPartition(this, partitionFaces);
    return 0;
}

int CKvrFaceRBFInternalObject::Initialize_FaceInterpolateData(int code) {
    StrictHost::ofThisThread().rbfInitialize(this, code, m_ppFaceStencil, m_ppFaceWeight);
    return code;
}
