#pragma once

#include <cstdio>

#include "CKvrFaceRBFInternalObject.h"
#include "WorkStorage.h"

class CKvr3dGV;
class CPartitionFace_DLL;
class CCommunication;
class CKVRCom;
class CKVR3DFiniteVolumeMesh;

// The calculator behind the public handle: settings, borrowed host data, work arrays, and the
// steps of the calculation as members. The order and the types of the fields are a contract.
//
// Borrowed: never freed here. Owned: lives in m_Storage, and the field is its address. Scratch:
// owned, with no meaning between steps. All arrays are 1-based with an unused slot 0.
class CKVR3DWeldLine {
  public:
    CKVR3DWeldLine();
    CKVR3DWeldLine(const CKVR3DWeldLine&) = delete;
    CKVR3DWeldLine& operator=(const CKVR3DWeldLine&) = delete;
    virtual ~CKVR3DWeldLine();

    // Setters of the handle (core/Setters.cpp, core/Binding.cpp).
    bool setFlowData(CKvr3dGV* globalVariables, CKVR3DFiniteVolumeMesh* mesh);
    bool setPartitionInterface(CPartitionFace_DLL* partitionFaces);
    bool setKVRCom(CCommunication* communication, CKVRCom* collective);
    bool setMeshFileType(int meshFileType);
    bool setCavityNodeConn(int** cavityNodeConn);
    bool setWallFace20(int** wallFaces);
    bool setInletFace20(int** inletFaces);
    bool setOutletFace20(int** outletFaces);
    bool setSymmFace20(int** symmetryFaces);
    bool setCavityGlobalNode(int* globalNodes);
    bool setMapCTG2ZNL(int** map);
    bool setBiIMFlowData(float* biInjectionData);
    double* getMeetingAngle();
    void InitialValue();

    // Driver (core/Driver.cpp).
    int calWeldLine();

    // Control file and debug trace (settings/).
    int readControlFile();

    // Connectivity and singularity test (topology/).
    void getMeshTopologyConn();
    void getInnerCell03Conn();
    void getCell32Conn();
    int checkSingularLSMatrix();

    // Smoothing and gradients (gradient/). Arrays run over the cell slots.
    void Smooth_Variable(double* phi, int nPass);
    void GradVarb(int nIter, const double* phi, double* gx, double* gy, double* gz);
    void GradVarb_FaceContribution(int nIter, const double* phi, double* gx, double* gy, double* gz,
                                   double lambda, int a, int b, double Sx, double Sy, double Sz,
                                   double xf, double yf, double zf);
    void GradVarb_Upwind(const double* phi, double* gx, double* gy, double* gz);
    void GradVarb_Iterative(const double* phi, double* gx, double* gy, double* gz);
    void GradVarb_RBF(const double* phi, double* gx, double* gy, double* gz);

    // Meeting angle (angle/).
    void CalNodeVectorAngle_Modified_03Loop();
    void CalNodeVectorAngle_Modified_FaceLoop();
    void CalNodeVectorAngle_Modified_Hybrid();
    void CalNodeVectorAngle_Modified_RBF_Holvex01();
    void truncateAngle();

    // Host objects, borrowed.
    CKvr3dGV* m_pGV = nullptr;
    CPartitionFace_DLL* m_pPartitionFace = nullptr;
    CCommunication* m_pCommunication = nullptr;
    CKVRCom* m_pKVRCom = nullptr;
    CKVR3DFiniteVolumeMesh* m_pMesh = nullptr;

    bool m_FlagDebugOutput = false;  // switched on by the control file only, never off
    FILE* m_pDebugFile = nullptr;    // owned, open from the first traced run to the end
    int m_MeshFileType = 0;          // 2: other default boundary angles in methods 1 and 2

    // Counts of the bound mesh.
    int m_nCV_Total = 0;  // cell slots: own cells, boundary slots, halo
    int m_nCV = 0;        // own cells
    int m_nNode = 0;
    int m_nCountAux = 0;  // kept for the host
    int m_nInnerFace = 0;
    int m_nBoundaryFace = 0;
    int m_nWallFace = 0;
    int m_nInletFace = 0;
    int m_nOutletFace = 0;
    int m_nSymmFace = 0;

    // Cells, borrowed.
    double* m_pXc = nullptr;
    double* m_pYc = nullptr;
    double* m_pZc = nullptr;
    double* m_pVolume = nullptr;
    void* m_pHostCellArrayA = nullptr;  // kept for the host
    void* m_pHostCellArrayB = nullptr;  // kept for the host
    int** m_ppCellNode = nullptr;
    int* m_pCellState = nullptr;
    int** m_ppCellFace = nullptr;
    int** m_ppCellFaceType = nullptr;
    int** m_ppCellNeighbour = nullptr;

    // Previous-iteration gradient of the default scheme; running sums of the smoothing. Scratch.
    double* m_pWork1X = nullptr;
    double* m_pWork1Y = nullptr;
    double* m_pWork1Z = nullptr;

    // First gradient set, owned.
    double* m_pGradX = nullptr;
    double* m_pGradY = nullptr;
    double* m_pGradZ = nullptr;

    // Nodes and inner faces, borrowed, but for the node-to-cell rows, which are owned.
    double* m_pNodeX = nullptr;
    double* m_pNodeY = nullptr;
    double* m_pNodeZ = nullptr;
    int** m_pCavityNodeConn = nullptr;  // kept for the host
    int** m_ppNodeCell = nullptr;
    double** m_ppInnerFace = nullptr;
    double* m_pInnerFaceLambda = nullptr;

    // Boundary groups, borrowed. Of the outlet group the calculation reads nothing.
    double* m_pWallFaceXc = nullptr;
    double* m_pWallFaceYc = nullptr;
    double* m_pWallFaceZc = nullptr;
    double* m_pWallFaceSx = nullptr;
    double* m_pWallFaceSy = nullptr;
    double* m_pWallFaceSz = nullptr;
    int* m_pWallFaceCV = nullptr;
    int* m_pWallFaceBnd = nullptr;
    double* m_pInletFaceXc = nullptr;
    double* m_pInletFaceYc = nullptr;
    double* m_pInletFaceZc = nullptr;
    double* m_pInletFaceSx = nullptr;
    double* m_pInletFaceSy = nullptr;
    double* m_pInletFaceSz = nullptr;
    int* m_pInletFaceCV = nullptr;
    int* m_pInletFaceBnd = nullptr;
    double* m_pOutletFaceXc = nullptr;
    double* m_pOutletFaceYc = nullptr;
    double* m_pOutletFaceZc = nullptr;
    double* m_pOutletFaceSx = nullptr;
    double* m_pOutletFaceSy = nullptr;
    double* m_pOutletFaceSz = nullptr;
    int* m_pOutletFaceCV = nullptr;
    int* m_pOutletFaceBnd = nullptr;
    double* m_pSymmFaceXc = nullptr;
    double* m_pSymmFaceYc = nullptr;
    double* m_pSymmFaceZc = nullptr;
    double* m_pSymmFaceSx = nullptr;
    double* m_pSymmFaceSy = nullptr;
    double* m_pSymmFaceSz = nullptr;
    int* m_pSymmFaceCV = nullptr;
    int* m_pSymmFaceBnd = nullptr;
    int** m_ppParFaceNode = nullptr;

    // Face lists, borrowed and kept for the host: the groups above come from the mesh.
    int** m_pWallFace20 = nullptr;
    int** m_pInletFace20 = nullptr;
    int** m_pOutletFace20 = nullptr;
    int** m_pSymmFace20 = nullptr;

    void** m_ppNodeScratch = nullptr;  // owned: 80 zero bytes per node, kept for the host

    // Settings.
    int m_nGradLoopBound = 1;  // iteration of GradVarb that is not carried over
    int m_WeldlingAngleMethod = 4;
    int m_nGrad = 6;
    int m_nSmooth_beforeGrad = 2;
    int m_nSmooth_afterGrad = 4;
    double m_TruncateAngle = 135.0;  // degrees
    double m_BoundaryAngle = -1.0;   // degrees; methods 1 to 3 leave its cosine here
    double m_GradValueFilterPara = 1.0;
    double m_Volume_Filter = 0.2;
    int m_GradMethodMFT = 3;

    int* m_pZeroGradFlag = nullptr;  // owned, per cell: 1 where a scheme zeroed the gradient
    double m_GradMeanFactor = 1.0e-4;
    double m_GradMagUpper = 0.0;
    double m_GradMagLower = 0.0;

    void* m_pHostArray1 = nullptr;  // kept for the host
    void* m_pHostArray2 = nullptr;
    void* m_pHostArray3 = nullptr;
    void* m_pHostArray4 = nullptr;
    const char* m_pControlFilePath = nullptr;  // borrowed
    char m_MeshFileName[1024] = {};            // kept for the host
    char m_DebugFileName[1024] = {};

    void* m_pReserved1 = nullptr;        // reserved: a char array, freed here if set
    int* m_pCavityGlobalNode = nullptr;  // borrowed, kept for the host
    int** m_pMapCTG2ZNL = nullptr;       // borrowed, kept for the host
    double* m_pVariable = nullptr;       // owned: flow variable, smoothed in place
    double* m_pVariableOrg = nullptr;    // owned: flow variable as loaded
    double* m_pMeetingAngle = nullptr;   // owned: the result, degrees per node
    float* m_pBiIMFlowData = nullptr;    // borrowed
    void** m_ppReserved2 = nullptr;      // reserved: rows of char per cell slot, freed if set
    int** m_ppCellInnerFace = nullptr;   // owned: per cell its inner faces
    int m_nMaxCellFace = 0;
    int m_nMinCellFace = 0;
    int* m_pCellFlag2 = nullptr;  // owned, kept for the host
    int m_bMethod40 = 0;
    int m_nDefaultPass = 0;
    CKvrFaceRBFInternalObject m_RBF[5];
    double m_FaceAreaMag = 0.0;  // area of the last inner face that GradVarb_RBF interpolated

    // Second gradient set, owned.
    double* m_pGrad2X = nullptr;
    double* m_pGrad2Y = nullptr;
    double* m_pGrad2Z = nullptr;

    weldline::core::WorkStorage m_Storage;  // the memory behind the owned fields
};
