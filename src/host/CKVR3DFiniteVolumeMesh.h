#pragma once

// The host's finite-volume mesh of one partition. Filled and owned by the host.
//
// All arrays are 1-based: slot 0 exists and means nothing. Cell slots are ordered own cells,
// boundary-value slots (one per boundary face), halo slots. In a row table, element 0 of a row is
// its count and elements 1 to count are its members.
class CKVR3DFiniteVolumeMesh {
  public:
    int m_nCV_Total = 0;  // cell slots
    int m_nCV = 0;        // own cells
    int m_nNode = 0;
    int m_nCountAux = 0;
    int m_nInnerFace = 0;
    int m_nWallFace = 0;
    int m_nInletFace = 0;
    int m_nOutletFace = 0;
    int m_nSymmFace = 0;

    double* m_pXc = nullptr;  // cell centres, per cell slot
    double* m_pYc = nullptr;
    double* m_pZc = nullptr;
    double* m_pVolume = nullptr;
    double* m_pNodeX = nullptr;
    double* m_pNodeY = nullptr;
    double* m_pNodeZ = nullptr;

    // Per inner face a row of reals: [1], [2] the two cells, [3..5] the area vector from the first
    // cell to the second, [6..8] the face centre.
    double** m_ppInnerFace = nullptr;
    double* m_pInnerFaceLambda = nullptr;  // interpolation weight of the second cell

    int** m_ppCellNode = nullptr;       // per own cell: nodes
    int** m_ppCellFace = nullptr;       // per own cell: face numbers within their kind
    int** m_ppCellFaceType = nullptr;   // [k] 0 inner, 101 partition interface, other boundary
    int** m_ppCellNeighbour = nullptr;  // per own cell: neighbouring cells
    int** m_ppParFaceNode = nullptr;    // per partition-interface face: nodes

    void* m_pHostCellArrayB = nullptr;

    // Boundary groups: face centre, outward area vector, own cell, boundary-value slot.
    // Wall faces.
    double* m_pWallFaceXc = nullptr;
    double* m_pWallFaceYc = nullptr;
    double* m_pWallFaceZc = nullptr;
    double* m_pWallFaceSx = nullptr;
    double* m_pWallFaceSy = nullptr;
    double* m_pWallFaceSz = nullptr;
    int* m_pWallFaceCV = nullptr;
    int* m_pWallFaceBnd = nullptr;

    // Inlet faces.
    double* m_pInletFaceXc = nullptr;
    double* m_pInletFaceYc = nullptr;
    double* m_pInletFaceZc = nullptr;
    double* m_pInletFaceSx = nullptr;
    double* m_pInletFaceSy = nullptr;
    double* m_pInletFaceSz = nullptr;
    int* m_pInletFaceCV = nullptr;
    int* m_pInletFaceBnd = nullptr;

    // Outlet faces: bound, but no step of the calculation reads them.
    double* m_pOutletFaceXc = nullptr;
    double* m_pOutletFaceYc = nullptr;
    double* m_pOutletFaceZc = nullptr;
    double* m_pOutletFaceSx = nullptr;
    double* m_pOutletFaceSy = nullptr;
    double* m_pOutletFaceSz = nullptr;
    int* m_pOutletFaceCV = nullptr;
    int* m_pOutletFaceBnd = nullptr;

    // Symmetry faces.
    double* m_pSymmFaceXc = nullptr;
    double* m_pSymmFaceYc = nullptr;
    double* m_pSymmFaceZc = nullptr;
    double* m_pSymmFaceSx = nullptr;
    double* m_pSymmFaceSy = nullptr;
    double* m_pSymmFaceSz = nullptr;
    int* m_pSymmFaceCV = nullptr;
    int* m_pSymmFaceBnd = nullptr;
};
