#include <map>
#include <stdexcept>
#include <string>

#include "CKvrFaceRBFInternalObject.h"
#include "TestHost.h"

// The test host's RBF objects: they log every call and offer rbfRows() after preparation with
// code 1.

namespace weldline::test {

namespace {

struct Prepared {
    int number = 0;
    CKVR3DFiniteVolumeMesh* mesh = nullptr;
    std::vector<std::vector<int>> stencils;
    std::vector<std::vector<double>> weights;
    std::vector<int*> stencilRows;
    std::vector<double*> weightRows;
};

int g_constructed = 0;
int g_throwing = -1;
std::map<const CKvrFaceRBFInternalObject*, Prepared>& prepared() {
    static std::map<const CKvrFaceRBFInternalObject*, Prepared> objects;
    return objects;
}

void log(const CKvrFaceRBFInternalObject* object, const std::string& call) {
    callLog().push_back("RBF" + std::to_string(prepared()[object].number) + " " + call);
}

void fill(Prepared& object) {
    object.stencils.clear();
    object.weights.clear();
    object.stencilRows.assign(1, nullptr);
    object.weightRows.assign(1, nullptr);
    const int faces = object.mesh->m_nInnerFace;
    for (int f = 1; f <= faces; ++f) {
        const double* row = object.mesh->m_ppInnerFace[f];
        const double lambda = object.mesh->m_pInnerFaceLambda[f];
        std::vector<int> stencil{static_cast<int>(row[1]), static_cast<int>(row[2])};
        std::vector<double> weight{1.0 - lambda, lambda};
        if (!rbfRows().stencils.empty()) {
            stencil = rbfRows().stencils[f - 1];
            weight = rbfRows().weights[f - 1];
        }
        stencil.insert(stencil.begin(), static_cast<int>(stencil.size()));
        weight.insert(weight.begin(), NaN);
        object.stencils.push_back(stencil);
        object.weights.push_back(weight);
    }
    for (int f = 0; f < faces; ++f) {
        object.stencilRows.push_back(object.stencils[f].data());
        object.weightRows.push_back(object.weights[f].data());
    }
}

}  // namespace

RbfRows& rbfRows() {
    static RbfRows rows;
    return rows;
}

void resetRbfObjects(int throwingObject) {
    g_constructed = 0;
    g_throwing = throwingObject;
}

}  // namespace weldline::test

using namespace weldline::test;

CKvrFaceRBFInternalObject::CKvrFaceRBFInternalObject() {
    const int number = g_constructed++ % 5;
    if (number == g_throwing) throw std::runtime_error("RBF object cannot be built");
    prepared()[this].number = number;
    log(this, "construct");
}

CKvrFaceRBFInternalObject::~CKvrFaceRBFInternalObject() {
    log(this, "destroy");
    prepared().erase(this);
}

int CKvrFaceRBFInternalObject::getKvr3dGV(CKvr3dGV*, CKVRGVGPU*, CKVRGVOpenMP*,
                                          CKVR3DFiniteVolumeMesh* mesh) {
    log(this, "getKvr3dGV");
    prepared()[this].mesh = mesh;
    return 0;
}

int CKvrFaceRBFInternalObject::getPartitionFace(CPartitionFace_DLL*) {
    log(this, "getPartitionFace");
    return 0;
}

int CKvrFaceRBFInternalObject::Initialize_FaceInterpolateData(int code) {
    log(this, "Initialize " + std::to_string(code));
    if (code != 1) return 0;
    Prepared& object = prepared()[this];
    fill(object);
    m_ppFaceStencil = rbfRows().hasStencils ? object.stencilRows.data() : nullptr;
    m_ppFaceWeight = rbfRows().hasWeights ? object.weightRows.data() : nullptr;
    return 0;
}
