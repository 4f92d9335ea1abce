#include "QuietHost.h"

#include <algorithm>

#include "BoxMesh.h"
#include "CKvrFaceRBFInternalObject.h"
#include "ShakenBox.h"

namespace weldline::test {

QuietHost::QuietHost(const std::function<void(TestHost&)>& fill) {
    fill(host);
    // Too long for the place that short strings have within themselves.
    host.gv()->m_pMeshFilePath = "a/folder/with/quite/a/long/name/part.q7f";
    makeTables();
    m_biInjection.assign(host.slots() + 1, 1.0F);
}

void QuietHost::makeTables() {
    static_cast<CKVR3DFiniteVolumeMesh&>(m_mesh) = *host.mesh();
    for (int f = 1; f <= m_mesh.m_nInnerFace; ++f) {
        const double* face = m_mesh.m_ppInnerFace[f];
        const double lambda = m_mesh.m_pInnerFaceLambda[f];
        m_stencils.push_back({2, static_cast<int>(face[1]), static_cast<int>(face[2])});
        m_weights.push_back({NaN, 1.0 - lambda, lambda});
    }
    for (std::vector<int>& row : m_stencils) m_stencilRows.push_back(row.data());
    for (std::vector<double>& row : m_weights) m_weightRows.push_back(row.data());
    m_mesh.stencils = m_stencilRows.data();
    m_mesh.weights = m_weightRows.data();
}

void QuietHost::choose(const Choice& choice, const std::vector<std::string>& lines) {
    host.gradSetSwitch = choice.gradSetSwitch;
    host.setControl(settings(choice.method, choice.gradientMethod, lines));
}

void QuietHost::bind(CKVR3D_WeldLine_Manipulator& handle) {
    handle.setPartitionInterface(host.partition());
    handle.setKVRCom(this, this);
    handle.setCavityNodeConn(m_rows);
    handle.setWallFace20(m_rows);
    handle.setInletFace20(m_rows);
    handle.setOutletFace20(m_rows);
    handle.setSymmFace20(m_rows);
    handle.setCavityGlobalNode(m_row);
    handle.setMapCTG2ZNL(m_rows);
    handle.setMeshFileType(1);
    handle.setBiIMFlowData(m_biInjection.data());
    handle.setFlowData(host.gv(), &m_mesh);
}

void QuietHost::calculate(std::vector<double>& angles) {
    CKVR3D_WeldLine_Manipulator handle;
    bind(handle);
    handle.calWeldLine();
    read(handle, angles);
}

void QuietHost::read(CKVR3D_WeldLine_Manipulator& handle, std::vector<double>& angles) const {
    std::copy_n(handle.getMeetingAngle() + 1, angles.size(), angles.begin());
}

std::vector<double> QuietHost::roomForAngles() const {
    return std::vector<double>(m_mesh.m_nNode, NaN);
}

void addTwoCells(TestHost& host) {
    addBox(host, 2, 1, 1, 1.0);
    host.finish();
    setField(host, [](Point p) { return 1.0 + p[0]; });
}

}  // namespace weldline::test

CKvrFaceRBFInternalObject::CKvrFaceRBFInternalObject() = default;

CKvrFaceRBFInternalObject::~CKvrFaceRBFInternalObject() = default;

int CKvrFaceRBFInternalObject::getKvr3dGV(CKvr3dGV*, CKVRGVGPU*, CKVRGVOpenMP*,
                                          CKVR3DFiniteVolumeMesh* mesh) {
    const auto* tabled = static_cast<const weldline::test::TabledMesh*>(mesh);
    m_ppFaceStencil = tabled->stencils;
    m_ppFaceWeight = tabled->weights;
    return 0;
}

int CKvrFaceRBFInternalObject::getPartitionFace(CPartitionFace_DLL*) {
    return 0;
}

int CKvrFaceRBFInternalObject::Initialize_FaceInterpolateData(int) {
    return 0;
}
