#pragma once

class CKvr3dGV;
class CKVR3DFiniteVolumeMesh;
class CPartitionFace_DLL;
class CCommunication;
class CKVRCom;
class CKVR3DWeldLine;

#if defined(__GNUC__)
#define WELDLINE_EXPORT __attribute__((visibility("default")))
#else
#define WELDLINE_EXPORT
#endif

// Weld lines of one mesh partition: from the mesh and the filling result the meeting angle, in
// degrees, at which melt streams meet at each node (180: nothing meets; small: head-on).
//
// Calling order:
//   1. construct the handle;
//   2. setPartitionInterface, setKVRCom, setCavityNodeConn, setWallFace20, setInletFace20,
//      setOutletFace20, setSymmFace20, setCavityGlobalNode, setMapCTG2ZNL, setMeshFileType in any
//      order; setBiIMFlowData when there are bi-injection data;
//   3. setFlowData, after setBiIMFlowData and before calWeldLine: it loads the flow variable,
//      sizes the work arrays and clears the result;
//   4. calWeldLine: every process of a partitioned run calls it at the same point;
//   5. getMeetingAngle.
// Steps 2 to 5 may be repeated. The first setFlowData decides the size of the work arrays and the
// first calWeldLine the connectivity tables, so a mesh with other counts needs a new handle.
//
// Ownership: the handle owns its calculator and the array that getMeetingAngle returns. Everything
// handed in is borrowed: it must stay valid until the last use of the handle and is never freed.
//
// Copies are shallow: a copy refers to the calculator of its source, and only one handle of a set
// of copies may be destroyed.
//
// Nothing is validated and no method throws on purpose; exhaustion of memory raises std::bad_alloc.
class WELDLINE_EXPORT CKVR3D_WeldLine_Manipulator {
  public:
    CKVR3D_WeldLine_Manipulator();
    CKVR3D_WeldLine_Manipulator(const CKVR3D_WeldLine_Manipulator& other);
    CKVR3D_WeldLine_Manipulator& operator=(const CKVR3D_WeldLine_Manipulator& other);
    virtual ~CKVR3D_WeldLine_Manipulator();

    // Binds the solver object and the mesh, loads the flow variable and clears the result. Always
    // true.
    bool setFlowData(CKvr3dGV* globalVariables, CKVR3DFiniteVolumeMesh* mesh);

    // Partition interface, halo exchange and collective maximum; null is stored. Always true.
    bool setPartitionInterface(CPartitionFace_DLL* partitionFaces);
    bool setKVRCom(CCommunication* communication, CKVRCom* collective);

    // Kind of the mesh file; 2 selects other default boundary angles in methods 1 and 2. Always
    // true.
    bool setMeshFileType(int meshFileType);

    // Lists kept for the host: false for a null argument, which is not stored, else true.
    bool setCavityNodeConn(int** cavityNodeConn);
    bool setWallFace20(int** wallFaces);
    bool setInletFace20(int** inletFaces);
    bool setOutletFace20(int** outletFaces);
    bool setSymmFace20(int** symmetryFaces);
    bool setCavityGlobalNode(int* globalNodes);
    bool setMapCTG2ZNL(int** map);

    // Bi-injection values per cell slot, 1-based; null is stored. Always true.
    bool setBiIMFlowData(float* biInjectionData);

    // Runs the whole calculation. Always 0.
    int calWeldLine();

    // Meeting angle per node in degrees, 1-based with an unused slot 0; null before the first
    // setFlowData. Owned by the calculator and valid until the handle is destroyed.
    double* getMeetingAngle();

  private:
    CKVR3DWeldLine* m_pWeldLine;  // owned, shared by shallow copies
    void* m_pReserved1;           // five reserved words: zero, copied, not used
    void* m_pReserved2;
    void* m_pReserved3;
    void* m_pReserved4;
    void* m_pReserved5;
};
