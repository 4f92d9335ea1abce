#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "CCommunication.h"
#include "CKVR3DFiniteVolumeMesh.h"
#include "CKVRCom.h"
#include "CKvr3dGV.h"
#include "CKvrFaceRBFInternalObject.h"
#include "CPartitionFace_DLL.h"
#include "Events.h"

namespace weldline::reference {

// The whole weld-line calculation, written down once more as plainly as possible: no packing, no
// caching, no sharing of look-alikes. Random cases are run through this class and through the
// library, and every bit is compared.
//
// The public operations are those of the exported class. Fields have the names of the calculator
// record, so that one template reads both; owned arrays are vectors with an unused slot 0. A null
// partition, communication or collective object means one process without neighbours, a null
// process number 0.
//
// The owned arrays keep the size of the first binding. Of a later, larger mesh only what fits into
// them is worked on: faces with a cell beyond them are left out, and so are nodes beyond them.
class Reference {
  public:
    Reference() = default;
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    ~Reference();

    bool setFlowData(CKvr3dGV* globalVariables, CKVR3DFiniteVolumeMesh* mesh);
    bool setPartitionInterface(CPartitionFace_DLL* partitionFaces);
    bool setKVRCom(CCommunication* communication, CKVRCom* collective);
    bool setMeshFileType(int meshFileType);
    bool setCavityNodeConn(int** list);
    bool setWallFace20(int** list);
    bool setInletFace20(int** list);
    bool setOutletFace20(int** list);
    bool setSymmFace20(int** list);
    bool setCavityGlobalNode(int* list);
    bool setMapCTG2ZNL(int** list);
    bool setBiIMFlowData(float* biInjectionData);
    int calWeldLine();
    double* getMeetingAngle();

    using Array = std::vector<double>;
    using Rows = std::vector<std::vector<int>>;

    // One boundary group of the bound mesh.
    struct Group {
        int count;
        const double *xc, *yc, *zc, *sx, *sy, *sz;
        const int *cell, *slot;
    };
    Group wall() const;
    Group inlet() const;
    Group symmetry() const;

    // Steps.
    void InitialValue();
    int readControlFile();
    void readLines(std::FILE* file);
    bool readSection(std::FILE* file);
    void applyMethodDefaults();
    void readKeys(std::string& line);
    void openDebugFile();
    void traceSettings();
    void getMeshTopologyConn();
    void getInnerCell03Conn();
    void getCell32Conn();
    int checkSingularLSMatrix();
    void Smooth_Variable(Array& phi, int nPass);
    void GradVarb(int nIter, const Array& phi, Array& gx, Array& gy, Array& gz);
    void GradVarb_FaceContribution(int nIter, const Array& phi, Array& gx, Array& gy, Array& gz,
                                   double lambda, int a, int b, double Sx, double Sy, double Sz,
                                   double xf, double yf, double zf);
    void GradVarb_Upwind(const Array& phi, Array& gx, Array& gy, Array& gz);
    void GradVarb_Iterative(const Array& phi, Array& gx, Array& gy, Array& gz);
    void GradVarb_RBF(const Array& phi, Array& gx, Array& gy, Array& gz);
    void CalNodeVectorAngle_Modified_03Loop();
    void CalNodeVectorAngle_Modified_FaceLoop();
    void CalNodeVectorAngle_Modified_Hybrid();
    void CalNodeVectorAngle_Modified_RBF_Holvex01();
    void truncateAngle();

    // Helpers of the steps.
    void trace(const char* text);
    void traceWithoutGate(const char* text);
    void met(Event event) { ++m_events[static_cast<std::size_t>(event)]; }
    int partitionFaces() const;
    bool isMaster() const;
    bool outgrown() const { return m_nCV_Total > m_firstSlots; }
    int slots() const { return std::min(m_nCV_Total, m_firstSlots); }
    int ownCells() const { return std::min(m_nCV, slots()); }
    int nodes() const { return std::min(m_nNode, m_firstNodes); }
    bool fits(int cell) const { return cell >= 1 && cell <= slots(); }
    bool fits(int a, int b) const { return fits(a) && fits(b); }
    std::vector<int> cellsOfNode(int node) const;
    void exchange(Array& cellArray);
    int innerFaceCell(int face, int side) const;
    bool takesPart(int a, int b) const;
    void upwindInnerFaces(const Array& phi, Array& gx, Array& gy, Array& gz);
    void upwindPartitionFaces(const Array& phi, Array& gx, Array& gy, Array& gz);
    void copyToSlots(const Group& group, Array& gx, Array& gy, Array& gz) const;
    void zeroFlatCells(double limit, Array& gx, Array& gy, Array& gz);
    void rbfPrepare();
    void rbfInnerFaces(const Array& phi, Array& gx, Array& gy, Array& gz);
    void rbfPartitionFaces(const Array& phi, Array& gx, Array& gy, Array& gz);
    void boundaryAngleToCosine(double defaultAngle);
    void gradientLimits();
    struct Vector {
        double x, y, z;
    };
    Vector gradient(int cell) const;
    Vector centre(int cell) const;
    Vector faceCentre(int cell, int position);
    double angle(int a, int b) const;
    bool rejected(int a, int b) const;
    bool pointsAt(const Vector& point, int a, int b, double limit) const;
    bool pairMeets(const Vector& point, int a, int b);
    void keepLargest(int node, double theta);
    void nodePointPairTest(int node, int a, int b);
    void facePointPairTest(int node, int position, int a, int b);
    void convergingPairTest(int node, int position, int a, int b);
    void walkFaces(void (Reference::*pairTest)(int, int, int, int));
    void hybridNode(int node);
    void overrideByCellState();

    // Host objects, borrowed. The mesh is kept as it stood at binding.
    CKvr3dGV* m_pGV = nullptr;
    CPartitionFace_DLL* m_pPartitionFace = nullptr;
    CCommunication* m_pCommunication = nullptr;
    CKVRCom* m_pKVRCom = nullptr;
    CKVR3DFiniteVolumeMesh* m_pMesh = nullptr;
    CKVR3DFiniteVolumeMesh m_bound;
    const int* m_pCellState = nullptr;
    const char* m_pControlFilePath = nullptr;
    float* m_pBiIMFlowData = nullptr;
    int** m_pCavityNodeConn = nullptr;
    int** m_pWallFace20 = nullptr;
    int** m_pInletFace20 = nullptr;
    int** m_pOutletFace20 = nullptr;
    int** m_pSymmFace20 = nullptr;
    int* m_pCavityGlobalNode = nullptr;
    int** m_pMapCTG2ZNL = nullptr;

    bool m_FlagDebugOutput = false;
    std::FILE* m_pDebugFile = nullptr;
    int m_MeshFileType = 0;
    int m_nCV_Total = 0;
    int m_nCV = 0;
    int m_nNode = 0;
    int m_nInnerFace = 0;
    int m_nBoundaryFace = 0;
    int m_nGradLoopBound = 1;
    int m_WeldlingAngleMethod = 4;
    int m_nGrad = 6;
    int m_nSmooth_beforeGrad = 2;
    int m_nSmooth_afterGrad = 4;
    double m_TruncateAngle = 135.0;
    double m_BoundaryAngle = -1.0;
    double m_GradValueFilterPara = 1.0;
    double m_Volume_Filter = 0.2;
    int m_GradMethodMFT = 3;
    double m_GradMeanFactor = 1.0e-4;
    double m_GradMagUpper = 0.0;
    double m_GradMagLower = 0.0;
    int m_nMaxCellFace = 0;
    int m_nMinCellFace = 0;
    int m_bMethod40 = 0;
    int m_nDefaultPass = 0;
    double m_FaceAreaMag = 0.0;
    std::string m_MeshFileName;
    std::string m_DebugFileName;

    Array m_pVariable, m_pVariableOrg;
    Array m_pWork1X, m_pWork1Y, m_pWork1Z;
    Array m_pGradX, m_pGradY, m_pGradZ;
    Array m_pGrad2X, m_pGrad2Y, m_pGrad2Z;
    Array m_pMeetingAngle;
    std::vector<int> m_pZeroGradFlag;
    int m_firstSlots = 0;
    int m_firstNodes = 0;
    Rows m_ppNodeCell, m_ppCellInnerFace;

    CKvrFaceRBFInternalObject m_RBF[5];

    EventCounts m_events{};
};

}  // namespace weldline::reference
