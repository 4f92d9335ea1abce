// The host's face interpolation with stencils that are built once per mesh: takes the place of the
// stand-alone host's own class, so that the RBF gradient is measured without them.

#include "CKvrFaceRBFInternalObject.h"
#include "rbf/FaceTables.h"

namespace {

const CKVR3DFiniteVolumeMesh* g_built = nullptr;
weldline::FaceTables g_tables;

}  // namespace

CKvrFaceRBFInternalObject::CKvrFaceRBFInternalObject() = default;
CKvrFaceRBFInternalObject::~CKvrFaceRBFInternalObject() = default;

int CKvrFaceRBFInternalObject::getKvr3dGV(CKvr3dGV* globalVariables, CKVRGVGPU*, CKVRGVOpenMP*,
                                          CKVR3DFiniteVolumeMesh* mesh) {
    if (g_built == mesh) return 0;
    g_tables = {};
    g_tables = weldline::buildFaceTables(*mesh, globalVariables, nullptr);
    g_built = mesh;
    return 0;
}

int CKvrFaceRBFInternalObject::getPartitionFace(CPartitionFace_DLL*) {
    return 0;
}

int CKvrFaceRBFInternalObject::Initialize_FaceInterpolateData(int) {
    m_ppFaceStencil = g_tables.stencilRows.get();
    m_ppFaceWeight = g_tables.weightRows.get();
    return 0;
}
