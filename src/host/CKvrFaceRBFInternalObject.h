#pragma once

class CKvr3dGV;
class CKVRGVGPU;
class CKVRGVOpenMP;
class CKVR3DFiniteVolumeMesh;
class CPartitionFace_DLL;

// Radial-basis-function interpolation to inner faces. The library declares this class and never
// implements it: every host links its own.
class CKvrFaceRBFInternalObject {
  public:
    CKvrFaceRBFInternalObject();
    ~CKvrFaceRBFInternalObject();
    CKvrFaceRBFInternalObject(const CKvrFaceRBFInternalObject&) = delete;
    CKvrFaceRBFInternalObject& operator=(const CKvrFaceRBFInternalObject&) = delete;

    // The three preparation calls, in this order. Their results are the host's own status codes;
    // the library does not read them.
    int getKvr3dGV(CKvr3dGV*, CKVRGVGPU*, CKVRGVOpenMP*, CKVR3DFiniteVolumeMesh*);
    int getPartitionFace(CPartitionFace_DLL*);
    int Initialize_FaceInterpolateData(int code);

    // Valid after the preparation with code 1; both 1-based by inner face. A stencil row holds its
    // size n and n cell slots, a weight row the weights at 1 to n (element 0 means nothing).
    int** m_ppFaceStencil = nullptr;
    double** m_ppFaceWeight = nullptr;
};
