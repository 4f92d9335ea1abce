// The host class behind which the library finds the face interpolation. Its declaration belongs to
// the host contract and has no room for data, so what an object holds beyond its two public tables
// lies in a side table keyed by the object's address.

#include "CKvrFaceRBFInternalObject.h"

#include <mutex>
#include <unordered_map>

#include "FaceTables.h"

namespace {

constexpr int kFaceStencilCode = 1;  // the only code whose data the library reads
constexpr int kDone = 0;
constexpr int kNoMesh = 1;

struct State {
    CKvr3dGV* globalVariables = nullptr;
    CKVR3DFiniteVolumeMesh* mesh = nullptr;
    CPartitionFace_DLL* partition = nullptr;
    weldline::FaceTables tables;
};

using Object = CKvrFaceRBFInternalObject;

// References to states stay valid while others come and go, so the lock covers the look-up only;
// one object is used by one thread at a time.
class States {
  public:
    void add(const Object* object) {
        const std::lock_guard lock(m_mutex);
        m_states.try_emplace(object);
    }
    State& of(const Object* object) {
        const std::lock_guard lock(m_mutex);
        return m_states.at(object);
    }
    void remove(const Object* object) {
        const std::lock_guard lock(m_mutex);
        m_states.erase(object);
    }

  private:
    std::mutex m_mutex;
    std::unordered_map<const Object*, State> m_states;
};

// Complete before the first object is, hence destroyed after the last one of static lifetime.
States& states() {
    static States all;
    return all;
}

}  // namespace

CKvrFaceRBFInternalObject::CKvrFaceRBFInternalObject() {
    states().add(this);
}

CKvrFaceRBFInternalObject::~CKvrFaceRBFInternalObject() {
    states().remove(this);
}

int CKvrFaceRBFInternalObject::getKvr3dGV(CKvr3dGV* globalVariables, CKVRGVGPU*, CKVRGVOpenMP*,
                                          CKVR3DFiniteVolumeMesh* mesh) {
    State& state = states().of(this);
    state.globalVariables = globalVariables;
    state.mesh = mesh;
    return mesh == nullptr ? kNoMesh : kDone;
}

int CKvrFaceRBFInternalObject::getPartitionFace(CPartitionFace_DLL* partition) {
    states().of(this).partition = partition;
    return kDone;
}

// Other codes belong to interpolations that the library prepares but never reads: nothing is done.
int CKvrFaceRBFInternalObject::Initialize_FaceInterpolateData(int code) {
    if (code != kFaceStencilCode) return kDone;
    State& state = states().of(this);
    if (state.mesh == nullptr) return kNoMesh;
    m_ppFaceStencil = nullptr;
    m_ppFaceWeight = nullptr;
    state.tables = {};  // frees the old tables before the new ones need memory
    state.tables = weldline::buildFaceTables(*state.mesh, state.globalVariables, state.partition);
    m_ppFaceStencil = state.tables.stencilRows.get();
    m_ppFaceWeight = state.tables.weightRows.get();
    return kDone;
}
