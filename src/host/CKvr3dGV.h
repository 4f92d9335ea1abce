#pragma once

// The host's global variables of one run: flow results, paths and switches. Filled and owned by
// the host. Cell arrays are 1-based.
class CKvr3dGV {
  public:
    float* m_pFlowVariable = nullptr;  // per cell slot: filling result, below 1e-30 = not reached
    int* m_pCellState = nullptr;       // per own cell: >= 1 or -1 forces 180 degrees at its nodes

    void* m_pHostCellArrayA = nullptr;
    void* m_pHostArray1 = nullptr;
    void* m_pHostArray2 = nullptr;
    void* m_pHostArray3 = nullptr;
    void* m_pHostArray4 = nullptr;

    const char* m_pControlFilePath = nullptr;
    const char* m_pMeshFilePath = nullptr;
    const int* m_pProcessNumber = nullptr;     // 0 on the master process
    const int* m_pAnalysisMode = nullptr;      // 11 = bi-injection
    const double* m_pGradSetSwitch = nullptr;  // 1 selects the second gradient set in method 4
};
