#pragma once

#include "CCommunication.h"
#include "CKVRCom.h"
#include "CPartitionFace_DLL.h"

namespace weldline {

// The connection objects of a run in one process: nobody to talk to.

// An uncut mesh has no interface faces; all arrays are null.
class NoInterfaceFaces final : public CPartitionFace_DLL {
  public:
    int NParInterFace() override { return 0; }
    int* ijParCV() override { return nullptr; }
    int* ijPar() override { return nullptr; }
    double* ijParSx() override { return nullptr; }
    double* ijParSy() override { return nullptr; }
    double* ijParSz() override { return nullptr; }
    double* ijParxc() override { return nullptr; }
    double* ijParyc() override { return nullptr; }
    double* ijParzc() override { return nullptr; }
    double* ParInterFace_Lamda() override { return nullptr; }
};

// There are no halo slots to refresh.
class NoExchange final : public CCommunication {
  public:
    void DDM_Exch(double*) override {}
};

// The maximum over one process is its own value.
class OwnMaximum final : public CKVRCom {
  public:
    int AllMax(int& value) override { return value; }
};

}  // namespace weldline
